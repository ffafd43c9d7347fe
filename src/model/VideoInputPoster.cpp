#include "model/VideoInputPoster.h"

#include "foundation/UserDefaults.h"

namespace model {

QImage videoInputPosterImage(const foundation::UserDefaults& defaults) {
  return QImage::fromData(defaults.value(QStringLiteral("videoInputPosterImage")).toByteArray());
}

}  // namespace model
