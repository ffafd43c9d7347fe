#pragma once

#include <QString>

namespace runtime::patches {

/// A Unicode number pattern such as "000.00", "#,##0.##", "0.0 %" or "0.00;(0.00)", read once and
/// applied to many numbers. English separators; the currency sign "¤" becomes a dollar sign.
class NumberPattern {
 public:
  explicit NumberPattern(const QString& pattern);
  [[nodiscard]] QString format(double number) const;

 private:
  struct Affixes {
    QString prefix;
    QString suffix;
  };
  void readNumber(QStringView body);
  void readInteger(QStringView digits);
  [[nodiscard]] QString digits(double size) const;
  [[nodiscard]] QString exponentDigits(double size) const;
  [[nodiscard]] QString grouped(const QString& integer) const;

  Affixes m_positive;
  Affixes m_negative;
  int m_minimumInteger = 0;
  int m_minimumFraction = 0;
  int m_maximumFraction = 0;
  int m_group = 0;       // digits of the group next to the decimal point; 0: no grouping
  int m_outerGroup = 0;  // digits of the groups before it
  int m_exponent = 0;    // least digits of the exponent; 0: no exponent
  bool m_exponentSign = false;
  double m_scale = 1;
};

/// The number in English words: "forty-two point five".
[[nodiscard]] QString spelledOut(double number);

}  // namespace runtime::patches
