#pragma once

#include <QCursor>
#include <QObject>
#include <QTimer>
#include <QWidget>

namespace preview {

/// Hides the pointer over a widget when it has not been moved for a while.
class RestingPointer : public QObject {
  Q_OBJECT

 public:
  explicit RestingPointer(QWidget& widget);
  void setHides(bool hides);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void hide();
  void showAgain();
  void takeMove(const QPoint& globalPoint);

  QWidget& m_widget;
  QTimer m_timer;
  QCursor m_shown;  ///< what the widget has while the pointer is not hidden
  QPoint m_last;
  bool m_hides = false;
  bool m_isHidden = false;
};

}  // namespace preview
