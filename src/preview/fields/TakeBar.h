#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QPushButton;

namespace preview {

/// The buttons of a take, and whether changes are held until they are sent together.
class TakeBar : public QWidget {
  Q_OBJECT

 public:
  explicit TakeBar(QWidget* parent = nullptr);

  /// Without anything loaded there is nothing to do.
  void setPlayable(bool playable);
  void setWaiting(bool isWaiting);
  void setHoldsChanges(bool holds);
  void setPendingCount(int count);

 Q_SIGNALS:
  void playRequested();
  void triggerRequested();
  void updateRequested();
  void resetRequested();
  void holdsChangesChosen(bool holds);

 private:
  [[nodiscard]] QPushButton* addButton(const QString& text, const QString& toolTip);
  void showState();

  QPushButton* m_play;
  QPushButton* m_trigger;
  QPushButton* m_update;
  QPushButton* m_reset;
  QCheckBox* m_hold;
  QLabel* m_held;
  bool m_isPlayable = false;
  bool m_isWaiting = false;
  int m_pending = 0;
};

}  // namespace preview
