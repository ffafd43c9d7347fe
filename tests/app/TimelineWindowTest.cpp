#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QMenu>
#include <QMimeData>
#include <QTest>

#include "RunningEditor.h"
#include "canvas/CompositionView.h"
#include "document/KeyFrameClipboard.h"
#include "model/Composition.h"
#include "timeline/TYTimelineRulerView.h"
#include "timeline/TYTimelineScrollView.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TYTimelneClipView.h"
#include "timeline/TimelinePanel.h"
#include "timeline/TransportBar.h"
#include "timeline/TransportCommands.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYTimecodeField.h"

namespace app {

namespace {

using testing::ElementsAre;
using testing::SizeIs;
using timeline::TransportCommands;
using timeline::TYTimelineGeometry;

/// The editor with one text, worked on through its timeline by mouse and keys. New documents have
/// 25 frames a second and last five seconds.
class TimelineWindowTest : public RunningEditor {
 protected:
  TimelineWindowTest() {
    start();
    window().addStandardComponent(QStringLiteral("TextComponent"));
    const QUrl package = QUrl::fromLocalFile(path("a.composition"));
    EXPECT_TRUE(window().document().saveToURL(package, document::SaveOperation::SaveAs));
    settle();
  }

  [[nodiscard]] double time() const { return composition().editorTimepoint(); }
  [[nodiscard]] timeline::TimelinePanel& panel() const { return window().timelinePanel(); }
  [[nodiscard]] timeline::TYTimelineView& view() const { return panel().view(); }
  [[nodiscard]] QWidget& clip() const { return view().scrollView().clipView(); }
  [[nodiscard]] QWidget& titles() const { return view().scrollView().verticalRuler(); }
  [[nodiscard]] QWidget& ruler() const { return view().scrollView().horizontalRuler(); }
  [[nodiscard]] model::QuartzComponent& component() const {
    return *composition().componentArray().first();
  }
  [[nodiscard]] model::Attribute& opacity() const {
    return *component().attributeForKey(QStringLiteral("opacity"));
  }
  [[nodiscard]] QList<double> keyFrames() const {
    QList<double> rounded;
    for (const double one : TransportCommands::sortedKeyFramesForAttribute(opacity()))
      rounded.append(std::round(one * 100) / 100);
    return rounded;
  }
  [[nodiscard]] QString undoName() const {
    return window().document().context().history().undoText();
  }

  /// Of a time in the rows' window.
  [[nodiscard]] int x(double seconds) const {
    return qRound(
        view().timelineGeometry().xPositionAtTime(seconds, TYTimelineGeometry::Space::Ruler));
  }
  [[nodiscard]] int xInRuler(double seconds) const {
    return x(seconds) + ruler().width() - clip().width();
  }
  [[nodiscard]] int middleOfRow(const model::Attribute& attribute) const {
    return view().rows().rowOf(attribute) * 24 + 12;
  }
  void press(int segment) {
    QTest::mouseClick(panel().transport().controls().segment(segment), Qt::LeftButton);
    settle();
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&view(), key, modifiers);
    settle();
  }
  void click(QWidget& widget, const QPoint& point) {
    QTest::mouseMove(&widget, point);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, point);
    settle();
  }
  void drag(QWidget& widget, const QPoint& from, const QPoint& to) {
    QTest::mousePress(&widget, Qt::LeftButton, {}, from);
    const auto move = [&](const QPoint& point) {
      QMouseEvent event(QEvent::MouseMove, point, widget.mapToGlobal(point), Qt::NoButton,
                        Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(&widget, &event);
    };
    move((from + to) / 2);
    move(to);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, to);
    settle();
  }
  /// Opens the text's row and puts a key frame on its opacity by the buttons in the row.
  void addKeyFrameByButtons() {
    if (!component().expanded()) component().setExpanded(true);
    settle();
    const int right = titles().width() - 4 - 46;
    click(titles(), {right + 23, middleOfRow(opacity())});
  }
};

}  // namespace

