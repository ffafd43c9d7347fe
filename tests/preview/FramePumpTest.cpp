#include "preview/FramePump.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QTest>

#include "support/GraphBuilder.h"

namespace preview {

namespace {

using std::chrono::milliseconds;
using support::GraphBuilder;
using testing::ElementsAre;

/// Plays small graphs, and notes what the pump tells.
class FramePumpTest : public testing::Test {
 protected:
  void play(const GraphBuilder& graph, milliseconds mostTime = FramePump::mostTimeOfFrame) {
    PreviewProgram program{.compiled = graph.renderer()->sharedProgram()};
    program.size = QSize(64, 36);
    program.framesPerSecond = 100;
    pump = std::make_unique<FramePump>(
        std::move(program),
        FramePump::Hooks{
            .pictureReady = [this] { change([this] { ++pictures; }); },
            .stateChanged =
                [this](const FramePump::State& state) {
                  change([this, state] { states.push_back(state); });
                },
            .outputsReady = [this] { change([this] { ++outputs; }); },
            .found = [this](const QStringList& list) { change([&] { findings = list; }); },
            .stalled = [this](int run) { change([this, run] { stalledRun = run; }); }},
        mostTime);
  }
  void change(const std::function<void()>& act) {
    const std::lock_guard lock(mutex);
    act();
    changed.notify_all();
  }
  bool waitFor(const std::function<bool()>& reached) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::seconds(10), reached);
  }

  std::mutex mutex;
  std::condition_variable changed;
  int pictures = 0;
  int outputs = 0;
  int stalledRun = 0;
  QStringList findings;
  std::vector<FramePump::State> states;
  std::unique_ptr<FramePump> pump;
};

/// A rectangle as wide as the published number, on nothing.
GraphBuilder square() {
  GraphBuilder graph;
  const QString sprite = graph.node(QStringLiteral("QCSprite"));
  graph.publishInput(sprite, QStringLiteral("inputWidth"), QStringLiteral("side"));
  return graph;
}

TEST_F(FramePumpTest, AStillPictureIsNeitherDrawnNorEvaluatedAgainUntilAnInputChanges) {
  play(square());
  ASSERT_TRUE(waitFor([this] { return pictures == 1; }));
  const std::shared_ptr<const Picture> first = pump->takePicture();
  ASSERT_TRUE(first);
  std::this_thread::sleep_for(milliseconds(200));
  const qint64 made = pump->reading().made;
  EXPECT_LE(made, 3);
  EXPECT_EQ(pump->reading().drawn, 1);
  pump->setInput(QStringLiteral("side"), 0.25);
  ASSERT_TRUE(waitFor([this] { return pictures == 2; }));
  EXPECT_EQ(pump->reading().dropped, 0);
  // The picture that is still held was not drawn on.
  EXPECT_NE(pump->takePicture()->image(), first->image());
}

TEST_F(FramePumpTest, EachStateOfASwitchLastsAFrame) {
  GraphBuilder graph;
  const QString node = graph.node(QStringLiteral("QCSplitter"),
                                  {{QStringLiteral("portClass"), QStringLiteral("QCBooleanPort")}});
  graph.publishInput(node, QStringLiteral("input"), QStringLiteral("trigger"));
  graph.publishOutput(node, QStringLiteral("output"), QStringLiteral("active"));
  play(graph);
  ASSERT_TRUE(waitFor([this] { return states.size() == 1; }));
  pump->setInput(QStringLiteral("trigger"), true);
  pump->setInput(QStringLiteral("trigger"), false);
  ASSERT_TRUE(waitFor([this] { return states.size() == 3; }));
  EXPECT_TRUE(states[1].isActive);
  EXPECT_FALSE(states[2].isActive);
}

TEST_F(FramePumpTest, OutputsAreToldOnceUntilTheyAreTakenAndThenAsTheyAre) {
  GraphBuilder graph;
  const QString node = graph.node(QStringLiteral("QCSplitter"),
                                  {{QStringLiteral("portClass"), QStringLiteral("QCNumberPort")}});
  graph.publishInput(node, QStringLiteral("input"), QStringLiteral("in"));
  graph.publishOutput(node, QStringLiteral("output"), QStringLiteral("score"));
  play(graph);
  ASSERT_TRUE(waitFor([this] { return outputs == 1; }));
  pump->setInput(QStringLiteral("in"), 3.0);
  std::this_thread::sleep_for(milliseconds(100));
  EXPECT_EQ(outputs, 1);
  const auto taken = pump->takeOutputs();
  ASSERT_TRUE(taken && taken->values.size() == 1);
  EXPECT_EQ(taken->values[0].toNumber(), 3);
  EXPECT_FALSE(pump->takeOutputs());
  pump->setInput(QStringLiteral("in"), 4.0);
  ASSERT_TRUE(waitFor([this] { return outputs == 2; }));
  pump->restart();
  ASSERT_TRUE(QTest::qWaitFor([this] {
    const auto now = pump->takeOutputs();
    return now && now->run == 2 && now->values[0].toNumber() == 4;
  }));
}

TEST_F(FramePumpTest, RestartingBeginsAtZeroWithTheInputsButNotTheTrigger) {
  play(square());
  pump->setInput(QStringLiteral("side"), 0.5);
  pump->setInput(QStringLiteral("trigger"), true);
  ASSERT_TRUE(waitFor([this] { return pictures > 0; }));
  EXPECT_EQ(pump->restart(), 2);
  ASSERT_TRUE(waitFor([this] { return !states.empty() && states.back().run == 2; }));
  const std::shared_ptr<const Picture> picture = pump->takePicture();
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->time, 0);
  EXPECT_EQ(picture->image().pixelColor(30, 18).alpha(), 255);
  EXPECT_EQ(picture->image().pixelColor(20, 18).alpha(), 0);
}

TEST_F(FramePumpTest, AScriptThatNeverEndsEndsThePlayingAndHoldsUpNobody) {
  GraphBuilder graph;
  const QString time = graph.node(QStringLiteral("QCPatchTime"));
  const QString script = graph.node(
      QStringLiteral("QCJavaScript"),
      {{QStringLiteral("newMode"), 1},
       {QStringLiteral("script"),
        QStringLiteral("function (__number side) main (__number time) { while (true) {} }")}});
  const QString sprite = graph.node(QStringLiteral("QCSprite"));
  graph.connect(time, QStringLiteral("outputTime"), script, QStringLiteral("time"));
  graph.connect(script, QStringLiteral("side"), sprite, QStringLiteral("inputWidth"));
  play(graph, milliseconds(100));
  ASSERT_TRUE(waitFor([this] { return stalledRun == 1; }));
  pump->restart();
  ASSERT_TRUE(waitFor([this] { return stalledRun == 2; }));
  pump->restart();
  std::this_thread::sleep_for(milliseconds(30));
  QElapsedTimer closing;
  closing.start();
  pump.reset();
  EXPECT_LT(closing.elapsed(), 1000);
  // With more time a frame than a script has, the script is ended and the rest plays.
  play(graph);
  const auto isTold = [&] { return !findings.isEmpty() && findings.last().contains(script); };
  EXPECT_TRUE(waitFor(isTold)) << findings.join(u'|').toStdString();
}

}  // namespace

}  // namespace preview
