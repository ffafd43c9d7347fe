#include "CanvasFixture.h"
#include "canvas/CanvasHost.h"
#include "canvas/CanvasRuler.h"
#include "canvas/TYZoomScrollView.h"
#include "widgets/TYTooltipWindow.h"

namespace canvas {

using model::QuartzComponent;

class Guides : public CanvasFixture {
 protected:
  model::Ruler* addGuide(double position, bool horizontal) {
    model::Ruler* guide = graphic->addRulerAtPosition(position, horizontal);
    graphic.context->clearHistory();
    return guide;
  }
};

TEST_F(Guides, AreGrabbedCloserThanThreePixelsAndMoveByWholePixels) {
  model::Ruler* guide = addGuide(500, true);
  drag({300, 503}, {300, 600});
  EXPECT_EQ(guide->position(), 500);
  drag({300, 502.9}, {300, 600.4});
  EXPECT_EQ(guide->position(), 600);
  EXPECT_EQ(undoName(), QStringLiteral("Move Guide"));
  press({300, 600});
  move({300, 700});
  key(Qt::Key_Escape);
  EXPECT_EQ(guide->position(), 600);
  EXPECT_EQ(graphic.context->history().count(), 1);
  // What is not shown cannot be grabbed.
  graphic->setShowsRulers(false);
  drag({300, 600}, {300, 650});
  EXPECT_EQ(guide->position(), 600);
}

TEST_F(Guides, AreRemovedOutsideThePicture) {
  model::Ruler* guide = addGuide(500, false);
  press({500, 300});
  move({-5, 300});
  EXPECT_EQ(view.cursor().shape(), Qt::ForbiddenCursor);
  move({20, 300});
  EXPECT_EQ(view.cursor().shape(), Qt::SplitHCursor);
  move({1921, 300});
  release({1921, 300});
  EXPECT_EQ(graphic->rulers().size(), 0);
  EXPECT_EQ(undoName(), QStringLiteral("Remove Guide"));
  graphic.context->undo();
  ASSERT_EQ(graphic->rulers().size(), 1);
  EXPECT_EQ(guide->position(), 500);
}

TEST_F(Guides, OverABackgroundCanBeTakenOthersStandBehindComponents) {
  model::Ruler* guide = addGuide(500, true);
  QuartzComponent* a = add(QStringLiteral("A"), {100, 450, 200, 100});
  drag({200, 500}, {200, 520});
  EXPECT_EQ(guide->position(), 500);
  EXPECT_EQ(a->originY(), 470);
  QuartzComponent* behind = add(QStringLiteral("Behind"), {0, 0, 1920, 1080});
  behind->setSelected(true);
  drag({600, 500}, {600, 700});
  EXPECT_EQ(guide->position(), 700);
  EXPECT_EQ(behind->drawingFrame(), QRectF(0, 0, 1920, 1080));
  view.setGuidesLocked(true);
  drag({600, 700}, {600, 750});
  EXPECT_EQ(guide->position(), 700);
  EXPECT_EQ(behind->originY(), 50);
  // Zoomed out, a hand needs as many points as at full size.
  view.setGuidesLocked(false);
  graphic->removeComponents({behind, a});
  graphic->setZoomMode(25);
  drag({600, 708}, {600, 400});
  EXPECT_EQ(guide->position(), 400);
}

TEST_F(Guides, TellWhereTheyAreWhileTheyAreDragged) {
  addGuide(500, true);
  const widgets::TYTooltipWindow& plate = widgets::TYTooltipWindow::sharedWindow();
  press({300, 500});
  move({300, 612.3});
  EXPECT_TRUE(plate.isVisible());
  EXPECT_EQ(plate.text(), QStringLiteral("Y 612"));
  move({300, -20});
  EXPECT_EQ(plate.text(), QStringLiteral("Remove"));
  key(Qt::Key_Escape);
  EXPECT_FALSE(plate.isVisible());
}

class RulersOfTheCanvas : public Guides {
 protected:
  RulersOfTheCanvas() {
    auto* shown = new CompositionView(files.standardComponents());
    shown->setComposition(graphic.composition);
    scroll.resize(1000, 700);
    scroll.setDocumentView(shown);
    graphic->setZoomMode(50);
    scroll.show();
  }
  ~RulersOfTheCanvas() override { scroll.documentView()->cleanUp(); }
  /// Where the picture's point is on the ruler.
  [[nodiscard]] QPoint on(CanvasRuler& ruler, const QPointF& point) {
    const CompositionView& shown = *scroll.documentView();
    const QPointF inView = shown.geometryOfPicture().viewPoint(point);
    return ruler.mapFromGlobal(shown.mapToGlobal(inView)).toPoint();
  }
  void sendTo(CanvasRuler& ruler, QEvent::Type type, const QPoint& point) {
    QMouseEvent event(type, point, ruler.mapToGlobal(QPointF(point)), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&ruler, &event);
  }
  TYZoomScrollView scroll;
};

TEST_F(RulersOfTheCanvas, ReadingsBeginAtThePictureAndTheSelectionIsMarked) {
  const RulerPainter& across = scroll.horizontalRuler().painter();
  EXPECT_EQ(across.positionOf(0), on(scroll.horizontalRuler(), {0, 0}).x());
  EXPECT_EQ(across.positionOf(1000), on(scroll.horizontalRuler(), {1000, 0}).x());
  const RulerPainter& up = scroll.verticalRuler().painter();
  EXPECT_EQ(up.positionOf(400), on(scroll.verticalRuler(), {0, 400}).y());
  EXPECT_EQ(across.unit.name, QStringLiteral("Points50"));
  EXPECT_FALSE(across.extent.has_value());
  add(QStringLiteral("A"), {100, 200, 300, 50})->setSelected(true);
  scroll.documentView()->displayIfNeeded();
  EXPECT_EQ(across.extent, (RulerPainter::Extent{100, 400}));
  EXPECT_EQ(up.extent, (RulerPainter::Extent{200, 250}));
}

TEST_F(RulersOfTheCanvas, ThePointerIsMarkedAndTold) {
  class Host : public CanvasHost {
   public:
    void pointerMoved(const std::optional<QPointF>& point) override { pointer = point; }
    void showHint(const QString& text) override { hint = text; }
    std::optional<QPointF> pointer;
    QString hint;
  } host;
  CompositionView& shown = *scroll.documentView();
  shown.setHost(host);
  const QPointF at = shown.geometryOfPicture().viewPoint({600, 300});
  QMouseEvent move(QEvent::MouseMove, at, shown.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QApplication::sendEvent(&shown, &move);
  EXPECT_EQ(host.pointer, QPointF(600, 300));
  EXPECT_EQ(scroll.horizontalRuler().painter().pointer,
            scroll.horizontalRuler().painter().positionOf(600));
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&shown, &leave);
  EXPECT_FALSE(host.pointer.has_value());
  EXPECT_FALSE(scroll.verticalRuler().painter().pointer.has_value());
  add(QStringLiteral("A"), {0, 0, 10, 10})->setSelected(true);
  EXPECT_FALSE(host.hint.isEmpty());
  graphic->clearSelection();
  EXPECT_TRUE(host.hint.isEmpty());
  shown.cleanUp();
}

TEST_F(RulersOfTheCanvas, OnlyADoubleClickSetsAGuideAcross) {
  CanvasRuler& vertical = scroll.verticalRuler();
  const QPoint point = on(vertical, {0, 400});
  QTest::mouseClick(&vertical, Qt::LeftButton, {}, point);
  EXPECT_EQ(graphic->rulers().size(), 0);
  sendTo(vertical, QEvent::MouseButtonDblClick, point);
  ASSERT_EQ(graphic->rulers().size(), 1);
  EXPECT_TRUE(graphic->rulers().list().first()->horizontal());
  EXPECT_EQ(graphic->rulers().list().first()->position(), 400);
  CanvasRuler& horizontal = scroll.horizontalRuler();
  sendTo(horizontal, QEvent::MouseButtonDblClick, on(horizontal, {700, 0}));
  EXPECT_FALSE(graphic->rulers().list().last()->horizontal());
  EXPECT_EQ(graphic->rulers().list().last()->position(), 700);
}

TEST_F(RulersOfTheCanvas, GuidesArePulledOut) {
  CanvasRuler& ruler = scroll.horizontalRuler();
  const auto pull = [&](const QPoint& to) {
    sendTo(ruler, QEvent::MouseButtonPress, {300, 9});
    sendTo(ruler, QEvent::MouseMove, {300, 12});
    EXPECT_EQ(graphic->rulers().size(), 0);
    sendTo(ruler, QEvent::MouseMove, to);
    sendTo(ruler, QEvent::MouseButtonRelease, to);
  };
  const QPoint inside = on(ruler, {600, 300});
  pull(inside);
  ASSERT_EQ(graphic->rulers().size(), 1);
  EXPECT_EQ(graphic->rulers().list().first()->position(), 300);
  EXPECT_TRUE(graphic->rulers().list().first()->horizontal());
  EXPECT_TRUE(graphic->showsRulers());
  EXPECT_EQ(undoName(), QStringLiteral("Add Guide"));
  graphic.context->undo();
  // Let go over the surround, it was never there.
  pull(on(ruler, {600, -20}));
  EXPECT_EQ(graphic->rulers().size(), 0);
  EXPECT_EQ(graphic.context->history().count(), 1);
}

TEST_F(RulersOfTheCanvas, TheWheelZoomsAroundThePointerAndTheViewScrollsByHand) {
  CompositionView& shown = *scroll.documentView();
  graphic->setZoomMode(100);
  EXPECT_EQ(shown.width(), 1970);
  // What was in the middle stays there.
  const QPointF middle(scroll.viewport()->rect().center());
  const QPointF there = shown.geometryOfPicture().picturePoint(middle - shown.pos());
  EXPECT_NEAR(there.x(), 960, 2);
  EXPECT_NEAR(there.y(), 540, 2);
  const QPointF inPicture(700, 500);
  const auto onScreen = [&] {
    return shown.pos() + shown.geometryOfPicture().viewPoint(inPicture);
  };
  const QPointF before = onScreen();
  const QPointF at = shown.geometryOfPicture().viewPoint(inPicture);
  QWheelEvent wheel(at, shown.mapToGlobal(at), {}, {0, 120}, Qt::NoButton, Qt::ControlModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&shown, &wheel);
  EXPECT_EQ(graphic->zoomMode(), 150);
  EXPECT_NEAR(onScreen().x(), before.x(), 1.5);
  EXPECT_NEAR(onScreen().y(), before.y(), 1.5);

  const QPoint start = shown.pos();
  QTest::mousePress(&shown, Qt::MiddleButton, {}, {900, 900});
  QMouseEvent drag(QEvent::MouseMove, QPointF(880, 870), shown.mapToGlobal(QPointF(880, 870)),
                   Qt::NoButton, Qt::MiddleButton, Qt::NoModifier);
  QApplication::sendEvent(&shown, &drag);
  EXPECT_EQ(shown.pos() - start, QPoint(-20, -30));
  QTest::mouseRelease(&shown, Qt::MiddleButton, {}, {900, 900});

  graphic->setZoomMode(0);
  EXPECT_EQ(shown.size(), scroll.viewport()->size());
  EXPECT_LE(shown.zoomedDocumentWidth() + 52, shown.width() + 0.01);
}

}  // namespace canvas
