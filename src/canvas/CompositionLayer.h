#pragma once

#include <QDateTime>
#include <QHash>
#include <QImage>
#include <QRegion>
#include <functional>
#include <vector>

#include "canvas/BrokenMark.h"
#include "canvas/CanvasDrawing.h"
#include "canvas/ComponentPicture.h"

namespace model {
class Composition;
}

namespace canvas {

/// All components, drawn through the runtime. What a component drew last is kept: only components
/// that may look different are asked again, and only pixels that do look different are drawn again.
/// Nothing is waited for longer than a hand notices: what takes longer comes when it is ready.
class CompositionLayer {
 public:
  /// Passed in, so that tests need not wait.
  struct Clocks {
    std::function<QDateTime()> wall = [] { return QDateTime::currentDateTime(); };
  };
  using Limits = ComponentPicture::Limits;
  using Reason = ComponentPicture::Reason;

  explicit CompositionLayer(model::Composition& composition) : CompositionLayer(composition, {}) {}
  CompositionLayer(model::Composition& composition, Clocks clocks);
  ~CompositionLayer();
  CompositionLayer(const CompositionLayer&) = delete;
  CompositionLayer& operator=(const CompositionLayer&) = delete;

  void setLimits(const Limits& limits) { m_limits = limits; }
  /// Called from the event loop when something that was not waited for is ready to be displayed.
  void setReady(std::function<void()> ready);

  /// Every component may look different.
  void setNeedsDisplay() { m_reason = Reason::Everything; }
  /// Time goes on, nothing else: what shows the time of day may look different.
  void setNeedsRefresh() { m_reason = std::max(m_reason, Reason::Refresh); }
  /// The component may look different.
  void setNeedsDisplay(const model::QuartzComponent& component);

  /// Asks components for what they draw now and draws what changed. Returns the device pixels that
  /// are others now; empty when the picture is the same.
  [[nodiscard]] QRegion display(const PictureTarget& target);
  /// What was displayed last: the components over transparency, premultiplied.
  [[nodiscard]] const QImage& image() const { return m_image; }
  /// How many pixels of the image a painter's logical pixel takes.
  void setDevicePixelRatio(double ratio) { m_image.setDevicePixelRatio(ratio); }
  /// Paints it where the part begins; until it is drawn for another zoom, as it was, at that zoom.
  void paint(QPainter& painter, const QPointF& corner) const;
  /// Components that could not be drawn at the last display, lowest first.
  [[nodiscard]] const QList<BrokenMark>& brokenMarks() const { return m_brokenMarks; }

  /// How often components were asked for what they draw; for measurements.
  [[nodiscard]] qint64 evaluations() const { return m_evaluations; }

 private:
  class Relay;

  [[nodiscard]] QRegion followComponents();
  [[nodiscard]] QRegion followPicture(ComponentPicture& picture, model::QuartzComponent& component);
  [[nodiscard]] double displayTime();
  void noteBroken(const ComponentPicture& picture, const model::QuartzComponent& component);
  void startDrawing(const QRegion& region);
  [[nodiscard]] QImage imageToDrawOn();
  /// Takes over a drawing that is through; gives one up that takes too long.
  [[nodiscard]] QRegion followDrawing();
  void giveUpDrawing();

  model::Composition& m_composition;
  Clocks m_clocks;
  Limits m_limits;
  PictureTarget m_target;
  QImage m_image;
  PictureTarget m_imageTarget;  ///< what the image was drawn for
  QImage m_spare;               ///< the image before, to be drawn on next
  QRegion m_stale;              ///< what the spare one lacks
  QRegion m_due;                ///< changed, but not drawn yet
  std::shared_ptr<CanvasDrawing> m_drawing;
  std::vector<ComponentPicture> m_pictures;  ///< lowest first
  QList<BrokenMark> m_brokenMarks;
  ComponentPicture::Moment m_moment;
  std::shared_ptr<Relay> m_relay;
  Reason m_reason = Reason::Everything;
  quint64 m_updateIndex = 0;
  qint64 m_evaluations = 0;
};

}  // namespace canvas
