#pragma once

#include <QString>
#include <QStringList>

namespace runtime::patches {

/// Where texts stop growing: patches in a row could double them without end.
constexpr qsizetype longestText = 16'000'000;

/// A text with places for arguments: "%@" is a place, "%%" a percent sign.
class TextFormat {
 public:
  explicit TextFormat(const QString& format);

  /// The number of arguments.
  [[nodiscard]] int count() const { return static_cast<int>(m_literals.size()) - 1; }
  /// The text with the arguments filled in, cut at the longest text.
  [[nodiscard]] QString print(const QStringList& arguments) const;
  /// The texts between the literal parts; empty when the text does not have the format's shape.
  [[nodiscard]] QStringList scan(const QString& text) const;

 private:
  QStringList m_literals;  // around the places: always one more than those
};

}  // namespace runtime::patches
