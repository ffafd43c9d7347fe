#include "TimelineFixture.h"

namespace {

using namespace timeline;

class Dragging : public TimelineFixture {};

constexpr double frame = 0.04;

TEST_F(Dragging, movesABarWithItsKeyFramesAsOneStep) {
  auto* bar = add(QStringLiteral("Headline"), 1, 3);
  auto* opacity = key(*bar, "opacity", {1, 2, 3});
  drag(at(*bar, 2), {300, 0});
  EXPECT_DOUBLE_EQ(bar->startTime(), 2);
  EXPECT_DOUBLE_EQ(bar->endTime(), 4);
  EXPECT_EQ(opacity->sortedKeyFrames(), (QList<double>{2, 3, 4}));
  EXPECT_TRUE(bar->selected());
  EXPECT_EQ(undoName(), QStringLiteral("Move Headline"));
  EXPECT_EQ(steps(), 1);
  graphic.context->undo();
  EXPECT_DOUBLE_EQ(bar->startTime(), 1);
  EXPECT_EQ(opacity->sortedKeyFrames(), (QList<double>{1, 2, 3}));
}

TEST_F(Dragging, movesInWholeFramesAndKeepsTheRest) {
  auto* bar = add(QStringLiteral("Bar"), 1, 3);
  drag(at(*bar, 2), {6, 0});
  EXPECT_DOUBLE_EQ(bar->startTime(), 1);
  EXPECT_EQ(steps(), 0);
  drag(at(*bar, 2), {6, 0});
  EXPECT_DOUBLE_EQ(bar->startTime(), 1 + frame);
}

TEST_F(Dragging, stopsBarsAtTheEndsOfTheComposition) {
  auto* bar = add(QStringLiteral("Bar"), 1, 3);
  drag(at(*bar, 2), {6000, 0});
  EXPECT_DOUBLE_EQ(bar->startTime(), 8);
  EXPECT_DOUBLE_EQ(bar->endTime(), 10);
  drag(at(*bar, 9), {-9000, 0});
  EXPECT_DOUBLE_EQ(bar->startTime(), 0);
  EXPECT_DOUBLE_EQ(bar->endTime(), 2);
}

TEST_F(Dragging, changesStartAndEnd) {
  auto* bar = add(QStringLiteral("Bar"), 1, 3);
  auto* opacity = key(*bar, "opacity", {2});
  drag(at(*bar, 1) + QPointF(2, 0), {-480, 0});
  EXPECT_DOUBLE_EQ(bar->startTime(), 0);
  EXPECT_DOUBLE_EQ(bar->endTime(), 3);
  // Key frames move by all that was asked for, as far as the bar is long.
  EXPECT_NEAR(opacity->sortedKeyFrames().first(), 0.4, 1e-6);
  EXPECT_EQ(undoName(), QStringLiteral("Change Start of Bar"));
  drag(at(*bar, 3) - QPointF(2, 0), {3000, 0});
  EXPECT_DOUBLE_EQ(bar->endTime(), 13);  // the composition's end is no limit
  EXPECT_EQ(undoName(), QStringLiteral("Change End of Bar"));
  const QPointF from = at(*bar, 0) + QPointF(2, 0);
  press(Where::Rows, from);
  move(Where::Rows, from + QPointF(3900, 0), Qt::ControlModifier);
  release(Where::Rows, from + QPointF(3900, 0), Qt::ControlModifier);
  EXPECT_DOUBLE_EQ(bar->startTime(), 0);  // not onto its end
}

TEST_F(Dragging, movesAllSelectedBars) {
  auto* lower = add(QStringLiteral("Lower"), 1, 3);
  auto* upper = add(QStringLiteral("Upper"), 2, 4);
  lower->setSelected(true);
  upper->setSelected(true);
  drag(at(*upper, 3), {300, 0});
  EXPECT_DOUBLE_EQ(lower->startTime(), 2);
  EXPECT_DOUBLE_EQ(upper->startTime(), 3);
  EXPECT_EQ(undoName(), QStringLiteral("Move 2 Components"));
}

TEST_F(Dragging, escapeLeavesNothingBehind) {
  auto* other = add(QStringLiteral("Other"), 0, 5);
  auto* bar = add(QStringLiteral("Bar"), 1, 3);
  auto* opacity = key(*bar, "opacity", {1, 2});
  other->setSelected(true);
  press(Where::Rows, at(*bar, 2));
  move(Where::Rows, at(*bar, 2) + QPointF(100, 0));
  move(Where::Rows, at(*bar, 2) + QPointF(300, 0));
  EXPECT_NE(bar->startTime(), 1);
  QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_Delete, Qt::NoModifier);
  asked.ignore();
  QApplication::sendEvent(&view, &asked);
  EXPECT_TRUE(asked.isAccepted());  // so no command gets it
  keyPress(Qt::Key_Escape);
  EXPECT_DOUBLE_EQ(bar->startTime(), 1);
  EXPECT_EQ(opacity->sortedKeyFrames(), (QList<double>{1, 2}));
  EXPECT_EQ(steps(), 0);
  EXPECT_FALSE(graphic.context->isInStep());
  EXPECT_TRUE(other->selected());
  EXPECT_FALSE(bar->selected());
  EXPECT_TRUE(view.scene().marks.barGhosts.isEmpty());
  release(Where::Rows, at(*bar, 2));
  EXPECT_DOUBLE_EQ(bar->startTime(), 1);
  drag(at(*bar, 2), {300, 0});  // nothing of the cancelled way is made up for
  EXPECT_DOUBLE_EQ(bar->startTime(), 2);
}

