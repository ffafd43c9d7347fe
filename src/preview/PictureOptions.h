#pragma once

#include <QColor>
#include <QString>
#include <functional>

#include "foundation/UserDefaults.h"

namespace preview {

/// How an operator looks at the picture that is played.
struct PictureOptions {
  /// What lies behind the graphic.
  enum class Backdrop { Own, Chessboard, Color, Still, Movie };
  /// The whole, its alpha as grey, or its premultiplied colours over black.
  enum class Channel { Picture, Key, Fill };
  using Change = std::function<void(PictureOptions&)>;

  Backdrop backdrop = Backdrop::Own;
  Channel channel = Channel::Picture;
  bool showsSafeAreas = false;
  QColor color = QColor(0x80, 0x80, 0x80);
  QString still = {};  ///< path of a picture
  QString movie = {};  ///< path

  friend bool operator==(const PictureOptions&, const PictureOptions&) = default;

  /// Behind the document's own background nothing else could be seen, and no alpha.
  [[nodiscard]] bool showsOwnBackground() const {
    return backdrop == Backdrop::Own && channel == Channel::Picture;
  }
  /// As they were kept, except the channel; what is not known is as at first.
  [[nodiscard]] static PictureOptions fromDefaults(const foundation::UserDefaults& defaults);
  void keep(foundation::UserDefaults& defaults) const;
};

}  // namespace preview
