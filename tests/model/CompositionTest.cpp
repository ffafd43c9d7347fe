#include "model/Composition.h"

#include <gmock/gmock.h>

#include "ComponentFiles.h"
#include "model/EditorClock.h"

namespace model {

namespace {

using testing::ElementsAre;

/// Time that passes only when a test says so.
class HandClock : public EditorClock {
 public:
  [[nodiscard]] double now() const override { return m_now; }
  void callAfter(double seconds, std::function<void()> callback) override {
    m_due.emplace(m_now + seconds, std::move(callback));
  }
  /// Runs what becomes due on the way.
  void advance(double seconds) {
    const double end = m_now + seconds;
    while (!m_due.empty() && m_due.begin()->first <= end) {
      const auto next = m_due.extract(m_due.begin());
      m_now = std::max(m_now, next.key());
      next.mapped()();
    }
    m_now = std::max(m_now, end);
  }
  [[nodiscard]] size_t waiting() const { return m_due.size(); }
  /// The caller takes that long.
  void sleep(double seconds) { m_now += seconds; }

 private:
  double m_now = 100;
  std::multimap<double, std::function<void()>> m_due;
};

class CompositionTest : public testing::Test {
 protected:
  QuartzComponent* add(const QString& title) {
    QuartzComponent* component = graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
    component->setTitle(title);
    return component;
  }
  QString order() const {
    QString titles;
    for (const QuartzComponent* component : graphic->componentsSortedByZLevel())
      titles += component->title() + QString::number(component->zLevel());
    return titles;
  }
  void select(const QList<QuartzComponent*>& components) {
    graphic->clearSelection();
    for (QuartzComponent* component : components) component->setSelected(true);
  }

