#pragma once

#include <QImage>

namespace foundation {
class UserDefaults;
}

namespace model {

/// The picture that stands in for a live video input while editing: the bytes of a picture file
/// under the default "videoInputPosterImage". A null image when none is set or it cannot be read.
[[nodiscard]] QImage videoInputPosterImage(const foundation::UserDefaults& defaults);

}  // namespace model
