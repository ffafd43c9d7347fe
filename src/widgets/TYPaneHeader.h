#pragma once

#include <QAbstractButton>
#include <QPointer>

namespace widgets {

/// The head of a pane: triangle, title, a note at the right. Clicking it, Space, or the left and
/// right arrow keys hide and show the pane's content.
class TYPaneHeader : public QAbstractButton {
  Q_OBJECT
 public:
  explicit TYPaneHeader(const QString& title, QWidget* parent = nullptr);

  /// Shown while open; not owned.
  void setContent(QWidget* content);
  void setNote(const QString& note);
  [[nodiscard]] QString note() const { return m_note; }
  [[nodiscard]] bool isOpen() const { return isChecked(); }
  void setOpen(bool open) { setChecked(open); }
  /// Whether a hairline divides it from what is above; the first pane of a panel has none.
  void setRuled(bool ruled);
  /// A pane that always is open has no triangle.
  void setFixed(bool fixed);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QPointer<QWidget> m_content;
  QString m_note;
  bool m_fixed = false;
  bool m_ruled = true;
};

}  // namespace widgets
