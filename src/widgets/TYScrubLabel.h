#pragma once

#include <QLabel>
#include <QPointer>

namespace widgets {

class NumberScrub;
class TYValueField;

/// The label of a field; dragging it changes the field's value, Esc meanwhile takes that back.
class TYScrubLabel : public QLabel {
  Q_OBJECT
 public:
  explicit TYScrubLabel(const QString& text, TYValueField* field = nullptr,
                        QWidget* parent = nullptr);
  ~TYScrubLabel() override;

  /// The field is not owned; its label becomes its accessible name unless it has one.
  void setField(TYValueField* field);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void end();
  [[nodiscard]] bool isReady() const;

  QPointer<TYValueField> m_field;
  std::unique_ptr<NumberScrub> m_drag;
};

}  // namespace widgets
