#pragma once

#include "widgets/TYValueField.h"

namespace widgets {

/// A field for a time code. What a value means (frames, seconds) and how it is written is the
/// owner's affair.
class TYTimecodeField : public TYValueField {
  Q_OBJECT
 public:
  using Formatter = std::function<QString(double value)>;
  /// Gets the current value, so that "+12" can be read as twelve frames later.
  using Parser = std::function<foundation::Result<double>(const QString& text, double current)>;

  explicit TYTimecodeField(QWidget* parent = nullptr);

  void setNotation(Formatter formatter, Parser parser);
  /// The large face of the transport row.
  void setProminent(bool prominent);

 protected:
  [[nodiscard]] QString textForValue(double value) const override;
  [[nodiscard]] foundation::Result<NumberExpression> parse(const QString& text) const override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Formatter m_formatter;
  Parser m_parser;
  bool m_prominent = false;
};

}  // namespace widgets
