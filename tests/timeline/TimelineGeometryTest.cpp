#include "timeline/TYTimelineGeometry.h"

#include <gtest/gtest.h>

#include "timeline/ComponentTiming.h"
#include "timeline/DragDistance.h"
#include "timeline/TimeSnapping.h"

namespace {

using foundation::TimecodeRate;
using timeline::ComponentTiming;
using timeline::DragDistance;
using timeline::TimeSnapping;
using timeline::TYTimelineGeometry;
using Space = TYTimelineGeometry::Space;
using Duration = ComponentTiming::Duration;

TYTimelineGeometry geometryOf(double duration, quint64 ticks, double zoom) {
  TYTimelineGeometry geometry;
  geometry.setContent({.duration = duration,
                       .editorTimepoint = 0,
                       .ticksPerSecond = ticks,
                       .rate = TimecodeRate::whole(int(ticks)),
                       .rows = 0});
  geometry.setZoom(zoom);
  return geometry;
}

struct Ticks {
  QList<int> seconds;
  int frames = 0;
};

Ticks ticksOf(const TYTimelineGeometry& geometry) {
  Ticks ticks;
  geometry.enumerateTicks(Space::Rows, 0, 1e6, [&](double, int second) {
    if (second >= 0)
      ticks.seconds.append(second);
    else
      ++ticks.frames;
  });
  return ticks;
}

TEST(TimelineGeometry, goesFrom25To300PointsASecond) {
  EXPECT_DOUBLE_EQ(geometryOf(5, 25, 0).unitWidth(), 25);
  EXPECT_DOUBLE_EQ(geometryOf(5, 25, 1).unitWidth(), 300);
  EXPECT_DOUBLE_EQ(geometryOf(5, 25, 7).unitWidth(), 300);
  EXPECT_DOUBLE_EQ(TYTimelineGeometry::zoomForUnitWidth(25), 0);
  EXPECT_DOUBLE_EQ(TYTimelineGeometry::zoomForUnitWidth(162.5), 0.5);
}

TEST(TimelineGeometry, goesBelowWhereTheDurationNeedsIt) {
  for (const double duration : {20.0, 60.0, 1800.0, 86400.0}) {
    TYTimelineGeometry geometry = geometryOf(duration, 25, 0);
    geometry.setVisibleWidth(1050);
    EXPECT_EQ(geometry.unitWidth(), 25) << "having room for less changes nothing";
    geometry.setZoom(-9);
    EXPECT_NEAR(geometry.unitWidth(), std::min(25.0, 1000 / duration), 1e-9);
    const double width = geometry.unitWidth();
    EXPECT_NEAR(TYTimelineGeometry::zoomForUnitWidth(width), geometry.zoom(), 1e-9);
    // Marks stay apart, and so do their labels.
    double before = -100;
    geometry.enumerateTicks(Space::Rows, 0, 1050, [&](double x, int second) {
      EXPECT_GE(x - before, width < 25 ? 40 : 1) << second;
      before = x;
    });
  }
  TYTimelineGeometry geometry = geometryOf(100, 25, 0);
  geometry.setVisibleWidth(1050);
  geometry.setZoom(-1);
  EXPECT_EQ(ticksOf(geometry).seconds.mid(0, 3), (QList<int>{0, 5, 10}));
  EXPECT_EQ(ticksOf(geometry).frames, 0);
  QList<int> seen;
  geometry.enumerateTicks(Space::Rows, 133, 260, [&](double, int s) { seen.append(s); });
  EXPECT_EQ(seen, (QList<int>{10, 15, 20, 25})) << "the same marks wherever one looks";
}

TEST(TimelineGeometry, placesTimesOnWholePixels) {
  TYTimelineGeometry geometry = geometryOf(5, 25, 1);
  geometry.setVisibleOrigin({100, 0});
  EXPECT_EQ(geometry.xPositionAtTime(2), 600);
  EXPECT_EQ(geometry.xPositionAtTime(2, Space::Rows), 603);
  EXPECT_EQ(geometry.xPositionAtTime(2, Space::Ruler), 503);
  EXPECT_EQ(geometry.xPositionAtTime(0.001, Space::Rows), 3);  // 3.3
  EXPECT_NEAR(geometry.secondsAt(503, Space::Ruler), 2, 1e-12);
}

TEST(TimelineGeometry, turnsDistancesIntoWholeFrames) {
  const TYTimelineGeometry geometry = geometryOf(5, 25, 1);  // a frame is 12 wide
  EXPECT_EQ(geometry.timeFromPosition(11.9), 0);
  EXPECT_DOUBLE_EQ(geometry.timeFromPosition(12), 0.04);
  EXPECT_DOUBLE_EQ(geometry.timeFromPosition(30), 0.08);
  EXPECT_DOUBLE_EQ(geometry.timeFromPosition(-30), -0.08);
  EXPECT_DOUBLE_EQ(geometry.timeFromPosition(3 + 24, Space::Rows), 0.08);
  // Every frame is found again from where it stands.
  for (const double zoom : {0.0, 0.123, 0.38, 0.77, 1.0})
    for (int frame = 0; frame < 500; ++frame) {
      const TYTimelineGeometry other = geometryOf(20, 25, zoom);
      const double x = other.xPositionAtTime(frame / 25.0);
      EXPECT_NEAR(other.timeFromPosition(x), frame / 25.0, 1e-9) << frame << " at " << zoom;
    }
}

TEST(TimelineGeometry, countsFramesAsTheTimeCodeDoes) {
  TYTimelineGeometry geometry = geometryOf(5, 30, 1);
  geometry.setContent({.duration = 5,
                       .editorTimepoint = 0,
                       .ticksPerSecond = 30,
                       .rate = TimecodeRate::slowed(30),
                       .rows = 0});
  EXPECT_NEAR(geometry.timeFromPosition(300), 29 * 1.001 / 30, 1e-12);
}

TEST(TimelineGeometry, isAsLargeAsDurationAndRows) {
  TYTimelineGeometry geometry = geometryOf(4.5, 25, 0);
  geometry.setContent({.duration = 4.5,
                       .editorTimepoint = 0,
                       .ticksPerSecond = 25,
                       .rate = TimecodeRate::whole(25),
                       .rows = 7});
  EXPECT_EQ(geometry.timeAxisSize(), QSizeF(4.5 * 25 + 50, 7 * 24));
  geometry.setVisibleOrigin({0, 30});
  const QRectF view(0, 0, 400, 200);
  EXPECT_EQ(geometry.componentYOriginInView(view), -30);
  EXPECT_EQ(geometry.componentRowForPoint({5, 0}, view), 1);
  EXPECT_EQ(geometry.componentRowForPoint({5, 18}, view), 2);
  EXPECT_EQ(geometry.componentRectForRow(1, 2, 3), QRectF(28, 72, 50, 24));
  EXPECT_EQ(TYTimelineGeometry::rectForRow(3, 400), QRectF(0, 72, 400, 24));
}

TEST(TimelineGeometry, marksSecondsAndFrames) {
  // At one point a frame the distance reaches 8 after three doublings.
  EXPECT_EQ(geometryOf(5, 25, 0).tickStride(), 4);
  EXPECT_EQ(geometryOf(5, 25, 1).tickStride(), 1);
  const Ticks open = ticksOf(geometryOf(4.5, 25, 1));
  EXPECT_EQ(open.seconds, (QList<int>{0, 1, 2, 3, 4}));
  EXPECT_EQ(open.frames, 4 * 24);
  const Ticks closed = ticksOf(geometryOf(4, 25, 0));
  EXPECT_EQ(closed.seconds, (QList<int>{0, 1, 2, 3, 4}));
  EXPECT_EQ(closed.frames, 4 * 6);
}

TEST(DragDistance, keepsWhatIsLessThanAFrame) {
  const TYTimelineGeometry geometry = geometryOf(5, 25, 1);
  DragDistance distance;
  distance.move(6);
  EXPECT_EQ(distance.deltaTime(geometry), 0);
  distance.move(6);
  EXPECT_DOUBLE_EQ(distance.deltaTime(geometry), 0.04);
  distance.take(0.04, geometry);
  EXPECT_NEAR(distance.deltaX(), 0, 1e-12);
  distance.move(-20);
  EXPECT_DOUBLE_EQ(distance.deltaTime(geometry), -0.04);
  distance.take(-0.04, geometry);
  EXPECT_NEAR(distance.deltaX(), -8, 1e-12);
}

TEST(ComponentTiming, movesBarsWithinTheComposition) {
  const ComponentTiming::Times times{1, 3, 0};
  EXPECT_EQ(ComponentTiming::withStartMoved(times, 1, Duration::Keep, 5),
            (ComponentTiming::Times{2, 4, 1}));
  // Stops with its end on the end; key frames move by what was asked for.
  EXPECT_EQ(ComponentTiming::withStartMoved(times, 4, Duration::Keep, 5),
            (ComponentTiming::Times{3, 5, 4}));
  EXPECT_EQ(ComponentTiming::withStartMoved(times, -4, Duration::Keep, 5),
            (ComponentTiming::Times{0, 2, -4}));
  // At the end already nothing changes any more.
  EXPECT_EQ(ComponentTiming::withStartMoved({3, 5, 0}, 1, Duration::Keep, 5),
            (ComponentTiming::Times{3, 5, 0}));
  // Longer than the composition: pulled back from its end, it keeps a negative start.
  EXPECT_EQ(ComponentTiming::withStartMoved({0, 8, 0}, 1, Duration::Keep, 5),
            (ComponentTiming::Times{-3, 5, 1}));
}

TEST(ComponentTiming, keepsEdgesInOrder) {
  const ComponentTiming::Times times{1, 3, 0};
  EXPECT_EQ(ComponentTiming::withStartMoved(times, 1, Duration::Change, 5),
            (ComponentTiming::Times{2, 3, 1}));
  EXPECT_EQ(ComponentTiming::withStartMoved(times, 2, Duration::Change, 5), times);
  EXPECT_EQ(ComponentTiming::withStartMoved(times, -2, Duration::Change, 5),
            (ComponentTiming::Times{0, 3, -2}));
  EXPECT_EQ(ComponentTiming::withEndMoved(times, -2), times);
  EXPECT_EQ(ComponentTiming::withEndMoved(times, 9), (ComponentTiming::Times{1, 12, 0}));
}

TEST(TimeSnapping, takesTheNearestTargetWithinReach) {
  const TYTimelineGeometry geometry = geometryOf(5, 25, 1);  // the reach is 0.02 s
  const TimeSnapping snapping({2, 1});
  const auto near = snapping.snapped({0.5}, 0.49, geometry);
  EXPECT_EQ(near.target, 1);
  EXPECT_DOUBLE_EQ(near.delta, 0.5);
  EXPECT_FALSE(snapping.snapped({0.5}, 0.45, geometry).target);
  EXPECT_EQ(snapping.snapped({0.3, 1.5}, 0.505, geometry).target, 2);
  EXPECT_FALSE(TimeSnapping({}).snapped({1}, 0, geometry).target);
}

}  // namespace