  ComponentFiles files;
  Graphic graphic = emptyGraphic();
  QString path =
      files.writeComponent(QStringLiteral("a.qtz"),
                           {{QStringLiteral("Amount"), QStringLiteral("QCNumberPort"), 1.0, {}}});
  QStringList warnings;
};

}  // namespace

TEST_F(CompositionTest, StackingFollowsTheCommands) {
  QuartzComponent* a = add(QStringLiteral("a"));
  EXPECT_EQ(a->zLevel(), 1u);
  QuartzComponent* b = add(QStringLiteral("b"));
  QuartzComponent* c = add(QStringLiteral("c"));
  EXPECT_EQ(order(), QStringLiteral("a1b2c3"));
  EXPECT_THAT(graphic->selectedComponents(), ElementsAre(c));
  graphic->sendForward();  // at the top already; renumbers
  EXPECT_EQ(order(), QStringLiteral("a0b1c2"));
  select({a, b});
  graphic->sendForward();
  EXPECT_EQ(order(), QStringLiteral("c0a1b2"));  // both pass c, in their order
  graphic->sendBackward();
  EXPECT_EQ(order(), QStringLiteral("a0b1c2"));
  select({a, c});
  graphic->sendSelectionToBack();
  EXPECT_EQ(order(), QStringLiteral("a0c1b2"));
  graphic->bringSelectionToFront();
  EXPECT_EQ(order(), QStringLiteral("b0a1c2"));
  EXPECT_FALSE(graphic->swapSelected());
  EXPECT_EQ(order(), QStringLiteral("b0c1a2"));
  EXPECT_THAT(graphic->selectedComponentsIndexesSortedByZLevel(), ElementsAre(0, 1));
  select({a});
  const auto report = graphic->swapSelected();
  ASSERT_TRUE(report);
  EXPECT_EQ(report->title, QStringLiteral("Swap Selected:"));
  EXPECT_EQ(report->text, QStringLiteral("Please select two components to swap."));
  graphic.context->undo();
  EXPECT_EQ(order(), QStringLiteral("b0a1c2"));
}

TEST_F(CompositionTest, SelectionIsAnnouncedAndForgetsWhatIsRemoved) {
  QuartzComponent* a = add(QStringLiteral("a"));
  QuartzComponent* b = add(QStringLiteral("b"));
  int announced = 0;
  int rows = 0;
  const auto valid = graphic->observe(QStringLiteral("validSelection"),
                                      [&](const store::Change&) { ++announced; });
  const auto sorted = graphic->observe(QStringLiteral("componentsSortedByInverseZLevel"),
                                       [&](const store::Change&) { ++rows; });
  graphic->setSelectionIndexPaths({0, 1});
  EXPECT_EQ(announced, 1);
  EXPECT_THAT(graphic->selectionIndexPaths(), ElementsAre(0, 1));
  EXPECT_EQ(graphic->firstSelected(), b);  // it was selected before
  b->setSelected(false);
  EXPECT_EQ(graphic->firstSelected(), a);
  EXPECT_THAT(graphic->selectedComponentsIndexes(), ElementsAre(0));
  graphic->removeComponents({a});
  EXPECT_FALSE(graphic->validSelection());
  EXPECT_GE(rows, 1);
  graphic.context->undo();
  EXPECT_EQ(graphic->components().size(), 2);
  EXPECT_FALSE(graphic->isComponentSelected(*a));
  graphic->selectAllComponents();
  EXPECT_EQ(graphic->selectedComponents().size(), 2);
}

TEST_F(CompositionTest, SelectionAndOrderFollowUndo) {
  QuartzComponent* a = graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
  bool known = false;
  int selections = 0;
  int orders = 0;
  const auto flag = a->observe(QStringLiteral("selected"), [&](const store::Change&) {
    known = a->selected() == graphic->selectedComponents().contains(a);
  });
  a->setSelected(false);
  EXPECT_TRUE(known);
  a->setSelected(true);
  EXPECT_TRUE(known);
  const auto selection = graphic->observe(QStringLiteral("selectedComponents"),
                                          [&](const store::Change&) { ++selections; });
  const auto rows = graphic->observe(QStringLiteral("selectionIndexPaths"),
                                     [&](const store::Change&) { ++selections; });
  const auto order = graphic->observe(QStringLiteral("componentsSortedByInverseZLevel"),
                                      [&](const store::Change&) { ++orders; });
  graphic.context->undo();  // takes the selected component away
  EXPECT_EQ(graphic->components().size(), 0);
  EXPECT_FALSE(graphic->validSelection());
  EXPECT_EQ(selections, 2);
  EXPECT_EQ(orders, 1);
  graphic.context->redo();
  EXPECT_EQ(a->selected(), graphic->validSelection());
  a->setSelected(true);
  EXPECT_THAT(graphic->selectedComponents(), ElementsAre(a));
}

TEST_F(CompositionTest, WhatCannotBeLoadedLeavesNothingBehind) {
  const auto tryBoth = [&] {
    EXPECT_EQ(graphic->addComponenWithQuartzCompositionFile(files.path(QStringLiteral("no.qtz")),
                                                            {}, warnings),
              nullptr);
    // A device that never ends.
    EXPECT_EQ(QuartzComponent::createWithDictionaryData(
                  {{QStringLiteral("compositionFilename"), QStringLiteral("/dev/zero")}}, *graphic,
                  warnings),
              nullptr);
    EXPECT_TRUE(graphic->components().isEmpty());
  };
  graphic.context->clearHistory();
  tryBoth();
  EXPECT_FALSE(graphic.context->canUndo());
  const store::UndoSuspension suspension(*graphic.context);
  tryBoth();
  EXPECT_EQ(warnings.size(), 4);
}

TEST_F(CompositionTest, SoloIsUndoneByASecondOne) {
  QuartzComponent* a = add(QStringLiteral("a"));
  QuartzComponent* b = add(QStringLiteral("b"));
  select({a});
  graphic->soloSelectedComponents();
  EXPECT_TRUE(a->visibleInCompositionEditor());
  EXPECT_FALSE(b->visibleInCompositionEditor());
  graphic->soloSelectedComponents();
  EXPECT_TRUE(b->visibleInCompositionEditor());
}

TEST_F(CompositionTest, EditorTimeIsClampedAndSnapped) {
  graphic->setVideoResolution(VideoResolution(QStringLiteral("HD 1080i25")));
  EXPECT_EQ(graphic->ticksPerSecond(), 25u);
  double time = 1.005;
  EXPECT_TRUE(graphic->validateEditorTimepoint(time));
  EXPECT_EQ(time, 1.0);
  time = -0.1;
  EXPECT_FALSE(graphic->validateEditorTimepoint(time));  // 0 it is already
  EXPECT_EQ(time, 0);
  time = 9;
  EXPECT_TRUE(graphic->validateEditorTimepoint(time));
  EXPECT_EQ(time, 2);
  graphic->setEditorTimepointForNearestTick(0.51);
  EXPECT_DOUBLE_EQ(graphic->editorTimepoint(), 0.52);
  graphic.context->undo();
  EXPECT_EQ(graphic->videoResolution().title(), QStringLiteral("HD 1080p50"));
  EXPECT_EQ(graphic->ticksPerSecond(), 50u);
}

TEST_F(CompositionTest, PlaybackFollowsTheClockAndEndsAtTheStart) {
  HandClock clock;
  graphic->playback().setClock(clock);
  QuartzComponent* component = add(QStringLiteral("a"));
  Attribute* amount = component->attributeForKey(QStringLiteral("Amount"));
  amount->addTimepoint(0, 0.0);
  amount->addTimepoint(2, 20.0);
  int refreshed = 0;
  const auto bound =
      component->observe(QStringLiteral("Amount"), [&](const store::Change&) { ++refreshed; });
  graphic->setEditorTimepoint(0.5);
  graphic->setPlayMode(true);
  EXPECT_DOUBLE_EQ(graphic->playback().startTime(), 99.5);
  clock.advance(0.5);
  EXPECT_NEAR(graphic->editorTimepoint(), 1, 0.0201);
  EXPECT_NEAR(amount->currentValue().toNumber(), 10, 0.21);
  EXPECT_EQ(refreshed, 0);
  graphic->setPlayMode(false);
  clock.advance(0.02);
  EXPECT_EQ(refreshed, 1);
  EXPECT_DOUBLE_EQ(graphic->editorTimepoint(), 1.02);  // on a tick
  for (int i = 0; i < 5; ++i) {
    graphic->setPlayMode(false);
    graphic->setPlayMode(true);
  }
  clock.advance(0.021);
  EXPECT_EQ(clock.waiting(), 1u);  // quick toggling leaves one chain of updates
  clock.advance(5);
  EXPECT_FALSE(graphic->playMode());
  EXPECT_EQ(graphic->editorTimepoint(), 0);
}

TEST_F(CompositionTest, PlaybackShowsEachFrameOnceAndSkipsThoseThatAreLate) {
  HandClock clock;
  graphic->playback().setClock(clock);
  graphic->setVideoResolution(VideoResolution(QStringLiteral("HD 1080i29.97")));
  const double frame = 1001.0 / 30000;
  QList<qint64> frames;
  double slowness = 0;  // of whoever draws
  const auto drawing =
      graphic->observe(QStringLiteral("editorTimepoint"), [&](const store::Change&) {
        frames.append(std::llround(graphic->editorTimepoint() / frame));
        clock.sleep(slowness);
      });
  graphic->setPlayMode(true);
  clock.advance(30.5 * frame);
  ASSERT_EQ(frames.size(), 30);
  for (qsizetype i = 0; i < frames.size(); ++i) EXPECT_EQ(frames.at(i), i + 1);
  slowness = 2.4 * frame;
  frames.clear();
  clock.advance(9 * frame);
  EXPECT_THAT(frames, ElementsAre(31, 34, 37)) << "on the frames where they belong";
  graphic->setPlayMode(false);
  clock.advance(1);
  EXPECT_EQ(clock.waiting(), 0u) << "nothing is done while it stands";
}

TEST_F(CompositionTest, JumpsWhilePlayingGoOnFromThere) {
  HandClock clock;
  graphic->playback().setClock(clock);
  graphic->setPlayMode(true);
  clock.advance(0.1);
  graphic->setEditorTimepoint(1.5);
  clock.advance(0.1);
  EXPECT_NEAR(graphic->editorTimepoint(), 1.6, 0.03);
  graphic->setPlayMode(false);
  graphic->setEditorTimepoint(0.4);
  clock.advance(0.1);
  EXPECT_EQ(graphic->editorTimepoint(), 0.4) << "the end of playing does not take it back";
}

TEST_F(CompositionTest, StopFramesGuidesAndPoster) {
  graphic->addStopFrame(1.5, QStringLiteral("Out"));
  StopFrame* early = graphic->addStopFrame(0.5);
  EXPECT_THAT(graphic->stopFrameTimepoints(), ElementsAre(0.5, 1.5));
  EXPECT_EQ(graphic->stopFrameDictionaries().first().dictionary().value(u"name").toString(),
            QStringLiteral("Stopframe"));
  EXPECT_EQ(graphic->stopFrameAtTimepoint(0.504), early);
  EXPECT_EQ(graphic->stopFrameAtTimepoint(0.506), nullptr);
  int announced = 0;
  const auto set =
      graphic->observe(QStringLiteral("stopFramesSet"), [&](const store::Change&) { ++announced; });
  early->setTimepoint(1);
  EXPECT_EQ(announced, 1);

  EXPECT_EQ(graphic->posterFrameMode(), 1);
  graphic->setEditorTimepoint(1);
  graphic->setPosterFrameMode(0);
  EXPECT_EQ(graphic->posterFrameTimepoint(), 1);
  graphic->setPosterFrameTimepoint(std::nan(""));
  EXPECT_EQ(graphic->posterFrameMode(), 1);

  const Ruler* ruler = graphic->addRulerAtPosition(100.1, true);
  EXPECT_TRUE(graphic->showsRulers());
  EXPECT_EQ(ruler->position(), static_cast<double>(100.1F));
  graphic.context->undo();
  EXPECT_TRUE(graphic->rulers().isEmpty());
  EXPECT_FALSE(graphic->showsRulers());
}

TEST_F(CompositionTest, AChangeTellsOnlyThoseConcerned) {
  for (int i = 0; i < 50; ++i) add(QString::number(i));
  QuartzComponent* moved = graphic->components()[20];
  int calls = 0;
  std::vector<store::Subscription> subscriptions;
  for (QuartzComponent* component : graphic->components())
    subscriptions.push_back(
        component->observe(QStringLiteral("drawingFrame"), [&](const store::Change&) { ++calls; }));
  size_t updated = 0;
  const auto changes = graphic.context->observeChanges(
      [&](const store::ChangeSet& set) { updated += set.updated.objects().size(); });
  moved->setOriginX(7);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(updated, 1u);  // the attribute
}

}  // namespace model