TEST_F(TimelineWindowTest, PlayingRunsWithTheClockAndStandsStillAfterwards) {
  press(TransportCommands::Play);
  EXPECT_TRUE(composition().playMode());
  EXPECT_EQ(window().actions().action(QStringLiteral("play"))->text(), QStringLiteral("&Stop"));
  ASSERT_TRUE(QTest::qWaitFor([this] { return time() > 0.2; }));
  EXPECT_NE(panel().transport().timecodeField().text(), QStringLiteral("00:00:00:00"));
  view().setFocus();
  key(Qt::Key_Space);
  EXPECT_FALSE(composition().playMode());
  QTest::qWait(60);
  const double stopped = time();
  EXPECT_NEAR(stopped * 25, std::round(stopped * 25), 1e-6) << "on a frame";
  int changes = 0;
  const auto counting = composition().observe(QStringLiteral("editorTimepoint"),
                                              [&](const store::Change&) { ++changes; });
  QTest::qWait(100);
  EXPECT_EQ(changes, 0);
  EXPECT_FALSE(window().isWindowModified());
}

TEST_F(TimelineWindowTest, KeysAndTypedTimesMoveTheMarker) {
  view().setFocus();
  key(Qt::Key_Right);
  EXPECT_NEAR(time(), 0.04, 1e-6);
  key(Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_NEAR(time(), 0.44, 1e-6);
  key(Qt::Key_Left);
  EXPECT_NEAR(time(), 0.4, 1e-6);
  key(Qt::Key_End);
  EXPECT_EQ(time(), 5);
  key(Qt::Key_Home);
  EXPECT_EQ(time(), 0);

  widgets::TYTimecodeField& field = panel().transport().timecodeField();
  QTest::mouseClick(&field, Qt::LeftButton);
  field.selectAll();
  QTest::keyClicks(&field, QStringLiteral("1:12"));
  QTest::keyClick(&field, Qt::Key_Return);
  settle();
  EXPECT_NEAR(time(), 1.48, 1e-9);
  EXPECT_TRUE(view().hasFocus()) << "the keys are the timeline's again";
  key(Qt::Key_Right);
  EXPECT_NEAR(time(), 1.52, 1e-6);

  drag(ruler(), {xInRuler(1), 15}, {xInRuler(3), 15});
  EXPECT_NEAR(time(), 3, 0.0401);
  EXPECT_FALSE(window().isWindowModified());
}

TEST_F(TimelineWindowTest, StopFramesComeFromMenuAndCorner) {
  view().setFocus();
  composition().setEditorTimepoint(2);
  key(Qt::Key_M);
  EXPECT_THAT(composition().stopFrameTimepoints(), ElementsAre(2));
  composition().setEditorTimepoint(4);
  const int corner = ruler().width() - clip().width() - 8 - 46;
  click(ruler(), {corner + 23, 11});
  EXPECT_THAT(composition().stopFrameTimepoints(), ElementsAre(2, 4));
  drag(ruler(), {corner + 4, 11}, {corner - 20, 11});
  EXPECT_EQ(time(), 4) << "let go beside the button";
  click(ruler(), {corner + 4, 11});
  EXPECT_EQ(time(), 2);
  key(Qt::Key_Period, Qt::AltModifier);
  EXPECT_EQ(time(), 4);
  click(ruler(), {corner + 23, 11});
  EXPECT_THAT(composition().stopFrameTimepoints(), ElementsAre(2));
  trigger("undo");
  trigger("undo");
  trigger("undo");
  EXPECT_THAT(composition().stopFrameTimepoints(), SizeIs(0));
}

TEST_F(TimelineWindowTest, KeyFramesAreMadeCopiedMovedAndDeleted) {
  composition().setEditorTimepoint(1);
  addKeyFrameByButtons();
  ASSERT_THAT(keyFrames(), ElementsAre(1));
  EXPECT_EQ(undoName(), QStringLiteral("Add Key Frame"));
  composition().setEditorTimepoint(2);
  key(Qt::Key_K);
  EXPECT_THAT(keyFrames(), ElementsAre(1, 2)) << "in the row that was clicked";
  key(Qt::Key_K);
  EXPECT_THAT(keyFrames(), ElementsAre(1));
  click(clip(), {x(1), middleOfRow(opacity())});
  ASSERT_THAT(opacity().selectedTimepoints(), SizeIs(1));
  trigger("copy");
  EXPECT_TRUE(QApplication::clipboard()->text().contains(QStringLiteral("opacity\tnumber\t1\t1")));
  composition().setEditorTimepoint(3);
  trigger("paste");
  EXPECT_THAT(keyFrames(), ElementsAre(1, 3));
  drag(clip(), {x(3), middleOfRow(opacity())}, {x(4), middleOfRow(opacity())});
  EXPECT_THAT(keyFrames(), ElementsAre(1, testing::DoubleNear(4, 0.0401)));
  trigger("cut");
  EXPECT_THAT(keyFrames(), ElementsAre(1));
  EXPECT_EQ(undoName(), QStringLiteral("Cut Key Frames"));
  click(clip(), {x(1), middleOfRow(opacity())});
  key(Qt::Key_Delete);
  EXPECT_THAT(keyFrames(), SizeIs(0));
  EXPECT_THAT(composition().componentArray(), SizeIs(1)) << "it was about the key frame";

  EXPECT_TRUE(window().isWindowModified());
  while (window().isWindowModified() && window().document().context().canUndo()) trigger("undo");
  EXPECT_THAT(keyFrames(), SizeIs(0));
  EXPECT_THAT(composition().componentArray(), SizeIs(1));
  EXPECT_FALSE(opacity().animateable());
  while (window().document().context().canRedo()) trigger("redo");
  EXPECT_THAT(keyFrames(), SizeIs(0));
}

TEST_F(TimelineWindowTest, ContextMenusOfferNothingThatIsAboutOtherThings) {
  component().setExpanded(true);
  component().setSelected(true);
  settle();
  const auto offers = [this](const timeline::TimelineTarget& target, const char* identifier) {
    QMenu menu;
    view().host().fillContextMenu(menu, target);
    return menu.actions().contains(window().actions().action(QString::fromLatin1(identifier)));
  };
  EXPECT_TRUE(offers({.component = &component()}, "delete"));
  EXPECT_FALSE(offers({.stopFrame = composition().addStopFrame(1)}, "delete"));
  EXPECT_FALSE(offers({}, "delete"));
  EXPECT_TRUE(offers({}, "paste"));
  const timeline::TimelineTarget row{.component = &component(), .attribute = &opacity()};
  EXPECT_FALSE(offers(row, "delete")) << "it would be the component's";
  composition().setEditorTimepoint(1);
  addKeyFrameByButtons();
  click(clip(), {x(1), middleOfRow(opacity())});
  EXPECT_TRUE(offers(row, "delete"));
}

TEST_F(TimelineWindowTest, OnTheCanvasTheSameKeysAreAboutComponents) {
  composition().setEditorTimepoint(1);
  addKeyFrameByButtons();
  click(clip(), {x(1), middleOfRow(opacity())});
  EXPECT_TRUE(window().editsKeyFrames());
  window().view().setFocus();
  QTest::keyClick(&window().view(), Qt::Key_Delete);
  EXPECT_THAT(composition().componentArray(), SizeIs(0));
  trigger("undo");
  EXPECT_THAT(composition().componentArray(), SizeIs(1));
}

TEST_F(TimelineWindowTest, TheDockIsRememberedAndRevertingLetsGo) {
  auto* dock = window().findChild<QDockWidget*>(QStringLiteral("timeline"));
  ASSERT_TRUE(dock);
  EXPECT_GE(dock->height(), 158);
  dock->toggleViewAction()->trigger();
  settle();
  EXPECT_FALSE(dock->isVisible());
  dock->toggleViewAction()->trigger();
  composition().setEditorTimepoint(1);
  composition().setPlayMode(true);
  ASSERT_TRUE(window().document().revertToContentsOfURL(window().document().fileURL()));
  settle();
  EXPECT_EQ(view().composition(), &composition());
  EXPECT_EQ(panel().transport().timecodeField().text(), QStringLiteral("00:00:00:00"));
  EXPECT_FALSE(composition().playMode());
}

}  // namespace app
