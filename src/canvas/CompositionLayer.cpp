#include "canvas/CompositionLayer.h"

#include <QPainter>
#include <algorithm>
#include <cstring>
#include <mutex>

#include "canvas/ComponentProblem.h"
#include "model/Composition.h"
#include "model/PlayoutArguments.h"

namespace canvas {

using model::QuartzComponent;

namespace {

void copyPixels(const QImage& from, QImage& to, const QRect& rect) {
  constexpr qsizetype pixel = 4;
  for (int y = rect.top(); y <= rect.bottom(); ++y)
    std::memcpy(to.scanLine(y) + pixel * rect.left(), from.constScanLine(y) + pixel * rect.left(),
                static_cast<size_t>(pixel * rect.width()));
}

}  // namespace

/// Brings news from other threads to the one that displays, as long as that wants them.
class CompositionLayer::Relay {
 public:
  std::function<void()> ready;  ///< none: nobody wants to know

  [[nodiscard]] static std::function<void()> tell(const std::shared_ptr<Relay>& relay) {
    return [relay] {
      const std::lock_guard lock(relay->m_mutex);
      if (!relay->m_place) return;
      const auto deliver = [known = std::weak_ptr(relay)] {
        const auto there = known.lock();
        if (there && there->ready) there->ready();
      };
      QMetaObject::invokeMethod(relay->m_place.get(), deliver, Qt::QueuedConnection);
    };
  }
  /// On the thread that displays.
  void end() {
    const std::lock_guard lock(m_mutex);
    ready = {};
    m_place.reset();
  }

 private:
  std::mutex m_mutex;
  std::unique_ptr<QObject> m_place = std::make_unique<QObject>();
};

CompositionLayer::CompositionLayer(model::Composition& composition, Clocks clocks)
    : m_composition(composition), m_clocks(std::move(clocks)), m_relay(std::make_shared<Relay>()) {}

CompositionLayer::~CompositionLayer() {
  m_relay->end();
  if (m_drawing) m_drawing->abandon();
}

void CompositionLayer::setReady(std::function<void()> ready) {
  m_relay->ready = std::move(ready);
}

void CompositionLayer::setNeedsDisplay(const QuartzComponent& component) {
  for (ComponentPicture& picture : m_pictures)
    if (picture.isOf(&component)) picture.setNeedsDisplay();
}

QRegion CompositionLayer::display(const PictureTarget& target) {
  QRegion changed = followDrawing();
  m_due += followComponents();
  if (target != m_target) {
    m_target = target;
    for (ComponentPicture& picture : m_pictures) picture.measure(target, m_limits);
    m_due = QRect(QPoint(), target.pixels);
    giveUpDrawing();
  }
  m_moment = {displayTime(), m_composition.size().toSize(), {}, 0, Relay::tell(m_relay)};
  m_moment.arguments.wallClock = m_clocks.wall();
  m_moment.arguments.playout = model::PlayoutArguments::argumentsAtTime(m_moment.time, true);
  m_brokenMarks.clear();
  const QList<QuartzComponent*> components = m_composition.componentsSortedByZLevel();
  for (size_t i = 0; i < m_pictures.size(); ++i) {
    QuartzComponent& component = *components[static_cast<qsizetype>(i)];
    m_due += followPicture(m_pictures[i], component);
    noteBroken(m_pictures[i], component);
  }
  m_reason = Reason::Nothing;
  m_due &= QRect(QPoint(), m_target.pixels);
  if (!m_drawing && !m_due.isEmpty()) {
    startDrawing(std::exchange(m_due, {}));
    changed += followDrawing();
  }
  return changed;
}

QRegion CompositionLayer::followPicture(ComponentPicture& picture, QuartzComponent& component) {
  const auto before = picture.list();
  const QRect left = picture.touched();
  if (picture.follow(component, m_reason, m_moment, m_limits)) ++m_evaluations;
  if (picture.list() == before) return {};
  picture.measure(m_target, m_limits);
  return QRegion(left) + picture.touched();
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
      std::equal(components.begin(), components.end(), m_pictures.begin(), m_pictures.end(),
                 [](const QuartzComponent* c, const ComponentPicture& p) { return p.isOf(c); });
  if (same) return {};
  QRegion changed;
  std::vector<ComponentPicture> before = std::exchange(m_pictures, {});
  for (const ComponentPicture& picture : before) changed += picture.touched();
  for (const QuartzComponent* component : components) {
    const auto known =
        std::find_if(before.begin(), before.end(),
                     [&](const ComponentPicture& picture) { return picture.isOf(component); });
    m_pictures.push_back(known == before.end() ? ComponentPicture(component) : std::move(*known));
  }
  return changed;
}

void CompositionLayer::noteBroken(const ComponentPicture& picture,
                                  const QuartzComponent& component) {
  if (picture.problem().isEmpty() || !component.visibleInCompositionEditor()) return;
  m_brokenMarks.append({component.drawingFrame(), component.zRotation(), componentName(component),
                        picture.problem(), &component});
}

// Drawing

QImage CompositionLayer::imageToDrawOn() {
  if (m_imageTarget != m_target || m_image.isNull())
    return {m_target.pixels, QImage::Format_ARGB32_Premultiplied};
  if (m_spare.isNull()) {
    m_stale = {};
    return m_image.copy();
  }
  QImage image = std::exchange(m_spare, {});
  for (const QRect& rect : std::exchange(m_stale, {})) copyPixels(m_image, image, rect);
  return image;
}

void CompositionLayer::startDrawing(const QRegion& region) {
  std::vector<CanvasDrawing::Part> parts;
  for (const ComponentPicture& picture : m_pictures)
    parts.push_back({picture.list(), picture.touched()});
  m_drawing = std::make_shared<CanvasDrawing>(imageToDrawOn(), m_target, std::move(parts));
  m_drawing->start(region, Relay::tell(m_relay));
  (void)m_drawing->wait(m_limits.drawing);
}

QRegion CompositionLayer::followDrawing() {
  if (!m_drawing) return {};
  if (!m_drawing->wait(0)) {
    const auto [part, seconds] = m_drawing->slowestPart();
    if (part < 0 || seconds < m_limits.painting) return {};
    if (static_cast<size_t>(part) < m_pictures.size())
      m_pictures[static_cast<size_t>(part)].giveUp(tooSlowProblem(seconds));
    m_due = QRect(QPoint(), m_target.pixels);
    giveUpDrawing();
    return {};
  }
  const QRegion region = m_drawing->region();
  const bool sameTarget = m_imageTarget == m_target;
  m_spare = sameTarget ? std::exchange(m_image, {}) : QImage();
  m_stale = region;
  m_image = std::move(m_drawing->image());
  m_imageTarget = m_target;
  m_drawing.reset();
  return region;
}

void CompositionLayer::giveUpDrawing() {
  if (m_drawing) m_drawing->abandon();
  m_drawing.reset();
}

void CompositionLayer::paint(QPainter& painter, const QPointF& corner) const {
  if (m_imageTarget == m_target) return painter.drawImage(corner, m_image);
  const double ratio = m_image.devicePixelRatio();
  const QRect& place = m_target.picture;
  painter.drawImage(QRectF(corner + QPointF(place.topLeft()) / ratio, QSizeF(place.size()) / ratio),
                    m_image, m_imageTarget.picture);
}

}  // namespace canvas
