#pragma once

#include <QDateTime>
#include <QHash>
#include <QImage>
#include <QRegion>
#include <functional>
#include <vector>

#include "canvas/BrokenMark.h"
#include "canvas/PictureTarget.h"
#include "runtime/draw/DrawList.h"

namespace model {
class Composition;
class QuartzComponent;
}  // namespace model

namespace canvas {

/// All components, drawn through the runtime. What a component drew last is kept: only components
/// that may look different are asked again, and only pixels that do look different are drawn again.
class CompositionLayer {
 public:
  /// Passed in, so that tests need not wait.
  struct Clocks {
    std::function<QDateTime()> wall = [] { return QDateTime::currentDateTime(); };
    std::function<double()> seconds;  ///< since any moment; none: the machine's
  };
  /// A component that exceeds one of these is marked and left alone until it changes, so that the
  /// canvas stays usable.
  struct Limits {
    double seconds = 2;     ///< to say what it draws
    double coverage = 500;  ///< how often what it draws would fill the canvas
  };

  explicit CompositionLayer(model::Composition& composition) : CompositionLayer(composition, {}) {}
  CompositionLayer(model::Composition& composition, Clocks clocks);

  void setLimits(const Limits& limits) { m_limits = limits; }

  /// Every component may look different.
  void setNeedsDisplay() { m_allDirty = true; }
  /// The component may look different.
  void setNeedsDisplay(const model::QuartzComponent& component);

  /// Asks components for what they draw now and draws what changed. Returns the device pixels that
  /// are others now; empty when the picture is the same.
  [[nodiscard]] QRegion display(const PictureTarget& target);
  /// What was displayed last: the components over transparency, premultiplied.
  [[nodiscard]] const QImage& image() const { return m_image; }
  /// How many pixels of the image a painter's logical pixel takes.
  void setDevicePixelRatio(double ratio) { m_image.setDevicePixelRatio(ratio); }
  /// Components that could not be drawn at the last display, lowest first.
  [[nodiscard]] const QList<BrokenMark>& brokenMarks() const { return m_brokenMarks; }

  /// How often components were asked for what they draw; for measurements.
  [[nodiscard]] qint64 evaluations() const { return m_evaluations; }

 private:
  struct Entry {
    const model::QuartzComponent* component = nullptr;  ///< for comparing only
    runtime::DrawList list;
    QRect touched;  ///< device pixels that the list reaches
    bool dirty = true;
    bool tooSlow = false;
    QString problem;
  };

  [[nodiscard]] QRegion followComponents();
  void evaluate(Entry& entry, model::QuartzComponent& component);
  void askComponent(Entry& entry, model::QuartzComponent& component);
  [[nodiscard]] double displayTime();
  /// What drawing it takes: the device pixels that it reaches, and how many it fills altogether.
  struct Reach {
    QRect touched;
    double filled = 0;
  };
  [[nodiscard]] Reach reachOf(const runtime::DrawList& list) const;
  void giveUp(Entry& entry, const QString& problem) const;
  void draw(const QRegion& region);
  void drawBand(QImage& pixels, const QRect& band) const;
  void noteBroken(const Entry& entry, const model::QuartzComponent& component);

  model::Composition& m_composition;
  Clocks m_clocks;
  Limits m_limits;
  PictureTarget m_target;
  QImage m_image;
  std::vector<Entry> m_entries;  ///< lowest first
  QList<BrokenMark> m_brokenMarks;
  double m_time = 0;
  QVariantHash m_playout;
  bool m_allDirty = true;
  quint64 m_updateIndex = 0;
  qint64 m_evaluations = 0;
};

}  // namespace canvas
