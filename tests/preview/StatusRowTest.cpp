#include "preview/StatusRow.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTest>

namespace preview {

namespace {

const QString waiting = QStringLiteral("Waiting for Trigger");

class StatusRowTest : public testing::Test {
 protected:
  StatusRowTest() {
    row.setStatus(StatusLamp::Light::Waiting, waiting);
    row.setTriggerVisible(true);
    row.setMeterVisible(true);
    row.showReading(
        {.dropped = 12345, .milliseconds = 12.5, .longest = 31.4, .framesPerSecond = 50});
    row.setScale(67);
    row.setFieldsShown(true);
    row.show();
    settle();
  }
  static void settle() {
    for (int i = 0; i < 4; ++i) QApplication::processEvents();
  }
  void setWidth(int width) {
    row.resize(width, StatusRow::rowHeight);
    settle();
  }
  [[nodiscard]] const QWidget* part(const QString& beginning) const {
    for (const auto* label : row.findChildren<QLabel*>())
      if (label->text().startsWith(beginning)) return label;
    for (const auto* button : row.findChildren<QAbstractButton*>())
      if (button->text().startsWith(beginning)) return button;
    return nullptr;
  }
  [[nodiscard]] bool isWhole(const QString& text) const {
    const QWidget* found = part(text);
    return found->isVisible() && found->width() >= found->sizeHint().width();
  }
  [[nodiscard]] bool showsMeter() const { return part(QStringLiteral("50 fps"))->isVisible(); }
  [[nodiscard]] bool showsScale() const { return part(QStringLiteral("67"))->isVisible(); }

  StatusRow row;
};

TEST_F(StatusRowTest, TheStatusIsNeverCutForWhatStandsBesideIt) {
  row.setNotice(QStringLiteral("The edit is not shown: a very long reason that nobody foresaw"));
  row.setOffersAgain(true);
  row.setPartShown(QStringLiteral("Key"));
  const int narrowest = row.minimumSizeHint().width();
  EXPECT_LE(narrowest, 700);
  for (int width = 1400; width >= narrowest; width -= 20) {
    setWidth(width);
    EXPECT_EQ(row.width(), width);
    EXPECT_TRUE(isWhole(waiting)) << width;
    EXPECT_TRUE(isWhole(QStringLiteral("Key"))) << width;
    EXPECT_TRUE(isWhole(QStringLiteral("Reload"))) << width;
    // What is shown at all is not squeezed, and the meter goes before the scale.
    EXPECT_TRUE(!showsMeter() || isWhole(QStringLiteral("50 fps"))) << width;
    EXPECT_TRUE(!showsScale() || isWhole(QStringLiteral("67"))) << width;
    EXPECT_TRUE(showsScale() || !showsMeter()) << width;
  }
  EXPECT_FALSE(showsScale());
  setWidth(1400);
  EXPECT_TRUE(showsMeter() && showsScale());
}

TEST_F(StatusRowTest, WhatGaveWayIsThereAgainWhenThereIsRoom) {
  setWidth(700);
  EXPECT_FALSE(showsMeter());
  EXPECT_TRUE(showsScale());
  row.setTriggerVisible(false);
  row.setStatus(StatusLamp::Light::Playing, QStringLiteral("Playing A"));
  settle();
  EXPECT_TRUE(showsMeter());
  // A name may be of any length: it is shortened and the buttons stay.
  row.setStatus(StatusLamp::Light::Playing, QString(400, u'x'));
  settle();
  EXPECT_EQ(row.width(), 700);
  EXPECT_FALSE(showsMeter());
  EXPECT_FALSE(isWhole(QString(400, u'x')));
}

}  // namespace

}  // namespace preview
