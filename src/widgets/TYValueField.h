#pragma once

#include <QLineEdit>

#include "foundation/Result.h"
#include "widgets/NumberExpression.h"

namespace widgets {

class NumberScrub;

/// A field for one value that can be typed, stepped with the arrow keys (Shift ten steps, Alt or
/// Ctrl a tenth) and scrubbed. What is not understood keeps its text and gets a rose edge; Esc
/// brings the value back. Several different values show as "—"; typing then sets all.
///
/// Every change is announced as editBegan, then valueEdited or relativeEdited any number of times,
/// then editCommitted or editCancelled: one undo step. The value keeps its full precision however
/// few digits are shown.
class TYValueField : public QLineEdit {
  Q_OBJECT
 public:
  explicit TYValueField(QWidget* parent = nullptr);
  ~TYValueField() override;

  [[nodiscard]] double value() const { return m_value; }
  /// Announces nothing. Text that is being typed stays.
  void setValue(double value);
  [[nodiscard]] bool isMixed() const { return m_mixed; }
  void setMixed(bool mixed);
  void setRange(double minimum, double maximum);
  /// What one step of the arrow keys or one pixel of scrubbing is.
  void setStep(double step) { m_step = step; }
  /// Stands inside the field at the left, for instance the name of an axis; it can be dragged.
  void setPrefix(const QString& prefix);
  [[nodiscard]] QString prefix() const { return m_prefix; }
  /// Stands behind the figures.
  void setUnit(const QString& unit);
  [[nodiscard]] QString unit() const { return m_unit; }
  /// Text that is being typed goes; the value shows again.
  void discardEntry() { showValue(); }
  [[nodiscard]] bool isInvalid() const { return !m_complaint.isEmpty(); }
  /// What is wrong with the text, for the person who typed it; empty when nothing is.
  [[nodiscard]] const QString& complaint() const { return m_complaint; }

  /// Changes by a number of steps that counts from the start of the scrub.
  void beginScrub();
  void scrub(double steps);
  void commitScrub();
  void cancelScrub();
  [[nodiscard]] bool isScrubbing() const { return m_scrubbing; }

 Q_SIGNALS:
  void editBegan();
  void valueEdited(double value);
  /// Instead of valueEdited where values are mixed: how each of them changes from what it was at
  /// editBegan.
  void relativeEdited(const widgets::NumberExpression& change);
  void editCommitted();
  void editCancelled();
  void complaintChanged(const QString& complaint);

 protected:
  [[nodiscard]] virtual QString textForValue(double value) const = 0;
  [[nodiscard]] virtual foundation::Result<NumberExpression> parse(const QString& text) const = 0;
  /// Shows the value again, after something that the text depends on changed.
  void showValue();

  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  bool commitText();
  void apply(const NumberExpression& change);
  void step(double steps);
  void setComplaint(const QString& complaint);
  void updateMargins();
  [[nodiscard]] QRect prefixRect() const;

  double m_value = 0;
  double m_minimum;
  double m_maximum;
  double m_step = 1;
  bool m_mixed = false;
  bool m_scrubbing = false;
  double m_before = 0;
  QString m_prefix;
  QString m_unit;
  QString m_complaint;
  std::unique_ptr<NumberScrub> m_drag;
};

}  // namespace widgets
