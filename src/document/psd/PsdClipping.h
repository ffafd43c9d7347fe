#pragma once

#include "document/psd/PsdDocument.h"

namespace document {

/// Leaves of the picture only what lies over the base, as far as the base is opaque there.
void clipPsdPicture(PsdPicture& picture, const PsdPicture& base);

}  // namespace document
