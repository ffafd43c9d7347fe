#pragma once

#include <QImage>
#include <QStringList>

#include "foundation/Result.h"

namespace model {
class Composition;
}

namespace playout {
struct ValueSet;
}

namespace document {

/// The picture that stands for a document in lists of files.
class PosterFrame {
 public:
  /// Of a graphic that was exported, background included, to the file. The size is the video
  /// format's. Without a poster frame time it is the graphic's poster image, else an empty picture.
  /// Up to that time the graphic is played with the values of the set, if there is one, each wait
  /// for a trigger answered at once. Values that it does not take are left out and told.
  [[nodiscard]] static foundation::Result<QImage> render(const model::Composition& composition,
                                                         const QString& exportedPath,
                                                         const QString& packageFolder,
                                                         const playout::ValueSet* values,
                                                         QStringList& warnings);
  /// The same with the values that the graphic has itself.
  [[nodiscard]] static foundation::Result<QImage> render(const model::Composition& composition,
                                                         const QString& exportedPath,
                                                         const QString& packageFolder);
  /// JPEG at 90 %, over black.
  [[nodiscard]] static QByteArray jpeg(const QImage& picture);
};

}  // namespace document
