#include <gtest/gtest.h>

#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "widgets/TYColorWell.h"
#include "widgets/TYImageWell.h"
#include "widgets/TYKeyDiamond.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYPaneHeader.h"
#include "widgets/TYSearchField.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYTooltipWindow.h"
#include "widgets/color/ColorPlane.h"
#include "widgets/color/ColorPopover.h"
#include "widgets/color/ColorRange.h"
#include "widgets/color/RecentColors.h"

using namespace widgets;

namespace {

void addThree(TYSegmentedControl& control) {
  for (const char* name : {"One", "Two", "Three"}) control.addSegment(QLatin1String(name));
  control.show();
  control.activateWindow();
  QCoreApplication::processEvents();
}

int tabStops(const TYSegmentedControl& control) {
  int stops = 0;
  for (int i = 0; i < control.count(); ++i)
    stops += control.segment(i)->focusPolicy() == Qt::TabFocus;
  return stops;
}

}  // namespace

TEST(TYSegmentedControlTest, oneSegmentIsChosenByClickOrArrowKey) {
  TYSegmentedControl control;
  addThree(control);
  QSignalSpy activated(&control, &TYSegmentedControl::activated);
  EXPECT_EQ(control.selectedSegment(), -1);
  QTest::mouseClick(control.segment(1), Qt::LeftButton);
  EXPECT_EQ(control.selectedSegment(), 1);
  QTest::mouseClick(control.segment(1), Qt::LeftButton);
  EXPECT_EQ(control.selectedSegment(), 1);
  control.segment(1)->setFocus();
  QTest::keyClick(control.segment(1), Qt::Key_Right);
  EXPECT_EQ(control.selectedSegment(), 2);
  EXPECT_EQ(activated.constLast().constFirst().toInt(), 2);
  QTest::keyClick(control.segment(2), Qt::Key_Right);
  EXPECT_EQ(control.selectedSegment(), 2);
  EXPECT_EQ(activated.size(), 3);
  control.setSelectedSegment(0);
  EXPECT_EQ(activated.size(), 3);
  EXPECT_EQ(tabStops(control), 1);
}

TEST(TYSegmentedControlTest, otherModesAndDisabledSegments) {
  TYSegmentedControl any(TYSegmentedControl::Mode::SelectAny);
  addThree(any);
  QTest::mouseClick(any.segment(0), Qt::LeftButton);
  QTest::mouseClick(any.segment(2), Qt::LeftButton);
  EXPECT_TRUE(any.isSelected(0) && !any.isSelected(1) && any.isSelected(2));

  TYSegmentedControl momentary(TYSegmentedControl::Mode::Momentary);
  addThree(momentary);
  momentary.setSegmentEnabled(0, false);
  EXPECT_EQ(momentary.segment(1)->focusPolicy(), Qt::TabFocus);
  QSignalSpy activated(&momentary, &TYSegmentedControl::activated);
  QTest::mouseClick(momentary.segment(0), Qt::LeftButton);
  QTest::keyClick(momentary.segment(1), Qt::Key_Space);
  QTest::keyClick(momentary.segment(1), Qt::Key_Left);
  ASSERT_EQ(activated.size(), 1);
  EXPECT_EQ(activated.constFirst().constFirst().toInt(), 1);
  EXPECT_EQ(momentary.selectedSegment(), -1);
}

namespace {

class TYColorWellTest : public testing::Test {
 protected:
  TYColorWellTest()
      : began(&well, &TYColorWell::editBegan),
        edited(&well, &TYColorWell::colorEdited),
        committed(&well, &TYColorWell::editCommitted),
        cancelled(&well, &TYColorWell::editCancelled) {
    well.setColor(QColor(0x336699));
    well.show();
  }

  QLineEdit* open() {
    QTest::mouseClick(&well, Qt::LeftButton);
    EXPECT_TRUE(well.popover());
    return well.popover()->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
  }

  TYColorWell well;
  QSignalSpy began;
  QSignalSpy edited;
  QSignalSpy committed;
  QSignalSpy cancelled;
};

}  // namespace

TEST_F(TYColorWellTest, hexDigitsAreKeptOnReturn) {
  QLineEdit* hex = open();
  EXPECT_EQ(hex->text(), QStringLiteral("#336699"));
  hex->selectAll();
  QTest::keyClicks(hex, QStringLiteral("ff8000"));
  QTest::keyClick(hex, Qt::Key_Return);
  EXPECT_EQ(well.color(), QColor(0xFF8000));
  EXPECT_EQ(began.size(), 1);
  EXPECT_EQ(committed.size(), 1);
  EXPECT_EQ(RecentColors::shared().colors().constFirst(), QColor(0xFF8000));
}

TEST_F(TYColorWellTest, escapeBringsTheOldColourBack) {
  open();
  auto* plane = well.popover()->findChild<ColorPlane*>();
  QTest::mouseClick(plane, Qt::LeftButton, {}, QPoint(plane->width() - 1, 0));
  EXPECT_EQ(well.color().hsvSaturation(), 255);
  EXPECT_EQ(well.color().value(), 255);
  EXPECT_NEAR(well.color().hsvHue(), QColor(0x336699).hsvHue(), 1);
  QTest::keyClick(plane, Qt::Key_Down);
  EXPECT_EQ(began.size(), 1);
  EXPECT_EQ(edited.size(), 2);
  QTest::keyClick(plane, Qt::Key_Escape);
  EXPECT_EQ(well.color(), QColor(0x336699));
  EXPECT_EQ(cancelled.size(), 1);
  EXPECT_EQ(committed.size(), 0);
}

