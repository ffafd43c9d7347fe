#include "CanvasFixture.h"
#include "support/TestMovie.h"

namespace canvas {

using model::QuartzComponent;

namespace {

/// Counts what is painted.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) painted += static_cast<QPaintEvent*>(event)->region();
    return false;
  }
  [[nodiscard]] QRegion take() { return std::exchange(painted, {}); }

 private:
  QRegion painted;
};

}  // namespace

class Displaying : public CanvasFixture {
 protected:
  Displaying() {
    const auto path = model::StandardComponents::located().pathOf(QStringLiteral("Rectangle"));
    EXPECT_TRUE(path.has_value()) << "the standard components are not built";
    QStringList warnings;
    for (const QRectF& frame : {QRectF(100, 100, 200, 100), QRectF(600, 500, 50, 50)}) {
      auto* component = graphic->addComponenWithQuartzCompositionFile(*path, {}, warnings);
      component->setOriginX(frame.x());
      component->setOriginY(frame.y());
      component->setWidth(frame.width());
      component->setHeight(frame.height());
    }
    graphic->clearSelection();
    a = graphic->componentArray()[0];
    b = graphic->componentArray()[1];
    settle();
  }
  void settle() {
    showChanges();
    (void)counter.take();
  }
  static void showChanges() {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
  }
  [[nodiscard]] QRect inView(const QRectF& frame) {
    return view.geometryOfPicture().viewRect(frame).toAlignedRect();
  }
  [[nodiscard]] QColor shownAt(const QPointF& point) {
    const QPoint inView = view.geometryOfPicture().viewPoint(point).toPoint();
    view.displayIfNeeded();
    return view.grab().toImage().pixelColor(inView);
  }
  QuartzComponent* a = nullptr;
  QuartzComponent* b = nullptr;
  PaintCounter counter{view};
};

TEST_F(Displaying, OnlyWhatChangesIsAskedAndPainted) {
  const CompositionLayer& layer = view.scene()->componentsLayer();
  const qint64 asked = layer.evaluations();
  a->setOriginX(150);
  showChanges();
  EXPECT_EQ(layer.evaluations(), asked + 1);
  const QRegion painted = counter.take();
  EXPECT_TRUE(painted.contains(inView({100, 100, 250, 100})));
  EXPECT_FALSE(painted.intersects(inView({600, 500, 50, 50})));
  EXPECT_TRUE(inView({90, 90, 270, 120}).contains(painted.boundingRect()));
  // What does not change the picture paints nothing.
  a->setNeedsUpdate(true);
  a->setTitle(QStringLiteral("Other"));
  showChanges();
  EXPECT_TRUE(counter.take().isEmpty());
  EXPECT_EQ(layer.evaluations(), asked + 2);
}

TEST_F(Displaying, AnotherZoomPaintsTheViewOnce) {
  class Events : public QObject {
   public:
    int paints = 0;
    bool eventFilter(QObject*, QEvent* event) override {
      paints += event->type() == QEvent::Paint ? 1 : 0;
      return false;
    }
  } events;
  view.installEventFilter(&events);
  graphic->setZoomMode(50);
  showChanges();
  EXPECT_EQ(events.paints, 1);
}

TEST_F(Displaying, AnIdleCanvasAsksOnceASecondAndPaintsNothing) {
  const CompositionLayer& layer = view.scene()->componentsLayer();
  const qint64 asked = layer.evaluations();
  QTest::qWait(1300);
  EXPECT_EQ(layer.evaluations(), asked + 2);
  EXPECT_TRUE(counter.take().isEmpty());
}

TEST_F(Displaying, ComponentsStandOverTheBackgroundInTheirOrder) {
  graphic->setBackgroundMode(model::BackgroundMode::SolidColor);
  graphic->setBackgroundColor({0, 1, 0, 1});
  EXPECT_EQ(shownAt({1000, 1000}), QColor(0, 255, 0));
  a->attributeForKey(QStringLiteral("Color"))->setCurrentValue(foundation::Color{1, 0, 0, 1});
  b->attributeForKey(QStringLiteral("Color"))->setCurrentValue(foundation::Color{0, 0, 1, 1});
  b->setOriginX(120);
  b->setOriginY(120);
  EXPECT_EQ(shownAt({110, 110}), QColor(255, 0, 0));
  EXPECT_EQ(shownAt({140, 140}), QColor(0, 0, 255));
  b->setSelected(true);
  graphic->sendSelectionToBack();
  graphic->clearSelection();
  showChanges();
  EXPECT_EQ(shownAt({140, 140}), QColor(255, 0, 0));
  a->setStartTime(0.5);
  showChanges();
  EXPECT_EQ(shownAt({140, 140}), QColor(0, 0, 255));
  graphic->setEditorTimepoint(1);
  showChanges();
  EXPECT_EQ(shownAt({140, 140}), QColor(255, 0, 0));
  graphic->removeComponents({a});
  showChanges();
  EXPECT_EQ(shownAt({110, 110}), QColor(0, 255, 0));
  graphic.context->undo();
  showChanges();
  EXPECT_EQ(shownAt({110, 110}), QColor(255, 0, 0));
}

