#pragma once

#include "foundation/UserDefaults.h"

namespace document {

/// Registers what the user's settings are where the user set nothing: the format, background and
/// font of what is new, and the library's folders. To be called when a program starts, before any
/// document is made; needs the application object, for its fonts.
void registerApplicationDefaults(foundation::UserDefaults& defaults);

}  // namespace document
