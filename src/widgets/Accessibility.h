#pragma once

namespace widgets {

/// Tells assistive programs what the controls of this layer are, where their base class says too
/// little. Needs a running application; further calls do nothing.
void installAccessibility();

}  // namespace widgets
