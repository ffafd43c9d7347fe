#include "CanvasFixture.h"

namespace canvas {

using model::QuartzComponent;

class Moving : public CanvasFixture {
 protected:
  QuartzComponent* a = add(QStringLiteral("A"), {100, 100, 200, 100});
};

TEST_F(Moving, BeginsTwoPixelsAwayAndIsOneStep) {
  press({150, 150});
  move({151.9, 148.1});
  EXPECT_EQ(a->drawingFrame(), QRectF(100, 100, 200, 100));
  move({152, 150});
  EXPECT_EQ(a->drawingFrame(), QRectF(102, 100, 200, 100));
  move({150.5, 150});  // once it moves, it follows everywhere
  EXPECT_EQ(a->drawingFrame(), QRectF(100.5, 100, 200, 100));
  move({250, 190});
  EXPECT_TRUE(graphic.context->isInStep());
  release({250, 190});
  EXPECT_EQ(a->drawingFrame(), QRectF(200, 140, 200, 100));
  EXPECT_EQ(graphic.context->history().count(), 1);
  EXPECT_EQ(undoName(), QStringLiteral("Move A"));
  graphic.context->undo();
  EXPECT_EQ(a->drawingFrame(), QRectF(100, 100, 200, 100));
}

TEST_F(Moving, EscapeLeavesNothingBehind) {
  press({150, 150});
  move({400, 400});
  key(Qt::Key_Escape);
  EXPECT_EQ(a->drawingFrame(), QRectF(100, 100, 200, 100));
  EXPECT_FALSE(view.isInGesture());
  move({500, 500});
  release({500, 500});
  EXPECT_EQ(a->drawingFrame(), QRectF(100, 100, 200, 100));
  EXPECT_EQ(graphic.context->history().count(), 0);
  EXPECT_FALSE(graphic.context->isInStep());
}

TEST_F(Moving, ShiftKeepsTheAxisOnWhichItWentFirst) {
  press({150, 150});
  move({155, 190}, Qt::ShiftModifier);
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(100, 140));
  move({350, 200}, Qt::ShiftModifier);
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(100, 150));
  move({350, 200});  // let go, it is free again
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(300, 150));
  release({350, 200});
  drag({350, 200}, {400, 240}, Qt::ShiftModifier);
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(350, 150));
}

TEST_F(Moving, GuidesCatchEdgesThatComeNearerThanTenPixels) {
  graphic->addRulerAtPosition(400, true);
  graphic->addRulerAtPosition(700, false);
  graphic.context->clearHistory();
  press({150, 150});
  move({150, 460});  // the lower edge at 410
  EXPECT_EQ(a->originY(), 410);
  move({150, 459.9});
  EXPECT_EQ(a->originY(), 400);
  move({150, 440.1});  // the lower edge at 390.1
  EXPECT_EQ(a->originY(), 400);
  move({150, 440});
  EXPECT_EQ(a->originY(), 390);
  move({150, 345});  // the upper edge at 395
  EXPECT_EQ(a->originY(), 300);
  EXPECT_EQ(view.scene()->transient().snap.horizontal, 400);
  move({555, 345});  // the right edge at 705
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(500, 300));
  move({555, 345}, Qt::ControlModifier);
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(505, 295));
  graphic->setShowsRulers(false);
  move({555, 345.5});
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(505, 295.5));
  release({555, 345.5});
}

TEST_F(Moving, TheFirstGuideInReachWinsAndSeveralMoveTogether) {
  graphic->addRulerAtPosition(409, true);
  graphic->addRulerAtPosition(400, true);
  add(QStringLiteral("B"), {350, 120, 100, 50});
  graphic->selectAllComponents();
  drag({150, 150}, {150, 451});
  EXPECT_EQ(a->originY(), 409);
  EXPECT_EQ(graphic->componentArray()[1]->originY(), 429);
  EXPECT_EQ(undoName(), QStringLiteral("Move 2 Components"));
}

TEST_F(Moving, ArrowKeysNudge) {
  click({150, 150});
  graphic.context->clearHistory();
  key(Qt::Key_Right);
  key(Qt::Key_Up);
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(101, 101));
  key(Qt::Key_Left, Qt::ShiftModifier);
  key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(91, 91));
  // All in one go: one step.
  EXPECT_EQ(graphic.context->history().count(), 1);
  EXPECT_EQ(undoName(), QStringLiteral("Move A"));
  graphic.context->undo();
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(100, 100));
  graphic.context->redo();
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(91, 91));
  a->setTitle(QStringLiteral("A"));
  a->setTitle(QStringLiteral("Other"));
  a->setTitle(QStringLiteral("A"));
  // A key that is held makes one step.
  for (const bool repeated : {false, true, true}) {
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, {}, repeated);
    QApplication::sendEvent(&view, &held);
  }
  QKeyEvent up(QEvent::KeyRelease, Qt::Key_Right, Qt::NoModifier);
  QApplication::sendEvent(&view, &up);
  EXPECT_EQ(a->originX(), 94);
  EXPECT_EQ(graphic.context->history().count(), 4);  // after the titles another one
  // Keys with other meanings are left alone.
  key(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(a->originX(), 94);
}

