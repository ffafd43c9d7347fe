#pragma once

#include <QPointF>
#include <QWidget>
#include <optional>

class QLabel;
class QToolButton;

namespace model {
class Composition;
}

namespace app {

/// The line at the foot of a window: what is selected, zoom and pointer at the left, or a hint in
/// their place; format and duration at the right.
class StatusLine : public QWidget {
  Q_OBJECT

 public:
  explicit StatusLine(QWidget* parent = nullptr);

  void showComposition(const model::Composition* composition, double zoomFactor);
  /// Empty: nothing in particular.
  void showHint(const QString& hint);
  void showPointer(const std::optional<QPointF>& pixel);
  /// Nothing is shown for none.
  void showFindings(qsizetype count);
  /// Shows something that goes on for a while, before the findings.
  void addProgress(QWidget* progress);
  /// Where their list opens, its lower right corner (global).
  [[nodiscard]] QPoint findingsCorner() const;

 Q_SIGNALS:
  void findingsRequested();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QLabel* m_selection;
  QLabel* m_zoom;
  QLabel* m_pointer;
  QLabel* m_hint;
  QToolButton* m_findings;
  QLabel* m_format;
  QLabel* m_duration;
};

}  // namespace app