TEST_F(TYColorWellTest, aWrongEntryIsMarkedAndChangesNothing) {
  QLineEdit* hex = open();
  hex->selectAll();
  QTest::keyClicks(hex, QStringLiteral("blue-ish"));
  QTest::keyClick(hex, Qt::Key_Return);
  EXPECT_TRUE(hex->property("invalid").toBool());
  EXPECT_TRUE(well.popover() && well.popover()->isVisible());
  QTest::mouseClick(well.popover(), Qt::LeftButton, {}, QPoint(-20, -20));
  EXPECT_EQ(well.color(), QColor(0x336699));
  EXPECT_EQ(began.size(), 0);
}

TEST_F(TYColorWellTest, greyKeepsTheHueOfTheRange) {
  well.setColor(QColor(128, 128, 128));
  open();
  const QList<ColorRange*> ranges = well.popover()->findChildren<ColorRange*>();
  ASSERT_EQ(ranges.size(), 2);
  ranges.at(0)->setValue(ColorRange::kSteps / 3);
  auto* plane = well.popover()->findChild<ColorPlane*>();
  QTest::mouseClick(plane, Qt::LeftButton, {}, QPoint(plane->width() - 1, 0));
  EXPECT_NEAR(well.color().hsvHue(), 120, 1);
  ranges.at(1)->setValue(ColorRange::kSteps / 2);
  EXPECT_NEAR(well.color().alphaF(), 0.5, 0.01);
  EXPECT_TRUE(ColorPopover::hexText(well.color()).endsWith(QStringLiteral("FF0080")));
}

TEST(ColorPopoverTest, readsHexDigits) {
  EXPECT_EQ(ColorPopover::colorFromHex(QStringLiteral("#fa0")), QColor(0xFFAA00));
  EXPECT_EQ(ColorPopover::colorFromHex(QStringLiteral(" 11223380 ")),
            QColor(0x11, 0x22, 0x33, 0x80));
  for (const char* text : {"", "#", "12", "#12345", "red", "#GG0000", "1122334455"})
    EXPECT_FALSE(ColorPopover::colorFromHex(QLatin1String(text)).isValid()) << text;
}

TEST(TYImageWellTest, takesDropsAndGivesItsPictureAway) {
  TYImageWell well;
  QSignalSpy files(&well, &TYImageWell::fileDropped);
  QSignalSpy cleared(&well, &TYImageWell::cleared);
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QStringLiteral("/pictures/logo.png"))});
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&well, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&well, &drop);
  EXPECT_EQ(files.constFirst().constFirst().toString(), QStringLiteral("/pictures/logo.png"));

  QMimeData text;
  text.setText(QStringLiteral("no picture"));
  QDragEnterEvent refused(QPoint(5, 5), Qt::CopyAction, &text, Qt::LeftButton, {});
  refused.ignore();
  QCoreApplication::sendEvent(&well, &refused);
  EXPECT_FALSE(refused.isAccepted());

  QTest::keyClick(&well, Qt::Key_Delete);
  EXPECT_EQ(cleared.size(), 0);
  well.setImage(QImage(4, 4, QImage::Format_RGB32));
  QTest::keyClick(&well, Qt::Key_Delete);
  EXPECT_EQ(cleared.size(), 1);
  EXPECT_TRUE(well.image().isNull());
}

TEST(TYPaneHeaderTest, opensAndClosesItsContent) {
  QWidget window;
  TYPaneHeader header(QStringLiteral("Timing"), &window);
  QWidget content(&window);
  header.setContent(&content);
  window.show();
  QTest::mouseClick(&header, Qt::LeftButton);
  EXPECT_FALSE(content.isVisible());
  QTest::keyClick(&header, Qt::Key_Right);
  EXPECT_TRUE(content.isVisible());
  QTest::keyClick(&header, Qt::Key_Left);
  EXPECT_FALSE(content.isVisible());
  QTest::keyClick(&header, Qt::Key_Space);
  EXPECT_TRUE(content.isVisible());
}

TEST(TYKeyDiamondTest, saysItsState) {
  TYKeyDiamond diamond;
  const QString still = diamond.accessibleName();
  diamond.setState(TYKeyDiamond::State::KeyHere);
  EXPECT_NE(diamond.accessibleName(), still);
  QSignalSpy clicks(&diamond, &QAbstractButton::clicked);
  QTest::keyClick(&diamond, Qt::Key_Space);
  EXPECT_EQ(clicks.size(), 1);
}

TEST(TYSearchFieldTest, escapeClearsFirst) {
  TYSearchField field;
  QTest::keyClicks(&field, QStringLiteral("clock"));
  QTest::keyClick(&field, Qt::Key_Escape);
  EXPECT_TRUE(field.text().isEmpty());
}

TEST(TYTooltipWindowTest, appearsAtOnceAndNeverTakesThePointer) {
  TYTooltipWindow& tip = TYTooltipWindow::sharedWindow();
  tip.updateTipWithString(QStringLiteral("00:00:01:08"), QPoint(300, 200));
  tip.showTooltip();
  EXPECT_TRUE(tip.isVisible());
  EXPECT_TRUE(tip.windowFlags() & Qt::WindowTransparentForInput);
  const int width = tip.width();
  EXPECT_NEAR(tip.geometry().center().x(), 300, 1);
  tip.updateTipWithString(QStringLiteral("11:11:11:11"), QPoint(300, 200));
  EXPECT_EQ(tip.width(), width);
  tip.hideTooltip();
  EXPECT_FALSE(tip.isVisible());
}
