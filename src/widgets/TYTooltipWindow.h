#pragma once

#include <QWidget>

namespace widgets {

/// The small plate beside the pointer that tells a time or a position while something is dragged.
/// It appears at once and never takes the pointer.
class TYTooltipWindow : public QWidget {
  Q_OBJECT
 public:
  [[nodiscard]] static TYTooltipWindow& sharedWindow();

  /// The plate hangs centred below the position, which is in global coordinates; it stays on the
  /// screen.
  void updateTipWithString(const QString& text, QPoint position);
  void showTooltip();
  void hideTooltip();
  [[nodiscard]] QString text() const { return m_text; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  TYTooltipWindow();

  QString m_text;
};

}  // namespace widgets
