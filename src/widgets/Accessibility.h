#pragma once

#include <QAccessible>

namespace widgets {

/// Tells assistive programs what the controls of this layer are, where their base class says too
/// little. Needs a running application; further calls do nothing.
void installAccessibility();

/// What a widget of another layer is, where its base class says too little.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace widgets
