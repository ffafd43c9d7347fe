#include "runtime/movie/MoviePlayer.h"

namespace runtime::movie {

using foundation::Result;

Result<std::unique_ptr<MoviePlayer>> MoviePlayer::open(const QString& path,
                                                       const MovieLimits& limits) {
  std::unique_ptr<MoviePlayer> player(new MoviePlayer);
  auto reader = MovieReader::open(path, limits, &player->m_stop);
  if (!reader) return tl::unexpected(reader.error());
  player->m_reader = std::move(*reader);
  player->m_info = player->m_reader->info();
  player->m_step = 1 / player->m_info.framesPerSecond();
  player->m_thread = std::thread([raw = player.get()] { raw->decodeAhead(); });
  return player;
}

MoviePlayer::~MoviePlayer() {
  {
    const QMutexLocker lock(&m_mutex);
    m_stop = true;
    m_changed.wakeAll();
  }
  if (m_thread.joinable()) m_thread.join();
}

Result<MoviePicture> MoviePlayer::pictureAt(double seconds, bool loop) {
  const qint64 tick = m_info.tickAt(seconds, loop);
  const QMutexLocker lock(&m_mutex);
  noteRequest(seconds, loop);
  if (pictureShowing(tick)) {
    while (!m_pictures.front().shows(tick)) m_pictures.pop_front();
  } else {
    m_pictures.clear();
    m_error.reset();
    m_wanted = tick;
  }
  m_isIdle = false;
  m_changed.wakeAll();
  while (m_wanted) m_changed.wait(&m_mutex);
  if (m_error) return tl::unexpected(*m_error);
  return m_pictures.front();
}

const MoviePicture* MoviePlayer::pictureShowing(qint64 tick) const {
  for (const MoviePicture& picture : m_pictures)
    if (picture.shows(tick)) return &picture;
  return nullptr;
}

void MoviePlayer::noteRequest(double seconds, bool loop) {
  constexpr double longestStep = 2;
  const double step = seconds - m_lastTime;
  if (step > 0 && step < longestStep) m_step = step;
  m_lastTime = seconds;
  m_loop = loop;
}

/// The next tick to decode, if requests go on as they came.
std::optional<qint64> MoviePlayer::nextTick() const {
  constexpr int farthest = 100;  // requests ahead
  for (int i = 1; i < farthest; ++i) {
    const qint64 tick = m_info.tickAt(m_lastTime + i * m_step, m_loop);
    if (!pictureShowing(tick)) return tick;
  }
  return {};
}

bool MoviePlayer::hasRoom() const {
  if (m_pictures.size() >= mostPictures) return false;
  qint64 bytes = 0;
  for (const MoviePicture& picture : m_pictures) bytes += picture.image.sizeInBytes();
  return m_pictures.empty() || bytes + m_pictures.back().image.sizeInBytes() <= mostBytes;
}

void MoviePlayer::decodeAhead() {
  QMutexLocker lock(&m_mutex);
  while (!m_stop) {
    const std::optional<qint64> asked = m_wanted;
    const std::optional<qint64> tick =
        asked ? asked : (m_isIdle || m_pictures.empty() || !hasRoom() ? std::nullopt : nextTick());
    if (!tick) {
      m_changed.wait(&m_mutex);
      continue;
    }
    lock.unlock();
    auto picture = m_reader->pictureAt(*tick);
    m_damaged = m_reader->isDamaged();
    lock.relock();
    // What was decoded ahead may not be what was asked for meanwhile: that comes next.
    if (m_wanted && !asked && !(picture && picture->shows(*m_wanted))) continue;
    if (picture)
      m_pictures.push_back(std::move(*picture));
    else if (m_wanted)
      m_error = picture.error();
    m_isIdle = !picture;
    m_wanted.reset();
    m_changed.wakeAll();
  }
}

}  // namespace runtime::movie
