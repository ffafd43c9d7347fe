#include "runtime/patches/StopframeClock.h"

#include <gtest/gtest.h>

#include "support/GraphBuilder.h"

namespace {

using runtime::patches::StopframeClock;
using Reading = StopframeClock::Reading;

Reading running(double time) {
  return {time, false, true};
}
Reading waiting(double time) {
  return {time, true, true};
}
Reading ended(double time) {
  return {time, false, false};
}

TEST(StopframeClock, haltsAtEachStopAndGoesOnFromThere) {
  StopframeClock clock({4, 2}, 10);  // unsorted on purpose
  EXPECT_EQ(clock.advance(0, false), running(0));
  EXPECT_EQ(clock.advance(1.5, false), running(1.5));
  EXPECT_EQ(clock.advance(2.25, false), waiting(2));
  EXPECT_EQ(clock.advance(30, false), waiting(2));
  EXPECT_EQ(clock.advance(31, true), running(2)) << "the wait does not count";
  EXPECT_EQ(clock.advance(32, false), running(3));
  EXPECT_EQ(clock.advance(40, false), waiting(4)) << "a large step still stops";
  EXPECT_EQ(clock.advance(41, true), running(4));
  EXPECT_EQ(clock.advance(46, false), running(9));
  EXPECT_EQ(clock.advance(47, false), ended(10));
  EXPECT_EQ(clock.advance(99, true), ended(10));
}

TEST(StopframeClock, triggerCountsOnlyWhenItRisesWhileWaiting) {
  StopframeClock early({1}, 5);
  (void)early.advance(0.2, true);
  (void)early.advance(0.4, false);
  EXPECT_EQ(early.advance(1, false), waiting(1)) << "a trigger before the stop is lost";

  StopframeClock onArrival({1}, 5);
  (void)onArrival.advance(0.9, false);
  EXPECT_EQ(onArrival.advance(1.1, true), waiting(1)) << "nobody could know of the wait yet";
  EXPECT_EQ(onArrival.advance(1.2, true), waiting(1));
  EXPECT_EQ(onArrival.advance(1.3, false), waiting(1));
  EXPECT_EQ(onArrival.advance(1.4, true), running(1));

  StopframeClock held({1, 2}, 5);
  (void)held.advance(1, false);
  EXPECT_EQ(held.advance(1.5, true), running(1));
  EXPECT_EQ(held.advance(2.5, true), waiting(2));
  EXPECT_EQ(held.advance(9.5, true), waiting(2)) << "a held trigger releases one stop only";
}

TEST(StopframeClock, stopsThatAreNearlyEqualAreOneAndThoseOutsideNever) {
  const StopframeClock clock({3.001, 2.999, 3, 1, -1, 5, 7, 0}, 5);
  EXPECT_EQ(clock.stops(), (std::vector<double>{0, 1, 2.999}));
  StopframeClock atStart({0}, 5);
  EXPECT_EQ(atStart.advance(0, false), waiting(0));
  EXPECT_EQ(atStart.advance(1, true), running(0));
  EXPECT_EQ(atStart.advance(2, false), running(1));
}

TEST(StopframeClock, steppingBackStartsAnew) {
  StopframeClock clock({2}, 5);
  (void)clock.advance(2, false);
  (void)clock.advance(3, true);
  EXPECT_EQ(clock.advance(4, false), running(3));
  EXPECT_EQ(clock.advance(0, false), running(0));
  EXPECT_EQ(clock.advance(3, false), waiting(2)) << "the stop holds again";
  EXPECT_EQ(clock.advance(1, false), running(1)) << "also out of a wait";
  StopframeClock short1({}, 1);
  EXPECT_EQ(short1.advance(2, false), ended(1));
  EXPECT_EQ(short1.advance(0.5, false), running(0.5));
}

TEST(StopframeClock, zeroDurationEndsAtOnce) {
  StopframeClock clock({0, 1}, 0);
  EXPECT_EQ(clock.advance(0, false), ended(0));
  StopframeClock odd({}, std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(odd.advance(1, false), ended(0));
  StopframeClock good({}, 5);
  (void)good.advance(1, false);
  EXPECT_EQ(good.advance(std::numeric_limits<double>::quiet_NaN(), false), running(1));
}

TEST(StopframeClock, manyStopsAreReleasedOneByOne) {
  std::vector<double> stops;
  for (int i = 0; i < 256; ++i) stops.push_back(1 + i);
  StopframeClock clock(stops, 1000);
  double input = 0;
  for (int i = 0; i < 256; ++i) {
    input += 5;  // longer than the way to the next stop
    ASSERT_EQ(clock.advance(input, false), waiting(1 + i));
    ASSERT_EQ(clock.advance(input += 0.04, true).isWaiting, false);
  }
  EXPECT_FALSE(clock.advance(input + 100, false).isWaiting);
}

using support::GraphBuilder;
using Dictionary = GraphBuilder::Dictionary;

/// A graph whose clock holds at 1 and ends at 3.
struct Clocked {
  GraphBuilder graph;
  QString timer;
  QString stops;
  explicit Clocked(bool enabled) {
    timer = graph.node("QCPlugInPatch:BRVPatchTimePlugIn", {{"timebase", u"parent"}});
    const Dictionary stop{{"name", u"Stopframe"}, {"time", 1.0}};
    stops =
        graph.node("QCPlugInPatch:BRVStopframesPlugIn",
                   {{"timebase", u"external"},
                    {"plugInState", Dictionary{{"compositionDuration", 3.0},
                                               {"enableStopframesInBRVApps", enabled},
                                               {"stopframes", foundation::PropertyArray{stop}}}}});
    graph.connect(timer, "outputTime", stops, "_time");
    graph.publishOutput(stops, "outputTime", "time");
    graph.publishOutput(stops, "outputWaitingForTrigger", "waiting");
    graph.publishOutput(stops, "outputActive", "active");
  }
};

std::unique_ptr<runtime::CompositionRenderer> graphic(bool enabled) {
  Clocked clocked(enabled);
  clocked.graph.publishInput(clocked.stops, "inputTrigger", "trigger");
  return clocked.graph.renderer();
}

TEST(StopframesPlugIn, hostSeesTheWaitAndReleasesIt) {
  const auto r = graphic(true);
  const auto at = [&](double time) {
    (void)r->renderAtTime(time, {16, 9});
    return Reading{r->valueForOutputKey("time").toNumber(),
                   r->valueForOutputKey("waiting").toBoolean(),
                   r->valueForOutputKey("active").toBoolean()};
  };
  EXPECT_EQ(at(0), running(0));
  EXPECT_EQ(at(1.5), waiting(1));
  r->setValueForInputKey(true, "trigger");
  EXPECT_EQ(at(2), running(1));
  r->setValueForInputKey(false, "trigger");
  EXPECT_EQ(at(3), running(2));
  EXPECT_EQ(at(4.5), ended(3));
  EXPECT_EQ(at(0), running(0));
}

/// A player need not look again until its operator does something.
TEST(StopframesPlugIn, aGraphicThatWaitsOrHasEndedStandsStillAndNoOtherDoes) {
  const auto r = graphic(true);
  const auto isAnimatedAt = [&](double time) {
    (void)r->renderAtTime(time, {16, 9});
    return r->isAnimated();
  };
  EXPECT_TRUE(isAnimatedAt(0));
  EXPECT_FALSE(isAnimatedAt(1.5));
  r->setValueForInputKey(true, "trigger");
  EXPECT_TRUE(isAnimatedAt(2));
  EXPECT_FALSE(isAnimatedAt(5));
  EXPECT_TRUE(isAnimatedAt(0));

  // What looks at the time itself goes on, and so does a trigger that comes from inside.
  Clocked clocked(true);
  GraphBuilder& g = clocked.graph;
  const QString sprite = g.node("QCSprite");
  g.connect(clocked.timer, "outputTime", sprite, "inputX");
  const auto moving = g.renderer();
  (void)moving->renderAtTime(1.5, {16, 9});
  EXPECT_TRUE(moving->isAnimated());
  Clocked byItself(true);
  const QString wave = byItself.graph.node("QCLFO");
  byItself.graph.connect(wave, "outputValue", byItself.stops, "inputTrigger");
  const auto triggered = byItself.graph.renderer();
  (void)triggered->renderAtTime(1.5, {16, 9});
  EXPECT_TRUE(triggered->isAnimated());
}

TEST(StopframesPlugIn, neverWaitsWhenStopFramesAreOff) {
  const auto r = graphic(false);
  (void)r->renderAtTime(2, {16, 9});
  EXPECT_FALSE(r->valueForOutputKey("waiting").toBoolean());
  EXPECT_EQ(r->valueForOutputKey("time").toNumber(), 2);
  (void)r->renderAtTime(3, {16, 9});
  EXPECT_FALSE(r->valueForOutputKey("active").toBoolean());
}

}  // namespace
