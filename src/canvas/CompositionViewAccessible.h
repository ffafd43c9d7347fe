#pragma once

#include <QAccessibleWidget>

namespace model {
class QuartzComponent;
}

namespace canvas {

class CompositionView;

/// The canvas as screen readers see it: a layered pane whose children are the components that are
/// seen, the frontmost first.
class CompositionViewAccessible : public QAccessibleWidget {
 public:
  /// Makes Qt ask for these; may be called again.
  static void install();

  explicit CompositionViewAccessible(CompositionView* view);
  ~CompositionViewAccessible() override;

  [[nodiscard]] int childCount() const override;
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
  [[nodiscard]] QAccessibleInterface* focusChild() const override;
  [[nodiscard]] QString text(QAccessible::Text text) const override;

 private:
  [[nodiscard]] CompositionView* view() const;
  [[nodiscard]] QList<model::QuartzComponent*> components() const;
  [[nodiscard]] QAccessibleInterface* interfaceOf(const model::QuartzComponent& component) const;

  mutable QHash<quint64, QAccessible::Id> m_children;  ///< by the components' numbers
};

}  // namespace canvas
