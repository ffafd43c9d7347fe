#pragma once

#include <QFrame>

#include "app/DocumentFindings.h"

class QLabel;
class QVBoxLayout;

namespace app {

/// The list of findings that opens over the line at the foot: what is wrong, where, and the action
/// that mends it. A popup; clicking elsewhere or Esc closes it.
class FindingsPanel : public QFrame {
  Q_OBJECT

 public:
  explicit FindingsPanel(QWidget* window);

  void setGroups(const QList<DocumentFindings::Group>& groups);
  /// Its lower right corner at the position (global).
  void openAbove(QPoint position);

  /// What the action of such a finding is called; empty where nothing can be done from here.
  [[nodiscard]] static QString actionFor(const model::CompositionFinding& finding);

 Q_SIGNALS:
  void acted(const app::DocumentFindings::Group& group);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QWidget* row(const DocumentFindings::Group& group);

  QLabel* m_count;
  QWidget* m_rows;
  QVBoxLayout* m_column;
};

}  // namespace app
