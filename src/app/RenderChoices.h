#pragma once

#include <QCoreApplication>

#include "render/RenderSettings.h"

namespace foundation {
class UserDefaults;
}
namespace model {
class Composition;
}

namespace app {

/// A kind of file that can be rendered.
struct RenderFormat {
  QString suffix;                                        ///< "mov"
  std::optional<runtime::movie::MovieCodec> codec = {};  ///< of movies
  bool keepsAlpha = false;
  QString title = {};  ///< for the person
  /// What settings keep: "mov prores4444", "png".
  [[nodiscard]] QString identifier() const;
};

/// What a person chose to render.
struct RenderChoices {
  Q_DECLARE_TR_FUNCTIONS(RenderChoices)

 public:
  enum class Kind { Movie, Pictures, Still };
  enum class Extent { UntilOver, FromTo };
  enum class Size { Format, Half, Own };

  Kind kind = Kind::Movie;
  QString format[3] = {};  ///< identifiers by kind; an unknown one means the first
  QString path = {};       ///< of the file; of the folder where many pictures are made
  Size size = Size::Format;
  QSize ownSize = {1920, 1080};
  QString rate = {};  ///< as FrameRate reads it; empty: the document's
  bool fields = false;
  Extent extent = Extent::UntilOver;
  double from = 0;        ///< seconds as it is played, with the time that stops are held
  double to = 0;          ///< the same; the frame that begins there is not rendered any more
  double stillAt = 0;     ///< seconds on the time line, where stops take no time
  double stopHold = 2;    ///< seconds
  QString valueSet = {};  ///< name; empty: the document's own values
  bool background = false;
  render::Alpha alpha = render::Alpha::Straight;

  [[nodiscard]] static QList<RenderFormat> formats(Kind kind);
  [[nodiscard]] RenderFormat chosenFormat() const;
  [[nodiscard]] QSize pixels(const model::Composition& composition) const;
  /// Frames have two fields: lines and rate are those of an interlaced format.
  [[nodiscard]] bool hasFields(const model::Composition& composition) const;
  /// The path with the ending of the format, and the folder of pictures without one.
  [[nodiscard]] QString fittingPath() const;
  /// Fails with a sentence for the person: what cannot be rendered so.
  [[nodiscard]] foundation::Result<render::RenderSettings> settings(
      const model::Composition& composition) const;
  /// What would be replaced: the file, or the first picture that lies there already.
  [[nodiscard]] std::optional<QString> presentFile() const;

  /// What is chosen at first for the document of that name and folder (empty: never saved): as the
  /// last time, in a file that is not there yet.
  [[nodiscard]] static RenderChoices proposed(foundation::UserDefaults& defaults,
                                              const model::Composition& composition,
                                              const QString& name, const QString& folder);
  void remember(foundation::UserDefaults& defaults) const;
};

}  // namespace app
