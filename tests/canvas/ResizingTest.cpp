#include "CanvasFixture.h"

namespace canvas {

using model::QuartzComponent;

class Resizing : public CanvasFixture {
 protected:
  QuartzComponent* a = add(QStringLiteral("A"), {100, 100, 200, 100});
  /// Drags the upper right handle of the component as it was at first.
  QRectF resized(const QPointF& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    a->setSelected(true);
    drag({296, 196}, to, modifiers);
    const QRectF frame = a->drawingFrame();
    graphic.context->undo();
    return frame;
  }
};

TEST_F(Resizing, AHandleOfASelectedComponentResizesItAsOneStep) {
  click({150, 150});
  press({296, 196});
  move({350, 250});
  release({350, 250});
  EXPECT_EQ(a->drawingFrame(), QRectF(100, 100, 250, 150));
  EXPECT_EQ(undoName(), QStringLiteral("Resize A"));
  EXPECT_EQ(graphic.context->history().count(), 1);
  graphic.context->undo();
  EXPECT_EQ(a->drawingFrame(), QRectF(100, 100, 200, 100));
}

TEST_F(Resizing, ShiftInvertsProportionsAndAltTakesTheCentre) {
  EXPECT_EQ(resized({310, 200}, Qt::ShiftModifier), QRectF(100, 100, 210, 120));
  EXPECT_EQ(resized({310, 210}, Qt::AltModifier), QRectF(90, 90, 220, 120));
  a->setConstrainProportions(true);
  // Wide frames grow higher than they should, and the width then follows once more.
  EXPECT_EQ(resized({310, 200}), QRectF(100, 100, 240, 120));
}

TEST_F(Resizing, GuidesCatchThePointer) {
  graphic->addRulerAtPosition(400, false);
  EXPECT_EQ(resized({391, 200}), QRectF(100, 100, 300, 100));
  EXPECT_EQ(resized({390, 200}), QRectF(100, 100, 290, 100));
  EXPECT_EQ(resized({391, 200}, Qt::ControlModifier), QRectF(100, 100, 291, 100));
}

TEST_F(Resizing, AClickOnAHandleAndEscapeChangeNothing) {
  click({150, 150});
  click({296, 196});
  EXPECT_EQ(graphic.context->history().count(), 0);
  press({296, 196});
  move({350, 250});
  key(Qt::Key_Escape);
  EXPECT_EQ(a->drawingFrame(), QRectF(100, 100, 200, 100));
  EXPECT_EQ(graphic.context->history().count(), 0);
}

TEST_F(Resizing, AnUnselectedComponentsHandlePassesToTheSelectedOne) {
  QuartzComponent* b = add(QStringLiteral("B"), {500, 500, 100, 100});
  b->setSelected(true);
  // A's own handle: B stays selected and is what moves.
  drag({104, 104}, {124, 104});
  EXPECT_EQ(b->originX(), 520);
  EXPECT_EQ(a->originX(), 100);
  EXPECT_FALSE(a->selected());
  // Anywhere else on A, A is meant.
  click({150, 150});
  EXPECT_TRUE(a->selected());
  EXPECT_FALSE(b->selected());
}

TEST_F(Resizing, ZoomedOutHandlesCanBeGrabbedWhereTheyAreSeen) {
  graphic->setZoomMode(50);
  click({200, 150});
  // 12 pixels inside the frame are 6 points: within the painted handle, not within its own 8
  // pixels.
  drag({288, 188}, {488, 188});
  EXPECT_EQ(a->drawingFrame().left(), 100);
  EXPECT_EQ(a->drawingFrame().right(), 488);
}

TEST_F(Resizing, HandlesOfWhatIsSmallLeaveRoomToMoveIt) {
  graphic->setZoomMode(50);
  QuartzComponent* dot = add(QStringLiteral("Dot"), {900, 500, 16, 16});
  click({908, 508});
  drag({908, 508}, {1008, 608});
  EXPECT_EQ(dot->drawingFrame(), QRectF(1000, 600, 16, 16));
  // Eight points of the dot and two for the hand; handles begin beyond them.
  move({1024, 592});
  EXPECT_EQ(view.cursor().shape(), Qt::SizeFDiagCursor);
  drag({1024, 592}, {1124, 592});
  EXPECT_EQ(dot->drawingFrame(), QRectF(1000, 592, 124, 24));
  // A line can be taken hold of too, beside what is drawn.
  QuartzComponent* line = add(QStringLiteral("Line"), {200, 900, 800, 2});
  line->setSelected(true);
  drag({500, 906}, {500, 806});
  EXPECT_EQ(line->drawingFrame(), QRectF(200, 800, 800, 2));
  // Not before it is selected.
  graphic->clearSelection();
  click({500, 806});
  EXPECT_TRUE(view.selectedComponents().isEmpty());
}

}  // namespace canvas
