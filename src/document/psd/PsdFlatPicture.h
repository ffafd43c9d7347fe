#pragma once

#include <QImage>
#include <optional>

#include "document/psd/PsdHeader.h"

namespace document {

/// The flattened picture at the end of a file, opaque. Nothing when it is missing or damaged.
[[nodiscard]] std::optional<QImage> readPsdFlatPicture(const PsdHeader& header, PsdReader reader);

}  // namespace document
