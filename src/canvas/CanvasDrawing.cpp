#include "canvas/CanvasDrawing.h"

#include <QPainter>
#include <QThreadPool>
#include <algorithm>
#include <chrono>

#include "runtime/draw/ListPainter.h"

namespace canvas {

namespace {

/// Larger areas are cut in two, for as many processors.
constexpr qint64 smallArea = 128 * 128;
/// More separate areas than this are drawn as one.
constexpr int mostAreas = 8;

qint64 nanoseconds() {
  return std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds(1);
}

QList<QRect> bandsOf(const QRegion& region) {
  QList<QRect> bands;
  const auto add = [&bands](const QRect& area) {
    if (qint64{area.width()} * area.height() <= smallArea) {
      bands.append(area);
      return;
    }
    const int half = area.height() / 2;
    bands.append(QRect(area.left(), area.top(), area.width(), half));
    bands.append(QRect(area.left(), area.top() + half, area.width(), area.height() - half));
  };
  if (region.rectCount() > mostAreas)
    add(region.boundingRect());
  else
    for (const QRect& area : region) add(area);
  return bands;
}

}  // namespace

runtime::Viewport CanvasDrawing::viewportOf(const PictureTarget& target, const QRect& clip) {
  return {target.picture.size(), target.picture.topLeft(), clip, true};
}

CanvasDrawing::CanvasDrawing(QImage image, const PictureTarget& target, std::vector<Part> parts)
    : m_image(std::move(image)),
      m_target(target),
      m_parts(std::move(parts)),
      m_spent(m_parts.size()) {}

void CanvasDrawing::start(const QRegion& region, std::function<void()> finished) {
  m_region = region;
  m_finished = std::move(finished);
  for (const QRect& area : bandsOf(region)) {
    m_bands.push_back(std::make_unique<Band>());
    m_bands.back()->area = area;
  }
  m_left = static_cast<int>(m_bands.size());
  m_rows.emplace(m_image);  // its own pixels, before tasks share them
  for (const auto& band : m_bands)
    QThreadPool::globalInstance()->start([self = shared_from_this(), band = band.get()] {
      self->draw(*band);
      self->m_done.release();
      if (--self->m_left == 0 && !self->m_abandoned) self->m_finished();
    });
}

bool CanvasDrawing::wait(int milliseconds) {
  const int bands = static_cast<int>(m_bands.size());
  if (!m_done.tryAcquire(bands, milliseconds)) return false;
  m_done.release(bands);
  return true;
}

void CanvasDrawing::draw(Band& band) {
  QImage pixels = m_rows->asImage();
  {
    QPainter painter(&pixels);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(band.area, Qt::transparent);
  }
  if (m_target.picture.isEmpty()) return;
  runtime::ListPainter painter{runtime::PixelRows(pixels)};
  for (size_t i = 0; i < m_parts.size() && !m_abandoned; ++i) {
    if (!m_parts[i].touched.intersects(band.area)) continue;
    band.since = nanoseconds();
    band.part = static_cast<int>(i);
    painter.paint(*m_parts[i].list, viewportOf(m_target, band.area));
    leavePart(band);
  }
}

void CanvasDrawing::leavePart(Band& band) {
  const int part = band.part.exchange(-1);
  m_spent[static_cast<size_t>(part)] += nanoseconds() - band.since;
}

std::pair<int, double> CanvasDrawing::slowestPart() const {
  std::vector<qint64> spent(m_spent.begin(), m_spent.end());
  for (const auto& band : m_bands)
    if (const int part = band->part; part >= 0)
      spent[static_cast<size_t>(part)] += nanoseconds() - band->since;
  const auto slowest = std::max_element(spent.begin(), spent.end());
  if (slowest == spent.end()) return {-1, 0};
  return {static_cast<int>(slowest - spent.begin()), static_cast<double>(*slowest) * 1e-9};
}

}  // namespace canvas
