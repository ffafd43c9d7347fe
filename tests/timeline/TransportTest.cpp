#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QLabel>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>

#include "model/ComponentFiles.h"
#include "timeline/TransportBar.h"
#include "timeline/TransportCommands.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYTimecodeField.h"

namespace timeline {

namespace {

using Action = TYTimelineControlButtons::Action;
using testing::ElementsAre;

class TransportTest : public testing::Test {
 protected:
  void at(double time) { graphic->setEditorTimepoint(time); }
  [[nodiscard]] double time() const { return graphic->editorTimepoint(); }
  [[nodiscard]] QString undoName() const { return graphic.context->history().undoText(); }

  model::Graphic graphic = model::emptyGraphic();
  TransportCommands commands{*graphic};
};

/// The bar on a graphic of two seconds with 50 frames each.
class TransportBarTest : public TransportTest {
 protected:
  TransportBarTest() {
    bar.setComposition(graphic.composition);
    bar.resize(1200, bar.height());
    bar.show();
    bar.activateWindow();
    QCoreApplication::processEvents();
  }
  void type(const QString& text) {
    bar.timecodeField().setFocus();
    bar.timecodeField().selectAll();
    QTest::keyClicks(&bar.timecodeField(), text);
    QTest::keyClick(&bar.timecodeField(), Qt::Key_Return);
    QCoreApplication::processEvents();
  }
  void press(int segment) { QTest::mouseClick(bar.controls().segment(segment), Qt::LeftButton); }
  [[nodiscard]] QString complaint() const {
    QStringList texts;
    for (const QLabel* label : bar.findChildren<QLabel*>()) texts.append(label->text());
    return texts.join(u' ').trimmed();
  }

