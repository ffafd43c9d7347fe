#pragma once

#include <QCoreApplication>

namespace model {
class QuartzComponent;
}

namespace timeline {

/// What the eyes of rows do. One undo step each; nothing of it goes on air.
class RowVisibility {
  Q_DECLARE_TR_FUNCTIONS(RowVisibility)

 public:
  /// Hides the component in the editor or shows it; all selected ones when it is one of them.
  static void toggle(model::QuartzComponent& component);
  /// Hides all others; shows all again where they are hidden already.
  static void solo(model::QuartzComponent& component);
  [[nodiscard]] static bool isSolo(const model::QuartzComponent& component);
};

}  // namespace timeline
