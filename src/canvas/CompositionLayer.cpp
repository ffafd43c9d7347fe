#include "canvas/CompositionLayer.h"

#include <QElapsedTimer>
#include <QPainter>
#include <algorithm>

#include "canvas/ComponentProblem.h"
#include "canvas/PoolTasks.h"
#include "model/Composition.h"
#include "model/PlayoutArguments.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/draw/ItemGeometry.h"
#include "runtime/draw/ListPainter.h"

namespace canvas {

using model::QuartzComponent;
using runtime::DrawList;
using runtime::Viewport;

namespace {

/// Larger areas are cut in two, for as many processors.
constexpr qint64 smallArea = 128 * 128;
/// More separate areas than this are drawn as one.
constexpr int mostAreas = 8;

double machineSeconds() {
  static const QElapsedTimer timer = [] {
    QElapsedTimer started;
    started.start();
    return started;
  }();
  return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
}

Viewport viewportOf(const PictureTarget& target, const QRect& clip) {
  return {target.picture.size(), target.picture.topLeft(), clip, true};
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

CompositionLayer::CompositionLayer(model::Composition& composition, Clocks clocks)
    : m_composition(composition), m_clocks(std::move(clocks)) {
  if (!m_clocks.seconds) m_clocks.seconds = machineSeconds;
}

void CompositionLayer::setNeedsDisplay(const QuartzComponent& component) {
  for (Entry& entry : m_entries)
    if (entry.component == &component) {
      entry.dirty = true;
      entry.tooSlow = false;
    }
}

QRegion CompositionLayer::display(const PictureTarget& target) {
  QRegion changed = followComponents();
  if (target != m_target) {
    m_target = target;
    m_image = QImage(target.pixels, QImage::Format_ARGB32_Premultiplied);
    for (Entry& entry : m_entries) entry.touched = reachOf(entry.list).touched;
    changed = QRect(QPoint(), target.pixels);
  }
  m_time = displayTime();
  m_playout = model::PlayoutArguments::argumentsAtTime(m_time, true);
  m_brokenMarks.clear();
  const QList<QuartzComponent*> components = m_composition.componentsSortedByZLevel();
  for (size_t i = 0; i < m_entries.size(); ++i) {
    Entry& entry = m_entries[i];
    QuartzComponent& component = *components[static_cast<qsizetype>(i)];
    if (entry.dirty || (m_allDirty && !entry.tooSlow)) {
      const DrawList before = std::exchange(entry.list, {});
      evaluate(entry, component);
      if (entry.list != before) {
        changed += entry.touched;
        entry.touched = reachOf(entry.list).touched;
        changed += entry.touched;
      }
    }
    noteBroken(entry, component);
  }
  m_allDirty = false;
  changed &= QRect(QPoint(), m_target.pixels);
  draw(changed);
  return changed;
}

double CompositionLayer::displayTime() {
  const double time = m_composition.editorTimepoint();
  if (m_composition.playMode()) return time;
  // Two displays in a row are never at the same time, so that each asks components afresh.
  return ++m_updateIndex % 2 == 1 ? time + 0.00001 : time;
}

QRegion CompositionLayer::followComponents() {
  const QList<QuartzComponent*> components = m_composition.componentsSortedByZLevel();
  const bool same =
      std::equal(components.begin(), components.end(), m_entries.begin(), m_entries.end(),
                 [](const QuartzComponent* c, const Entry& entry) { return c == entry.component; });
  if (same) return {};
  QRegion changed;
  std::vector<Entry> before = std::exchange(m_entries, {});
  for (const Entry& entry : before) changed += entry.touched;
  for (const QuartzComponent* component : components) {
    const auto known = std::find_if(before.begin(), before.end(), [&](const Entry& entry) {
      return entry.component == component;
    });
    m_entries.push_back(known == before.end() ? Entry() : std::move(*known));
    m_entries.back().component = component;
  }
  return changed;
}

void CompositionLayer::evaluate(Entry& entry, QuartzComponent& component) {
  const double begin = m_clocks.seconds();
  entry.problem.clear();
  entry.tooSlow = false;
  // Before it is asked, since what it is asked for may make it want to be asked again.
  component.setNeedsUpdate(false);
  entry.dirty = false;
  if (component.visible() && component.visibleInCompositionEditor()) askComponent(entry, component);
  const double seconds = m_clocks.seconds() - begin;
  if (seconds > m_limits.seconds) giveUp(entry, tooSlowProblem(seconds));
  const double canvas = 1.0 * m_target.pixels.width() * m_target.pixels.height();
  const double filled = reachOf(entry.list).filled;
  if (filled > m_limits.coverage * canvas) giveUp(entry, tooMuchProblem(filled / canvas));
}

void CompositionLayer::giveUp(Entry& entry, const QString& problem) const {
  entry.tooSlow = true;
  entry.list = {};
  entry.problem = problem;
}

void CompositionLayer::askComponent(Entry& entry, QuartzComponent& component) {
  ++m_evaluations;
  if (!component.renderer()) {
    entry.problem = componentProblem(component);
    return;
  }
  runtime::FrameArguments arguments;
  arguments.wallClock = m_clocks.wall();
  arguments.playout = m_playout;
  // At the picture's own size, as on air; the list is drawn at any other.
  entry.list = component.renderForView(m_composition.size().toSize(), m_time, arguments);
}

CompositionLayer::Reach CompositionLayer::reachOf(const DrawList& list) const {
  const Viewport viewport = viewportOf(m_target, QRect(QPoint(), m_target.pixels));
  Reach reach;
  for (const runtime::DrawItem& item : list.items) {
    const QRect touched = touchedPixels(item, viewport);
    reach.touched |= touched;
    reach.filled += 1.0 * touched.width() * touched.height();
  }
  return reach;
}

void CompositionLayer::noteBroken(const Entry& entry, const QuartzComponent& component) {
  if (entry.problem.isEmpty() || !component.visibleInCompositionEditor()) return;
  m_brokenMarks.append(
      {component.drawingFrame(), component.zRotation(), componentName(component), entry.problem});
}

void CompositionLayer::draw(const QRegion& region) {
  if (region.isEmpty() || m_image.isNull()) return;
  const runtime::PixelRows rows(m_image);
  std::vector<std::function<void()>> tasks;
  for (const QRect& band : bandsOf(region))
    tasks.emplace_back([this, rows, band] {
      QImage pixels = rows.asImage();
      drawBand(pixels, band);
    });
  runInPool(tasks);
}

void CompositionLayer::drawBand(QImage& pixels, const QRect& band) const {
  {
    QPainter painter(&pixels);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(band, Qt::transparent);
  }
  if (m_target.picture.isEmpty()) return;
  runtime::ListPainter painter{runtime::PixelRows(pixels)};
  for (const Entry& entry : m_entries)
    if (entry.touched.intersects(band)) painter.paint(entry.list, viewportOf(m_target, band));
}

}  // namespace canvas
