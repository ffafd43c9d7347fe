#include "CanvasFixture.h"
#include "canvas/TYAlignmentController.h"

namespace canvas {

using model::QuartzComponent;

class Aligning : public CanvasFixture {
 protected:
  QuartzComponent* a = add(QStringLiteral("A"), {100, 100, 200, 100});
  QuartzComponent* b = add(QStringLiteral("B"), {400, 300, 100, 300});
  QuartzComponent* c = add(QStringLiteral("C"), {700, 50, 50, 50});

  void align(int code, Anchor anchor = Anchor::None) {
    doAlignComponents(*graphic, static_cast<Alignment>(code), anchor);
  }
  using Row = std::array<double, 3>;
  [[nodiscard]] Row xs() const { return {a->originX(), b->originX(), c->originX()}; }
  [[nodiscard]] Row ys() const { return {a->originY(), b->originY(), c->originY()}; }
  /// The axis after the operation, which is then undone.
  Row xsAfter(int code, Anchor anchor = Anchor::None) {
    align(code, anchor);
    const Row row = xs();
    graphic.context->undo();
    return row;
  }
  Row ysAfter(int code, Anchor anchor = Anchor::None) {
    align(code, anchor);
    const Row row = ys();
    graphic.context->undo();
    return row;
  }
};

TEST_F(Aligning, TakesEdgesFromAllAndCentresFromTheBiggest) {
  graphic->selectAllComponents();
  EXPECT_EQ(xsAfter(0), (Row{100, 100, 100}));
  EXPECT_EQ(xsAfter(1), (Row{100, 150, 175}));
  EXPECT_EQ(xsAfter(2), (Row{550, 650, 700}));
  EXPECT_EQ(ysAfter(3), (Row{500, 300, 550}));
  EXPECT_EQ(ysAfter(4), (Row{400, 300, 425}));
  EXPECT_EQ(ysAfter(5), (Row{50, 50, 50}));
}

TEST_F(Aligning, AnchoredTakesEverythingFromTheFirstSelected) {
  for (QuartzComponent* component : {c, a, b}) component->setSelected(true);
  EXPECT_EQ(xsAfter(0, Anchor::FirstSelected), (Row{700, 700, 700}));
  EXPECT_EQ(xsAfter(1, Anchor::FirstSelected), (Row{625, 675, 700}));
  EXPECT_EQ(ysAfter(3, Anchor::FirstSelected), (Row{0, -200, 50}));
}

TEST_F(Aligning, EdgesBelowZeroMeetAtZero) {
  for (QuartzComponent* component : {a, b, c}) component->setOriginX(-500);
  graphic->selectAllComponents();
  EXPECT_EQ(xsAfter(2), (Row{-200, -100, -50}));
}

TEST_F(Aligning, DistributesBetweenTheOutermostInTheOrderOfTheSelection) {
  graphic->selectAllComponents();
  EXPECT_EQ(xsAfter(6), (Row{100, 400, 700}));
  EXPECT_EQ(xsAfter(7), (Row{100, 412.5, 700}));
  EXPECT_EQ(xsAfter(8), (Row{100, 425, 700}));
  EXPECT_EQ(ysAfter(11), (Row{175, 300, 50}));
  // D lies left of A but comes after it.
  QuartzComponent* d = add(QStringLiteral("D"), {50, 0, 10, 10});
  QuartzComponent* e = add(QStringLiteral("E"), {60, 0, 10, 10});
  graphic->selectAllComponents();
  align(6);
  EXPECT_EQ(d->originX(), 50);
  EXPECT_EQ(a->originX(), 212.5);
  EXPECT_EQ(b->originX(), 375);
  EXPECT_EQ(e->originX(), 537.5);
}

TEST_F(Aligning, NeedsEnoughComponentsAndASpan) {
  a->setSelected(true);
  align(0);
  b->setSelected(true);
  align(6);
  EXPECT_EQ(graphic.context->history().count(), 0);
  for (QuartzComponent* component : {a, b, c}) component->setOriginX(100);
  graphic.context->clearHistory();
  c->setSelected(true);
  align(6);
  EXPECT_EQ(graphic.context->history().count(), 0);
}

TEST_F(Aligning, TagsStandForOperationsAndEachIsOneStep) {
  graphic->selectAllComponents();
  bool anchored = false;
  TYAlignmentController controller(graphic.composition, [&] { return anchored; });
  EXPECT_EQ(TYAlignmentController::alignmentForTag(5), Alignment::BottomEdges);
  EXPECT_EQ(TYAlignmentController::alignmentForTag(6), Alignment::DistributeTopEdges);
  EXPECT_EQ(TYAlignmentController::alignmentForTag(8), Alignment::DistributeBottomEdges);
  EXPECT_EQ(TYAlignmentController::alignmentForTag(9), Alignment::DistributeLeftEdges);
  controller.executeMenu(12);
  controller.executeMenu(-1);
  EXPECT_EQ(graphic.context->history().count(), 0);
  controller.executeSegmented(0);
  EXPECT_EQ(xs(), (Row{100, 100, 100}));
  EXPECT_EQ(graphic.context->history().count(), 1);
  EXPECT_EQ(undoName(), QStringLiteral("Align"));
  anchored = true;
  controller.executeTag(3);
  EXPECT_EQ(ys(), (Row{100, -100, 150}));
  controller.setComposition(nullptr);
  controller.executeTag(0);
  EXPECT_EQ(graphic.context->history().count(), 2);
}

}  // namespace canvas
