#pragma once

#include <QString>

namespace model {
class QuartzComponent;
}

namespace canvas {

/// The name of the component's file.
[[nodiscard]] QString componentName(const model::QuartzComponent& component);
/// Why a component that has no renderer cannot be drawn, as the rest of a sentence that begins with
/// its name.
[[nodiscard]] QString componentProblem(const model::QuartzComponent& component);
[[nodiscard]] QString tooSlowProblem(double seconds);
/// By how often it fills the canvas.
[[nodiscard]] QString tooMuchProblem(double coverage);

}  // namespace canvas