TEST_F(Dragging, movesSelectedKeyFrames) {
  auto* bar = add(QStringLiteral("Bar"), 0, 10);
  auto* opacity = key(*bar, "opacity", {1, 3, 5});
  auto* x = key(*bar, "originX", {1, 4});
  x->setTimePointSelected(1, true);
  opacity->setTimePointSelected(1, true);
  drag(at(*opacity, 1), {300, 0});
  EXPECT_EQ(opacity->sortedKeyFrames(), (QList<double>{2, 3, 5}));
  EXPECT_EQ(x->sortedKeyFrames(), (QList<double>{2, 4}));
  EXPECT_EQ(opacity->selectedTimepoints(), (QList<double>{2}));
  EXPECT_EQ(undoName(), QStringLiteral("Move 2 Key Frames"));
  EXPECT_EQ(steps(), 1);
  graphic.context->undo();
  EXPECT_EQ(opacity->sortedKeyFrames(), (QList<double>{1, 3, 5}));
}

TEST_F(Dragging, keyFramesThatAreOnlyPassedOverStay) {
  auto* bar = add(QStringLiteral("Bar"), 0, 10);
  auto* opacity = key(*bar, "opacity", {1, 2, 5});
  const QPointF from = at(*opacity, 1);
  press(Where::Rows, from);
  for (int x = 30; x <= 600; x += 30) move(Where::Rows, from + QPointF(x, 0), Qt::ControlModifier);
  release(Where::Rows, from + QPointF(600, 0), Qt::ControlModifier);
  EXPECT_EQ(opacity->sortedKeyFrames(), (QList<double>{2, 3, 5}));
  drag(at(*opacity, 3), {-300, 0});  // onto the next one, which it replaces
  EXPECT_EQ(opacity->sortedKeyFrames(), (QList<double>{2, 5}));
  EXPECT_EQ(opacity->valueForTimepoint(2).toNumber(), 10);
}

TEST_F(Dragging, marqueeSelectsKeyFramesAndCtrlAdds) {
  auto* bar = add(QStringLiteral("Bar"), 0, 10);
  auto* opacity = key(*bar, "opacity", {1, 2, 5});
  press(Where::Rows, at(*opacity, 0.5));
  move(Where::Rows, at(*opacity, 2.1) + QPointF(0, 4));
  EXPECT_FALSE(view.scene().marks.marquee.isNull());
  release(Where::Rows, at(*opacity, 2.1) + QPointF(0, 4));
  EXPECT_EQ(opacity->selectedTimepoints(), (QList<double>{1, 2}));
  EXPECT_TRUE(view.scene().marks.marquee.isNull());
  press(Where::Rows, at(*opacity, 4.5), Qt::ControlModifier);
  move(Where::Rows, at(*opacity, 5.5), Qt::ControlModifier);
  release(Where::Rows, at(*opacity, 5.5), Qt::ControlModifier);
  EXPECT_EQ(opacity->selectedTimepoints().size(), 3);
  EXPECT_EQ(steps(), 0);
  press(Where::Rows, at(*opacity, 6));
  move(Where::Rows, at(*opacity, 7));
  keyPress(Qt::Key_Escape);
  EXPECT_EQ(opacity->selectedTimepoints().size(), 3);
}

