#include "preview/FileBackdrop.h"

#include <cmath>

namespace preview {

FileBackdrop::FileBackdrop(BackdropSource::Kind kind, const QString& path, const QSize& size,
                           Hooks hooks)
    : m_kind(kind), m_path(path), m_hooks(std::move(hooks)) {
  m_order.size = size;
  m_thread = std::thread([this] { work(); });
}

FileBackdrop::~FileBackdrop() {
  {
    const std::lock_guard lock(m_mutex);
    m_ends = true;
  }
  m_changed.notify_one();
  m_thread.join();
}

void FileBackdrop::setSize(const QSize& size) {
  change([&](Order& order) { order.size = size; });
}

void FileBackdrop::beginAnew() {
  if (m_kind == BackdropSource::Kind::Still) return;
  change([](Order& order) { order.start = Clock::now(); });
}

void FileBackdrop::change(const std::function<void(Order&)>& apply) {
  {
    const std::lock_guard lock(m_mutex);
    const Order before = m_order;
    apply(m_order);
    if (m_order.size == before.size && m_order.start == before.start) return;
    ++m_order.number;
  }
  m_changed.notify_one();
}

FileBackdrop::Order FileBackdrop::order() const {
  const std::lock_guard lock(m_mutex);
  return m_order;
}

double FileBackdrop::Order::secondsSinceStart() const {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

QImage FileBackdrop::takeImage() {
  const std::lock_guard lock(m_mutex);
  return std::exchange(m_image, {});
}

QImage FileBackdrop::covering(const QImage& image, const QSize& size) {
  if (image.size() == size || image.isNull() || size.isEmpty()) return image;
  const QSize part = size.scaled(image.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
  const QRect middle(
      QPoint((image.width() - part.width()) / 2, (image.height() - part.height()) / 2), part);
  return image.copy(middle).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void FileBackdrop::work() {
  auto source = BackdropSource::open(m_kind, m_path, m_ends);
  if (source) return play(std::move(*source));
  if (!m_ends && m_hooks.failed) m_hooks.failed(source.error());
}

void FileBackdrop::play(BackdropSource source) {
  Order present = order();
  double time = 0;
  while (!m_ends) {
    const auto shown = source.pictureAt(time);
    if (!shown) {
      if (!m_ends && m_hooks.failed) m_hooks.failed(shown.error());
      return;
    }
    const QImage image = covering(shown->image, present.size);
    bool holds = waitUntil(time, present);
    if (holds) {
      publish(image);
      // What should be over by now is left out.
      time = std::max(shown->until, present.secondsSinceStart());
      holds = !std::isinf(time) || waitUntil(time, present);
    }
    if (holds) continue;
    present = order();
    time = present.secondsSinceStart();
  }
}

bool FileBackdrop::waitUntil(double time, const Order& order) {
  std::unique_lock lock(m_mutex);
  const auto isOver = [&] { return m_ends || m_order.number != order.number; };
  if (std::isinf(time)) {
    m_changed.wait(lock, isOver);
    return false;
  }
  const auto due = order.start +
                   std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(time));
  m_changed.wait_until(lock, due, isOver);
  return !isOver();
}

void FileBackdrop::publish(const QImage& image) {
  bool tells = false;
  {
    const std::lock_guard lock(m_mutex);
    tells = m_image.isNull();
    m_image = image;
  }
  if (tells && m_hooks.imageReady) m_hooks.imageReady();
}

}  // namespace preview
