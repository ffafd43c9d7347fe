#include <QFileInfo>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/movie/MoviePlayer.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

using movie::MoviePicture;
using movie::MoviePlayer;

/// The movies that a running composition has open: each node one player a file, so that copies of
/// the node share it. A player with its file and its threads is closed when nobody uses it.
class OpenMovies {
 public:
  foundation::Result<std::shared_ptr<MoviePlayer>> player(const CompiledNode* node,
                                                          const QString& path,
                                                          const movie::MovieLimits& limits) {
    std::erase_if(m_players, [](const auto& entry) { return entry.second.expired(); });
    std::weak_ptr<MoviePlayer>& place = m_players[{node, path}];
    if (auto open = place.lock()) return open;
    if (m_players.size() > mostMovies)
      return foundation::failure(
          QStringLiteral("more than %1 movies at once are not played").arg(mostMovies), path);
    auto made = MoviePlayer::open(path, limits);
    if (!made) return tl::unexpected(made.error());
    std::shared_ptr<MoviePlayer> open = std::move(*made);
    place = open;
    return open;
  }

 private:
  static constexpr size_t mostMovies = 16;
  std::map<std::pair<const CompiledNode*, QString>, std::weak_ptr<MoviePlayer>> m_players;
};

/// Plays a movie by the time of its time base, over and over.
class MovieImporterEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    if (x.changed(0)) open(x);
    if (!m_player) return;
    const auto picture = m_player->pictureAt(x.time(), true);
    if (!picture) {
      m_player.reset();
      clear(x);
      x.report(picture.error().text());
      return;
    }
    if (m_player->isDamaged())
      x.report(QStringLiteral("%1: is damaged; what can be decoded is shown").arg(m_path));
    // The same image as long as the same picture shows, so that nothing is drawn anew.
    if (m_image.isNull() || picture->from != m_from) m_image = Image::fromQImage(picture->image);
    m_from = picture->from;
    x.setOutput(0, m_image);
    x.setOutput(1, m_player->info().duration);
  }

 private:
  void open(Execution& x) {
    m_player.reset();
    m_image = {};
    clear(x);
    const QString location = x.string(0);
    if (location.isEmpty()) return;
    if (location.contains(QLatin1String("://")) &&
        !location.startsWith(QLatin1String("file:"), Qt::CaseInsensitive)) {
      x.report(QStringLiteral("movies are not played over the network: %1").arg(location));
      return;
    }
    m_path = x.resolvePath(location);
    auto player =
        x.shared<OpenMovies>().player(&x.node(), m_path, {.largestPixels = x.budget().imagePixels});
    if (player)
      m_player = std::move(*player);
    else
      x.report(player.error().text());
  }
  static void clear(Execution& x) {
    x.setOutput(0, Image());
    x.setOutput(1, 0.0);
  }

  std::shared_ptr<MoviePlayer> m_player;
  QString m_path;
  qint64 m_from = 0;
  Image m_image;
};

}  // namespace

void registerMoviePatch(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCMovieImporter"),
                .title = QStringLiteral("Movie Importer"),
                .timeMode = PatchClass::TimeMode::TimeBase,
                .ports = {{stringPort("inputMovieLocation", "", "Movie Location")},
                          {portOf(PortType::Image, "outputImage", "Image"),
                           numberOutput("outputMovieDuration", "Movie Duration")}},
                .status = QStringLiteral("plays local files through FFmpeg, over and over by its "
                                         "time and without sound; waits for each picture; the "
                                         "lines of interlaced movies are shown as they are"),
                .make = makeEvaluator<MovieImporterEvaluator>});
}

}  // namespace runtime::patches
