#include <QAccessible>
#include <QScrollBar>
#include <QSignalSpy>

#include "TimelineFixture.h"
#include "timeline/TimelineEditors.h"
#include "timeline/TimelineInput.h"

namespace {

using namespace timeline;

class Keyboard : public TimelineFixture {};

TEST_F(Keyboard, walksRowsAndKeyFrames) {
  auto* lower = add(QStringLiteral("Lower"), 0, 10);
  auto* upper = add(QStringLiteral("Upper"), 0, 10);
  keyPress(Qt::Key_Down);
  EXPECT_TRUE(lower->selected());
  keyPress(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_TRUE(lower->selected() && upper->selected());
  EXPECT_TRUE(hint.startsWith(QStringLiteral("Upper, from 00:00:00:00")));
  auto* opacity = key(*upper, "opacity", {1, 2});
  view.setCurrentRow(view.rows().rowOf(*opacity));
  keyPress(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(opacity->selectedTimepoints(), (QList<double>{1}));
  keyPress(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(opacity->selectedTimepoints(), (QList<double>{2}));
  EXPECT_TRUE(hint.contains(QStringLiteral("at 00:00:02:00, value 20")));
  keyPress(Qt::Key_Right, Qt::ControlModifier);
  EXPECT_NEAR(opacity->selectedTimepoints().value(0), 2.04, 1e-6);
  EXPECT_EQ(undoName(), QStringLiteral("Move Key Frame"));
  keyPress(Qt::Key_Return);
  EXPECT_TRUE(view.editors().open());
  view.editors().close();
}

TEST_F(Keyboard, itsPlaceIsSeenOnlyWhileItIsUsed) {
  add(QStringLiteral("Bar"), 0, 10);
  click(Where::Rows, inRow(0, 1));
  EXPECT_FALSE(view.scene().hasFocus);
  keyPress(Qt::Key_Down);
  EXPECT_TRUE(view.scene().hasFocus);
  click(Where::Rows, inRow(0, 1));
  EXPECT_FALSE(view.scene().hasFocus);
}

TEST_F(Keyboard, movesBarsAndStopFrames) {
  auto* bar = add(QStringLiteral("Bar"), 1, 3);
  graphic->addStopFrame(2);
  settle();
  keyPress(Qt::Key_Down);
  keyPress(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_NEAR(bar->startTime(), 1.4, 1e-9);
  keyPress(Qt::Key_Plus);
  EXPECT_TRUE(bar->expanded());
  keyPress(Qt::Key_Up);
  EXPECT_EQ(view.currentRow(), -1);
  keyPress(Qt::Key_Right, Qt::AltModifier);
  keyPress(Qt::Key_Left, Qt::ControlModifier);
  EXPECT_NEAR(graphic->stopFrameTimepoints().value(0), 1.96, 1e-9);
  EXPECT_EQ(undoName(), QStringLiteral("Move Stop Frame"));
}

TEST_F(Keyboard, changesTheOrderAndStaysWithItsRow) {
  auto* bottom = add(QStringLiteral("Bottom"), 0, 5);
  auto* middle = add(QStringLiteral("Middle"), 0, 5);
  auto* top = add(QStringLiteral("Top"), 0, 5);
  keyPress(Qt::Key_Down);
  ASSERT_TRUE(middle->selected());
  keyPress(Qt::Key_Down, Qt::AltModifier);
  QApplication::processEvents();
  EXPECT_EQ(graphic->componentsSortedByInverseZLevel(),
            (QList<model::QuartzComponent*>{top, bottom, middle}));
  EXPECT_EQ(undoName(), QStringLiteral("Arrange"));
  EXPECT_EQ(view.currentRow(), 2);
  keyPress(Qt::Key_Down, Qt::AltModifier);  // no further
  EXPECT_EQ(steps(), 1);
  keyPress(Qt::Key_Up, Qt::AltModifier);
  keyPress(Qt::Key_Up, Qt::AltModifier);
  keyPress(Qt::Key_Up, Qt::AltModifier);
  QApplication::processEvents();
  EXPECT_EQ(graphic->componentsSortedByInverseZLevel().first(), middle);
  EXPECT_EQ(view.currentRow(), 0);
  view.setCurrentRow(2);
  top->setExpanded(true);
  QApplication::processEvents();
  EXPECT_EQ(view.rows().at(view.currentRow()).component, bottom) << "opened above it";
}

TEST_F(Keyboard, bracketsPutEdgesAndTheEndAtTheMarker) {
  auto* bar = add(QStringLiteral("Bar"), 1, 5);
  graphic->setEditorTimepoint(2);
  keyPress(Qt::Key_Down);
  keyPress(Qt::Key_BracketLeft);
  EXPECT_DOUBLE_EQ(bar->startTime(), 2);
  EXPECT_EQ(undoName(), QStringLiteral("Change Start of Bar"));
  graphic->setEditorTimepoint(4);
  keyPress(Qt::Key_BracketRight);
  EXPECT_DOUBLE_EQ(bar->endTime(), 4);
  EXPECT_EQ(undoName(), QStringLiteral("Change End of Bar"));
  graphic->setEditorTimepoint(1);
  keyPress(Qt::Key_BracketRight);  // not before its start
  EXPECT_EQ(steps(), 2);
  graphic->setEditorTimepoint(8);
  keyPress(Qt::Key_Up);
  EXPECT_EQ(hint, QStringLiteral("Time ruler, duration 00:00:10:00"));
  keyPress(Qt::Key_BracketRight);
  EXPECT_DOUBLE_EQ(graphic->duration(), 8);
  EXPECT_EQ(undoName(), QStringLiteral("Change Duration"));
}

TEST_F(Keyboard, deletesTheStopFrameItIsOnAndNothingElse) {
  auto* bar = add(QStringLiteral("Bar"), 1, 5);
  graphic->addStopFrame(2);
  settle();
  bar->setSelected(true);
  const auto claims = [this] {
    QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_Delete, Qt::NoModifier);
    asked.ignore();
    QApplication::sendEvent(&view, &asked);
    return asked.isAccepted();
  };
  EXPECT_FALSE(claims());
  keyPress(Qt::Key_Up);
  keyPress(Qt::Key_Right, Qt::AltModifier);
  EXPECT_TRUE(claims());
  keyPress(Qt::Key_Delete);
  EXPECT_TRUE(graphic->stopFrames().isEmpty());
  EXPECT_EQ(undoName(), QStringLiteral("Remove Stop Frame"));
  EXPECT_FALSE(claims());
}

TEST_F(Keyboard, leavesTheTransportItsKeys) {
  add(QStringLiteral("Bar"), 1, 3);
  for (const auto key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Space, Qt::Key_Home, Qt::Key_End}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    EXPECT_FALSE(view.press(event)) << key;
  }
}

TEST_F(Keyboard, screenReadersFindEverything) {
  auto* bar = add(QStringLiteral("Bar"), 1, 3);
  auto* opacity = key(*bar, "opacity", {1, 2});
  graphic->addStopFrame(2, QStringLiteral("Go"));
  settle();
  QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&view);
  ASSERT_TRUE(root);
  ASSERT_EQ(root->childCount(), 1 + view.rows().count());
  EXPECT_EQ(root->child(0)->text(QAccessible::Name),
            QStringLiteral("Stop frame at 00:00:02:00, trigger Go"));
  QAccessibleInterface* row = root->child(1);
  EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("Bar"));
  EXPECT_EQ(root->indexOfChild(row), 1);
  row->setText(QAccessible::Name, QStringLiteral("Strap"));
  EXPECT_EQ(bar->title(), QStringLiteral("Strap"));
  QAccessibleInterface* attribute = root->child(1 + view.rows().rowOf(*opacity));
  ASSERT_EQ(attribute->childCount(), 2);
  QAccessibleInterface* keyFrame = attribute->child(1);
  EXPECT_EQ(keyFrame->parent(), attribute);
  EXPECT_FALSE(keyFrame->rect().isEmpty());
  EXPECT_EQ(root->childAt(row->rect().center().x(), row->rect().center().y()), row);
  keyFrame->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
  EXPECT_NEAR(opacity->sortedKeyFrames().last(), 2.04, 1e-6);
  EXPECT_FALSE(keyFrame->isValid());
  graphic->removeComponents({bar});
  QApplication::processEvents();
  EXPECT_FALSE(row->isValid());
  EXPECT_EQ(row->text(QAccessible::Name), QString());
}

TEST_F(Keyboard, zoomsAroundThePointerAndFits) {
  QSignalSpy spy(&view, &TYTimelineView::zoomChanged);
  view.resize(1200, 300);
  view.scrollBy({700, 0});
  const double time = view.timelineGeometry().secondsAt(500, TYTimelineGeometry::Space::Ruler);
  QWheelEvent wheel({500, 20}, view.scrollView().clipView().mapToGlobal(QPointF(500, 20)), {},
                    {0, -120}, Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&view.scrollView().clipView(), &wheel);
  EXPECT_LT(view.zoom(), 1);
  EXPECT_NEAR(view.timelineGeometry().secondsAt(500, TYTimelineGeometry::Space::Ruler), time, 0.01);
  const double before = view.timelineGeometry().unitWidth();
  auto& ruler = view.scrollView().horizontalRuler();
  const QPointF spread(view.scene().componentsWidth + 500, 10);
  const double middle = view.timelineGeometry().secondsAt(500, TYTimelineGeometry::Space::Ruler);
  QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                            spread, spread, ruler.mapToGlobal(spread), -0.1, {});
  QApplication::sendEvent(&ruler, &pinch);
  EXPECT_NEAR(view.timelineGeometry().unitWidth(), 0.9 * before, 1e-6);
  EXPECT_NEAR(view.timelineGeometry().secondsAt(500, TYTimelineGeometry::Space::Ruler), middle,
              0.01);
  view.zoomToFit();
  EXPECT_GE(spy.count(), 3);
  EXPECT_EQ(view.timelineGeometry().visibleOrigin().x(), 0);
  const double end = view.timelineGeometry().xPositionAtTime(10, TYTimelineGeometry::Space::Ruler);
  EXPECT_LE(end, view.visibleSize().width());
  EXPECT_GE(end, view.visibleSize().width() - 60);
  EXPECT_LE(view.timelineGeometry().timeAxisSize().width(), view.visibleSize().width());
  graphic->setDuration(600);
  view.zoomToFit();
  EXPECT_LE(view.timelineGeometry().timeAxisSize().width(), view.visibleSize().width() + 1e-6);
  EXPECT_LT(view.zoom(), 0);
  for (const double duration : {60.06, 61.7, 600.6, 3600.0, 5000.3}) {
    graphic->setDuration(duration);
    view.zoomToFit();
    EXPECT_EQ(view.scrollView().horizontalScrollBar()->maximum(), 0) << duration;
  }
  // It stays fitted, in another width and beside a scroll bar too.
  view.resize(1500, 300);
  for (int i = 0; i < 30; ++i) add(QString::number(i), 0, 5);
  EXPECT_NEAR(view.timelineGeometry().timeAxisSize().width(), view.visibleSize().width(), 1);
  view.zoomIn();
  const double chosen = view.zoom();
  view.resize(1300, 300);
  EXPECT_EQ(view.zoom(), chosen);
}

