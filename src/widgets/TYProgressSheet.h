#pragma once

#include "widgets/TYSheet.h"

class QProgressBar;
class QVariantAnimation;

namespace widgets {

class TokenLabel;

/// Shows how far something long is and lets the user stop it.
class TYProgressSheet : public TYSheet {
  Q_OBJECT
 public:
  TYProgressSheet(QWidget* window, const QString& title);

  /// What is being done just now, one line.
  void setStatus(const QString& status);
  /// 0…1; negative when unknown.
  void setFraction(double fraction);
  [[nodiscard]] bool isCancelled() const { return m_cancelled; }

 Q_SIGNALS:
  /// Once. The sheet stays until its owner closes it.
  void cancelRequested();

 protected:
  void cancelled() override;

 private:
  TokenLabel* m_status;
  QProgressBar* m_bar;
  QPushButton* m_cancel;
  QVariantAnimation* m_wandering;
  bool m_cancelled = false;
};

}  // namespace widgets