TEST_F(Dragging, snapsBarsAndShowsIt) {
  auto* bar = add(QStringLiteral("Bar"), 1, 3);
  graphic->setEditorTimepoint(4.2);
  const QPointF from = at(*bar, 2);
  press(Where::Rows, from);
  move(Where::Rows, from + QPointF(100, 0));
  EXPECT_FALSE(view.scene().marks.snapTime);
  move(Where::Rows, from + QPointF(357, 0));  // its end is 3 before the marker
  EXPECT_EQ(view.scene().marks.snapTime, 4.2);
  EXPECT_DOUBLE_EQ(bar->endTime(), 4.2);
  move(Where::Rows, from + QPointF(357, 0), Qt::ControlModifier);
  EXPECT_FALSE(view.scene().marks.snapTime);
  release(Where::Rows, from + QPointF(357, 0));
  EXPECT_FALSE(view.scene().marks.guideTime);
}

TEST_F(Dragging, scrubsInTheRulerByFrames) {
  press(Where::Ruler, {3 + 300 + 17, 15});
  EXPECT_NEAR(graphic->editorTimepoint(), 1.04, 1e-9);
  move(Where::Ruler, {3 + 600, 15});
  EXPECT_NEAR(graphic->editorTimepoint(), 2, 1e-9);
  keyPress(Qt::Key_Escape);
  EXPECT_EQ(graphic->editorTimepoint(), 0);
  click(Where::Ruler, {3 + 24, 15});
  EXPECT_NEAR(graphic->editorTimepoint(), 0.08, 1e-9);
  EXPECT_EQ(steps(), 0);
}

TEST_F(Dragging, movesStopFramesAndTheEnd) {
  model::StopFrame* stop = graphic->addStopFrame(2);
  settle();
  const QPointF mark(3 + 600, 5);
  drag(mark, {310, 0}, Where::Ruler);
  EXPECT_NEAR(stop->timepoint(), 3.04, 1e-9);  // 25.8 frames, to the nearest
  EXPECT_EQ(undoName(), QStringLiteral("Move Stop Frame"));
  graphic.context->undo();
  click(Where::Ruler, mark);
  EXPECT_EQ(graphic->editorTimepoint(), 2);
  EXPECT_EQ(stop->timepoint(), 2);
  press(Where::Ruler, mark);
  move(Where::Ruler, mark + QPointF(90, 0));
  keyPress(Qt::Key_Escape);
  EXPECT_EQ(stop->timepoint(), 2);
  drag({3 + 3000 + 4, 5}, {-600, 0}, Where::Ruler);
  EXPECT_NEAR(graphic->duration(), 8, 1e-9);
  EXPECT_EQ(undoName(), QStringLiteral("Change Duration"));
}

TEST_F(Dragging, titlesChangeTheOrder) {
  auto* bottom = add(QStringLiteral("Bottom"), 0, 5);
  auto* middle = add(QStringLiteral("Middle"), 0, 5);
  auto* top = add(QStringLiteral("Top"), 0, 5);
  press(Where::Titles, {60, 60});
  move(Where::Titles, {60, 20});
  move(Where::Titles, {60, 2});
  EXPECT_EQ(view.scene().marks.insertRow, 0);
  release(Where::Titles, {60, 2});
  EXPECT_EQ(graphic->componentsSortedByInverseZLevel(),
            (QList<model::QuartzComponent*>{bottom, top, middle}));
  EXPECT_EQ(undoName(), QStringLiteral("Arrange"));
  graphic.context->undo();
  QApplication::processEvents();
  EXPECT_EQ(view.rows().at(0).component, top);
}

}  // namespace