TEST_F(Keyboard, theWheelScrollsOverRowsAndTitles) {
  for (int i = 0; i < 30; ++i) add(QString::number(i), 0, 5);
  view.resize(1200, 200);
  const auto turn = [](QWidget& widget, Qt::KeyboardModifiers modifiers) {
    QWheelEvent wheel({50, 20}, widget.mapToGlobal(QPointF(50, 20)), {}, {0, -120}, Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &wheel);
  };
  turn(view.scrollView().clipView(), Qt::NoModifier);
  const double once = view.timelineGeometry().visibleOrigin().y();
  EXPECT_GT(once, 0);
  turn(view.scrollView().verticalRuler(), Qt::NoModifier);
  EXPECT_EQ(view.timelineGeometry().visibleOrigin().y(), 2 * once);
  turn(view.scrollView().horizontalRuler(), Qt::ShiftModifier);
  EXPECT_EQ(view.timelineGeometry().visibleOrigin().x(), 72);
}

TEST_F(Keyboard, playingPaintsOnlyTheMarkerAndKeepsItInView) {
  add(QStringLiteral("Bar"), 0, 10);
  view.resize(1200, 300);
  graphic->setEditorTimepoint(1);
  QApplication::processEvents();
  view.grab();
  const auto& scroll = view.scrollView();
  const qint64 before = scroll.clipView().paintedPixels() +
                        scroll.horizontalRuler().paintedPixels() +
                        scroll.verticalRuler().paintedPixels();
  graphic->setEditorTimepoint(1.04);
  QApplication::processEvents();
  const qint64 painted = scroll.clipView().paintedPixels() +
                         scroll.horizontalRuler().paintedPixels() +
                         scroll.verticalRuler().paintedPixels() - before;
  EXPECT_GT(painted, 0);
  EXPECT_LT(painted, 4000);
  graphic->setPlayMode(true);
  graphic->setEditorTimepoint(8);
  graphic->setPlayMode(false);
  const double x =
      view.timelineGeometry().positionOfEditorTimeInRuler(TYTimelineGeometry::Space::Ruler);
  EXPECT_GE(x, 0);
  EXPECT_LE(x, view.visibleSize().width());
}

}  // namespace
