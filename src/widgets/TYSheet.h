#pragma once

#include <QPointer>
#include <QWidget>

class QHBoxLayout;
class QPropertyAnimation;
class QPushButton;
class QVBoxLayout;

namespace widgets {

/// A panel that hangs at the top of its window over a veil and takes all input of that window until
/// it is done; other windows stay usable. Nothing waits for it: whoever opens it is called back.
/// A further sheet of the same window waits for its turn. The window owns it; it deletes itself
/// when it closes. A window that goes takes its sheets along, unanswered.
class TYSheet : public QWidget {
  Q_OBJECT
 public:
  /// Of the window that the widget is in.
  explicit TYSheet(QWidget* window);
  ~TYSheet() override;

  void setSheetWidth(int width) { m_width = width; }
  /// Where the content goes, above the row of buttons.
  [[nodiscard]] QVBoxLayout* body() { return m_body; }
  /// Buttons are added from left to right; the one that Return presses comes last.
  QPushButton* addButton(const QString& text, bool isDefault = false);
  /// Stands at the left of the row of buttons.
  void setFooterWidget(QWidget* widget);
  /// Opens it, or queues it behind the one that is open.
  void present();
  void closeSheet();

 protected:
  /// Esc.
  virtual void cancelled() {}

  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void open();
  void place();
  [[nodiscard]] QRect sheetRect() const;

  int m_width = 440;
  bool m_isOpen = false;
  bool m_isWaiting = false;
  QWidget* m_panel;
  QVBoxLayout* m_body;
  QHBoxLayout* m_footer;
  QPointer<QPushButton> m_default;
  QPointer<QWidget> m_focusBefore;
  QPointer<QPropertyAnimation> m_slide;  ///< while it opens
};

}  // namespace widgets
