#include "runtime/movie/MovieReader.h"

#include <cmath>
#include <limits>

#include "runtime/movie/FrameConverter.h"
#include "runtime/movie/MovieStream.h"

namespace runtime::movie {

using foundation::failure;
using foundation::Result;

namespace {
const std::atomic<bool> never = false;
constexpr qint64 forever = std::numeric_limits<qint64>::max();
/// Decoding on is taken for faster than jumping up to so many pictures.
constexpr int nearPictures = 40;
constexpr int nearPicturesIntra = 4;
}  // namespace

struct MovieReader::State {
  QString path;
  std::unique_ptr<MovieStream> stream;
  FrameConverter converter;
  std::optional<StreamFrame> current;
  std::optional<StreamFrame> next;  ///< none: the current one is the last
  qint64 shortWay = 1;              ///< ticks
};

MovieReader::MovieReader() : m_state(std::make_unique<State>()) {}
MovieReader::~MovieReader() = default;

Result<std::unique_ptr<MovieReader>> MovieReader::open(const QString& path,
                                                       const MovieLimits& limits,
                                                       const std::atomic<bool>* stop) {
  auto stream = MovieStream::open(path, limits, stop ? *stop : never);
  if (!stream) return tl::unexpected(stream.error());
  std::unique_ptr<MovieReader> reader(new MovieReader);
  State& s = *reader->m_state;
  s.path = path;
  s.stream = std::move(*stream);
  if (auto done = reader->start(); !done) return tl::unexpected(done.error());
  reader->m_info = s.stream->info();
  MovieInfo& info = reader->m_info;
  info.hasAlpha = hasAlpha(*s.current->frame);
  info.isInterlaced = info.isInterlaced || s.current->frame->interlaced_frame;
  const int pictures = s.stream->isIntraOnly() ? nearPicturesIntra : nearPictures;
  s.shortWay = std::llround(pictures / (info.framesPerSecond() * info.tick));
  return reader;
}

bool MovieReader::isDamaged() const {
  return m_state->stream->isDamaged();
}

Result<MoviePicture> MovieReader::pictureAt(qint64 tick) {
  State& s = *m_state;
  s.stream->beginRequest();
  if (auto done = moveTo(std::max<qint64>(tick, 0)); !done) {
    s.current.reset();  // where the stream stands is not known any more
    return tl::unexpected(done.error());
  }
  auto image = s.converter.convert(*s.current->frame);
  if (!image) return failure(image.error().message, s.path);
  return MoviePicture{std::move(*image), s.current->tick, s.next ? s.next->tick : forever};
}

/// Makes the picture that shows at the tick the current one.
Result<void> MovieReader::moveTo(qint64 tick) {
  State& s = *m_state;
  const bool isFarAhead = s.current && s.next && tick - s.next->tick > s.shortWay;
  // The first picture of the track shows for all ticks before it, too.
  if (!s.current || tick < s.current->tick || isFarAhead)
    if (auto done = jumpBefore(tick); !done) return done;
  while (s.next && s.next->tick <= tick)
    if (auto done = step(); !done) return done;
  return {};
}

/// Jumps to a picture that does not begin after the tick, from further and further back: some
/// containers jump to a key frame by the time at which it is decoded, not shown.
Result<void> MovieReader::jumpBefore(qint64 tick) {
  State& s = *m_state;
  const qint64 second = std::max<qint64>(1, std::llround(1 / m_info.tick));
  for (qint64 back = 0; back <= tick; back = back == 0 ? second : back * 4) {
    if (auto done = s.stream->jump(tick - back); !done) return done;
    auto first = s.stream->next();
    if (!first) return tl::unexpected(first.error());
    if (*first && (*first)->tick <= tick) {
      s.current = std::move(*first);
      s.next.reset();
      return step();
    }
  }
  if (auto done = s.stream->jumpToStart(); !done) return done;
  return start();
}

/// Takes the first two pictures of a stream that stands at its start.
Result<void> MovieReader::start() {
  State& s = *m_state;
  auto first = s.stream->next();
  if (!first) return tl::unexpected(first.error());
  if (!*first)
    return ffmpegFailure(QStringLiteral("none of its pictures can be decoded"), 0, s.path);
  s.current = std::move(*first);
  s.next.reset();
  return step();
}

/// One picture on; the first call after a jump only looks for the next one.
Result<void> MovieReader::step() {
  State& s = *m_state;
  if (s.next) s.current = std::move(s.next);
  s.next.reset();
  for (;;) {
    auto picture = s.stream->next();
    if (!picture) return tl::unexpected(picture.error());
    if (!*picture) return {};
    if ((*picture)->tick > s.current->tick) {
      s.next = std::move(*picture);
      return {};
    }
    // Two pictures at one time: the later one counts.
    if ((*picture)->tick == s.current->tick) s.current = std::move(*picture);
  }
}

}  // namespace runtime::movie