  TransportBar bar;
};

}  // namespace

TEST(TYTimelineControlButtonsTest, ClicksAreActionsWhereThereIsSomethingToDo) {
  const TYTimelineControlButtons buttons(QStringLiteral("AddStopframe"),
                                         QStringLiteral("RemoveStopframe"), 5);
  EXPECT_EQ(buttons.size(), QSizeF(46, 16));
  const QRectF rect = buttons.rectInView({0, 0, 1000, 22}, 236);
  EXPECT_EQ(rect, QRectF(182, 3, 46, 16));
  EXPECT_EQ(buttons.rectInRect({0, 48, 236, 24}), QRectF(186, 52, 46, 16));
  const auto click = [&](double dx, ControlFlags flags) {
    return buttons.controlActionInRect(rect, rect.topLeft() + QPointF(dx, 8), flags);
  };
  const ControlFlags all = ControlFlag::Before | ControlFlag::Here | ControlFlag::After;
  EXPECT_EQ(click(14, {}), Action::None) << "one point left of the add glyph";
  EXPECT_EQ(click(14, all), Action::Previous);
  EXPECT_EQ(click(15, {}), Action::Add);
  EXPECT_EQ(click(36, ControlFlag::Here), Action::Remove);
  EXPECT_EQ(click(37, {}), Action::None);
  EXPECT_EQ(click(37, ControlFlag::After), Action::Next);
  EXPECT_EQ(click(-1, all), Action::None);
  EXPECT_EQ(buttons.controlActionInRect(rect, {190, 1}, all), Action::None);
}

TEST_F(TransportTest, StopFramesAreSteppedThroughAndToggled) {
  EXPECT_EQ(commands.stopFrameControlFlagsAtTime(0), ControlFlags());
  graphic->addStopFrame(1.5);
  graphic->addStopFrame(0.5);
  EXPECT_THAT(commands.sortedStopFrames(), ElementsAre(0.5, 1.5));
  EXPECT_EQ(commands.stopFrameControlFlagsAtTime(0.504), ControlFlag::Here | ControlFlag::After);
  EXPECT_EQ(commands.stopFrameControlFlagsAtTime(1), ControlFlag::Before | ControlFlag::After);
  at(1.5);
  EXPECT_EQ(commands.nextStopFrame(), 1.5) << "there is none";
  commands.perform(Action::Previous);
  EXPECT_EQ(time(), 0.5);
  EXPECT_EQ(commands.previousStopFrame(), 0.5);
  commands.perform(Action::Remove);
  EXPECT_THAT(commands.sortedStopFrames(), ElementsAre(1.5));
  commands.perform(Action::Add);
  EXPECT_THAT(commands.sortedStopFrames(), ElementsAre(0.5, 1.5));
  EXPECT_EQ(undoName(), QStringLiteral("Add Stop Frame"));
}

TEST_F(TransportTest, KeyFramesOfAnAttributeAreSteppedThroughAndToggled) {
  model::ComponentFiles files;
  QStringList warnings;
  const QString file = files.writeComponent(QStringLiteral("a"), {});
  auto* component = graphic->addComponenWithQuartzCompositionFile(file, {}, warnings);
  ASSERT_TRUE(component) << warnings.join(u'\n').toStdString();
  model::Attribute& opacity = *component->attributeForKey(QStringLiteral("opacity"));
  EXPECT_TRUE(TransportCommands::sortedKeyFramesForAttribute(opacity).isEmpty());
  at(0.6);  // which no key frame stands at exactly
  commands.performOnAttribute(Action::Add, opacity);
  EXPECT_EQ(undoName(), QStringLiteral("Add Key Frame"));
  EXPECT_EQ(TransportCommands::keyFrameControlFlagsAtTime(0.6, opacity), ControlFlag::Here);
  at(1.2);
  commands.toggleKeyFrameOnAttribute(opacity);
  at(0.6);
  commands.performOnAttribute(Action::Next, opacity);
  EXPECT_NEAR(time(), 1.2, 1e-6) << "and not the one that it stands on";
  commands.performOnAttribute(Action::Previous, opacity);
  EXPECT_NEAR(time(), 0.6, 1e-6);
  commands.performOnAttribute(Action::Remove, opacity);
  EXPECT_EQ(opacity.sortedKeyFrames().size(), 1);
  EXPECT_EQ(undoName(), QStringLiteral("Delete Key Frame"));
  while (graphic.context->canUndo()) graphic.context->undo();
}

TEST_F(TransportBarTest, SegmentsMoveTheTime) {
  press(TransportCommands::End);
  EXPECT_EQ(time(), 2);
  press(TransportCommands::PreviousFrame);
  EXPECT_NEAR(time(), 1.98, 1e-6);
  EXPECT_EQ(bar.timecodeField().text(), QStringLiteral("00:00:01:49"));
  press(TransportCommands::NextFrame);
  press(TransportCommands::NextFrame);
  EXPECT_EQ(time(), 2);
  press(TransportCommands::Play);
  EXPECT_TRUE(graphic->playMode());
  EXPECT_EQ(bar.controls().segment(TransportCommands::Play)->accessibleName(),
            QStringLiteral("Stop (Space)"));
  press(TransportCommands::Beginning);
  EXPECT_TRUE(graphic->playMode());
  EXPECT_EQ(time(), 0);
  press(TransportCommands::PreviousFrame);
  EXPECT_FALSE(graphic->playMode()) << "a frame is looked at standing";
}

TEST_F(TransportBarTest, TypedTimesAreTakenAndOthersSayWhatIsWrong) {
  const int steps = graphic.context->history().count();
  type(QStringLiteral("1:12"));
  EXPECT_NEAR(time(), 1.24, 1e-9);
  type(QStringLiteral("+10"));
  EXPECT_NEAR(time(), 1.44, 1e-9);
  type(QStringLiteral("-5"));
  EXPECT_NEAR(time(), 1.34, 1e-9);
  type(QStringLiteral("2s"));
  EXPECT_EQ(time(), 2);
  type(QStringLiteral("1.5s"));
  EXPECT_EQ(time(), 1.5);
  type(QStringLiteral("00:00:00:05"));
  EXPECT_NEAR(time(), 0.1, 1e-9);
  type(QStringLiteral("-10"));
  EXPECT_EQ(time(), 0);
  type(QStringLiteral("+10s"));
  EXPECT_EQ(time(), 2);
  EXPECT_EQ(bar.timecodeField().text(), QStringLiteral("00:00:02:00"));
  EXPECT_EQ(graphic.context->history().count(), steps) << "moving about is no change";

  QSignalSpy ended(&bar, &TransportBar::typingEnded);
  type(QStringLiteral("0:70"));
  EXPECT_EQ(complaint(), QStringLiteral("A second has 50 frames, 0 to 49."));
  EXPECT_EQ(bar.timecodeField().text(), QStringLiteral("0:70"));
  type(QStringLiteral("soon"));
  EXPECT_TRUE(complaint().startsWith(QStringLiteral("\"soon\" is no time")));
  type(QStringLiteral("9s"));
  EXPECT_EQ(complaint(), QStringLiteral("The graphic ends at 00:00:02:00."));
  EXPECT_TRUE(bar.timecodeField().isInvalid());
  EXPECT_EQ(time(), 2);
  EXPECT_EQ(ended.size(), 0);
  QTest::keyClick(&bar.timecodeField(), Qt::Key_Escape);
  EXPECT_EQ(complaint(), QString());
  EXPECT_EQ(bar.timecodeField().text(), QStringLiteral("00:00:02:00"));
  type(QStringLiteral("1s"));
  EXPECT_EQ(ended.size(), 1);
}

TEST_F(TransportBarTest, DropFrameCodesAreCountedAsWritten) {
  graphic->setVideoResolution(model::VideoResolution(QStringLiteral("HD 1080i29.97")));
  graphic->setDuration(120);
  type(QStringLiteral("1:00;02"));
  EXPECT_NEAR(time(), 60.06, 1e-9);
  EXPECT_EQ(bar.timecodeField().text(), QStringLiteral("00:01:00;02"));
  type(QStringLiteral("1:00;01"));
  EXPECT_FALSE(complaint().isEmpty()) << "that number is left out";
}

TEST_F(TransportBarTest, TheZoomIsAskedForAndShown) {
  QSignalSpy changed(&bar, &TransportBar::zoomChanged);
  bar.setZoom(0.25);
  EXPECT_EQ(changed.size(), 0);
  bar.zoomSlider().setFocus();
  QTest::keyClick(&bar.zoomSlider(), Qt::Key_End);
  ASSERT_EQ(changed.size(), 1);
  EXPECT_EQ(changed.first().first().toDouble(), 1);
  bar.setComposition(nullptr);
  EXPECT_FALSE(bar.controls().isEnabled());
  at(1);
  EXPECT_EQ(bar.timecodeField().text(), QStringLiteral("00:00:00:00"));
}

}  // namespace timeline
