#pragma once

#include <QWidget>

#include "app/RenderQueue.h"

class QProgressBar;
class QToolButton;

namespace widgets {
class TokenLabel;
class TYLinkButton;
}  // namespace widgets

namespace app {

/// What is being rendered and how far it is, with a way to stop it; then what came of it. For the
/// line at the foot of windows; hidden while there is nothing to tell.
class RenderProgress : public QWidget {
  Q_OBJECT

 public:
  /// The queue must outlive it.
  explicit RenderProgress(RenderQueue& queue, QWidget* parent = nullptr);

  /// "34 of 250, 12 s left"
  [[nodiscard]] static QString progressText(qint64 frames, std::optional<qint64> total,
                                            std::optional<double> timeLeft);

 private:
  void showQueue();
  void showRunning();
  [[nodiscard]] QString outcome(const RenderQueue::Notice& notice) const;
  void showNotices();
  void act();

  RenderQueue& m_queue;
  widgets::TokenLabel* m_title;
  QProgressBar* m_bar;
  widgets::TokenLabel* m_numbers;
  widgets::TYLinkButton* m_cancel;
  widgets::TYLinkButton* m_reveal;
  QToolButton* m_dismiss;
};

}  // namespace app
