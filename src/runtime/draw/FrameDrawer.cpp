#include "runtime/draw/FrameDrawer.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include "runtime/draw/ItemGeometry.h"
#include "runtime/draw/PixelRows.h"
#include "runtime/draw/RasterBackend.h"

namespace runtime {

namespace {

/// Runs the tasks in the global pool, as many as it can at once, and waits for all. A task of the
/// pool runs what finds no free thread itself, so that tasks never wait for one another.
void runInPool(const std::vector<std::function<void()>>& tasks) {
  QThreadPool* pool = QThreadPool::globalInstance();
  const bool inside = pool->contains(QThread::currentThread());
  QSemaphore done;
  int started = 0;
  for (size_t i = inside ? 1 : 0; i < tasks.size(); ++i) {
    const auto job = [&done, &task = tasks[i]] {
      task();
      done.release();
    };
    if (!inside)
      pool->start(job);
    else if (!pool->tryStart(job)) {
      tasks[i]();
      continue;
    }
    ++started;
  }
  if (inside && !tasks.empty()) tasks.front()();
  done.acquire(started);
}

}  // namespace

std::vector<int> FrameDrawer::bandLimits(const DrawList& list, const QSize& size, int bands) {
  const Viewport viewport = Viewport::whole(size);
  // How much is drawn in each row, and a little for the row itself.
  std::vector<qint64> change(static_cast<size_t>(size.height()) + 1, 0);
  for (const DrawItem& item : list.items) {
    const QRect touched = touchedPixels(item, viewport);
    if (touched.isEmpty()) continue;
    change[static_cast<size_t>(touched.top())] += touched.width();
    change[static_cast<size_t>(touched.bottom()) + 1] -= touched.width();
  }
  std::vector<qint64> upTo{0};  // work above each row
  qint64 row = 1;
  for (int y = 0; y < size.height(); ++y) {
    row += change[static_cast<size_t>(y)];
    upTo.push_back(upTo.back() + row);
  }
  std::vector<int> limits{0};
  for (int band = 1; band < bands; ++band) {
    const qint64 wanted = upTo.back() * band / bands;
    const auto at = std::lower_bound(upTo.begin(), upTo.end(), wanted);
    limits.push_back(std::max(limits.back(), static_cast<int>(at - upTo.begin())));
  }
  limits.push_back(size.height());
  return limits;
}

void FrameDrawer::draw(const DrawList& list, QImage& target) const {
  draw(list, target, {});
}

void FrameDrawer::draw(const DrawList& list, QImage& target, const Preparation& prepare) const {
  if (target.isNull()) return;
  if (target.format() != QImage::Format_ARGB32_Premultiplied)
    target.convertTo(QImage::Format_ARGB32_Premultiplied);
  const std::vector<int> limits = bandLimits(list, target.size(), m_bands);
  const PixelRows rows(target);
  std::vector<std::function<void()>> tasks;
  for (size_t i = 0; i + 1 < limits.size(); ++i) {
    const QRect area(0, limits[i], target.width(), limits[i + 1] - limits[i]);
    if (area.isEmpty()) continue;
    tasks.emplace_back([&list, &prepare, rows, area] {
      QImage image = rows.asImage();
      if (prepare) prepare(image, area);
      RasterBackend().drawArea(list, image, area);
    });
  }
  runInPool(tasks);
}

}  // namespace runtime