TEST_F(Displaying, AMovieBehindIsShownByItsFirstPicture) {
  const QString movie = files.path(QStringLiteral("behind.mov"));
  const runtime::movie::MovieFormat format{.container = *runtime::movie::containerOf(movie),
                                           .codec = runtime::movie::MovieCodec::QuickTimeRle,
                                           .size = {64, 36},
                                           .threads = 1};
  ASSERT_TRUE(support::writeMovie(movie, format, 3, [](int frame) {
    QImage image(64, 36, QImage::Format_ARGB32);
    image.fill(frame == 0 ? QColor(200, 30, 90) : QColor(Qt::green));
    return image;
  }));
  graphic->setBackgroundMode(model::BackgroundMode::Image);
  graphic->setBackgroundMovie(movie);
  EXPECT_EQ(shownAt({1000, 1000}), QColor(200, 30, 90));
  // Without it there is nothing, as on air.
  graphic->setBackgroundMovie(QStringLiteral("none.mov"));
  EXPECT_GT(shownAt({1000, 1000}).lightness(), 180);
}

TEST_F(Displaying, ComponentsThatCannotBeDrawnSayWhy) {
  const QList<BrokenMark>& marks = view.scene()->componentsLayer().brokenMarks();
  const QString data = QStringLiteral("quartzCompositionData");
  a->setStoredValue(QByteArray("nonsense"), data);
  showChanges();
  ASSERT_EQ(marks.size(), 1);
  EXPECT_EQ(marks[0].frame, a->drawingFrame());
  EXPECT_EQ(marks[0].name, QStringLiteral("Rectangle.qtz"));
  EXPECT_TRUE(marks[0].reason.startsWith(QStringLiteral("cannot be loaded: ")));
  a->setStoredValue(QByteArray(), data);
  showChanges();
  ASSERT_EQ(marks.size(), 1);
  EXPECT_EQ(marks[0].text(), QStringLiteral("Rectangle.qtz is missing"));
  graphic.context->undo();
  graphic.context->undo();
  showChanges();
  EXPECT_TRUE(marks.isEmpty());
}

TEST_F(Displaying, AComponentThatDrawsTooMuchIsMarked) {
  CompositionLayer layer(*graphic);
  layer.setLimits({.coverage = 0.005});
  (void)layer.display({{192, 108}, {0, 0, 192, 108}});
  ASSERT_EQ(layer.brokenMarks().size(), 1);  // B is much smaller
  EXPECT_EQ(layer.brokenMarks()[0].frame, a->drawingFrame());
  EXPECT_TRUE(layer.brokenMarks()[0].reason.startsWith(QStringLiteral("draws too much")));
}

TEST_F(Displaying, TheTimeCodeStandsForAMomentAfterTheTimeChanged) {
  EXPECT_FALSE(view.showTimecode());
  graphic->setEditorTimepoint(1.5);
  EXPECT_TRUE(view.showTimecode());
  EXPECT_EQ(view.scene()->transient().timecode, QStringLiteral("00:00:01:25"));
  view.hideTimecode();
  EXPECT_TRUE(view.scene()->transient().timecode.isEmpty());
}

TEST_F(Displaying, NothingIsFollowedAfterCleaningUp) {
  view.cleanUp();
  a->setOriginX(500);
  graphic->setZoomMode(200);
  graphic->removeComponents({b});
  showChanges();
  key(Qt::Key_Right);
  click({10, 10});
  EXPECT_EQ(view.grab().toImage().pixelColor(5, 5), QColor(15, 15, 15));
}

TEST_F(Displaying, SpacePlaysWhenItIsLetGoUnlessTheViewWasDragged) {
  key(Qt::Key_Space);
  EXPECT_TRUE(graphic->playMode());
  key(Qt::Key_Space);
  EXPECT_FALSE(graphic->playMode());
  QTest::keyPress(&view, Qt::Key_Space);
  drag({500, 500}, {520, 500});
  QTest::keyRelease(&view, Qt::Key_Space);
  EXPECT_FALSE(graphic->playMode());
  EXPECT_TRUE(view.selectedComponents().isEmpty());
}

}  // namespace canvas