TEST_F(Moving, EndsWhereTheReleaseIsNotTold) {
  press({150, 150});
  move({160, 150});
  view.hide();
  EXPECT_EQ(a->originX(), 100);
  EXPECT_FALSE(graphic.context->isInStep());
  view.show();
  press({150, 150});
  move({160, 150});
  const QPointF inView = view.geometryOfPicture().viewPoint({170, 150});
  QMouseEvent unpressed(QEvent::MouseMove, inView, view.mapToGlobal(inView), Qt::NoButton,
                        Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(&view, &unpressed);
  EXPECT_EQ(a->originX(), 120);
  EXPECT_FALSE(graphic.context->isInStep());
  EXPECT_EQ(graphic.context->history().count(), 1);
}

TEST_F(Moving, TheCanvasClaimsItsKeysBeforeShortcutsOfTheWindow) {
  const auto claimed = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
    event.ignore();
    QApplication::sendEvent(&view, &event);
    return event.isAccepted();
  };
  EXPECT_TRUE(claimed(Qt::Key_Space));
  EXPECT_FALSE(claimed(Qt::Key_Left));
  a->setSelected(true);
  EXPECT_TRUE(claimed(Qt::Key_Left));
  EXPECT_TRUE(claimed(Qt::Key_Left, Qt::ShiftModifier));
  EXPECT_FALSE(claimed(Qt::Key_Left, Qt::ControlModifier));
  EXPECT_FALSE(claimed(Qt::Key_Escape));
  press({150, 150});
  EXPECT_TRUE(claimed(Qt::Key_Escape));
  release({150, 150});
}

TEST_F(Moving, WhatIsDeletedMeanwhileIsLeftAlone) {
  QuartzComponent* b = add(QStringLiteral("B"), {400, 100, 100, 100});
  graphic->selectAllComponents();
  press({150, 150});
  move({160, 150});
  graphic->removeComponents({b});
  move({170, 150});
  release({170, 150});
  EXPECT_EQ(a->originX(), 120);
  EXPECT_EQ(graphic->components().size(), 1);
}

TEST_F(Moving, WithAltCopiesAreMoved) {
  QuartzComponent* b = add(QStringLiteral("B"), {350, 120, 100, 50});
  graphic->selectAllComponents();
  const auto dragCopies = [this](const QPointF& to) {
    press({150, 150}, Qt::AltModifier);
    EXPECT_EQ(view.cursor().shape(), Qt::DragCopyCursor);
    move({151, 151}, Qt::AltModifier);
    EXPECT_EQ(graphic->components().size(), 2);  // within the dead zone
    move(to, Qt::AltModifier);
    EXPECT_EQ(graphic->components().size(), 4);
  };
  dragCopies({250, 450});
  key(Qt::Key_Escape);
  EXPECT_EQ(graphic->components().size(), 2);
  EXPECT_EQ(graphic.context->history().count(), 0);
  EXPECT_EQ(view.selectedComponents().size(), 2);
  EXPECT_EQ(a->originX(), 100);

  dragCopies({250, 450});
  release({250, 450}, Qt::AltModifier);
  EXPECT_EQ(graphic.context->history().count(), 1);
  EXPECT_EQ(undoName(), QStringLiteral("Duplicate"));
  EXPECT_EQ(a->drawingFrame().topLeft(), QPointF(100, 100));
  EXPECT_EQ(b->drawingFrame().topLeft(), QPointF(350, 120));
  const auto stack = graphic->componentsSortedByZLevel();
  EXPECT_EQ(view.selectedComponents(), stack.mid(2));
  EXPECT_EQ(stack[2]->drawingFrame(), a->drawingFrame().translated(100, 300));
  EXPECT_EQ(stack[3]->drawingFrame(), b->drawingFrame().translated(100, 300));
  graphic.context->undo();
  EXPECT_EQ(graphic->components().size(), 2);
  // Without moving it is a click.
  click({150, 150}, Qt::AltModifier);
  EXPECT_EQ(graphic->components().size(), 2);
}

}  // namespace canvas
