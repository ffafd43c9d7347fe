#include "widgets/TYStyle.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusFrame>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>

#include "widgets/DevicePixels.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TabularText.h"

using namespace widgets;

namespace {

// How many rows of a column through the middle are at least half covered.
int rowsOfInk(const QImage& image) {
  int rows = 0;
  for (int y = 0; y < image.height(); ++y) rows += qAlpha(image.pixel(image.width() / 2, y)) > 127;
  return rows;
}

QImage canvas(double scale) {
  QImage image(qCeil(40 * scale), qCeil(40 * scale), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::transparent);
  return image;
}

}  // namespace

TEST(DevicePixelsTest, linesAndEdgesAreOneSharpDevicePixelAtAnyScale) {
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0})
    for (const int offset : {0, 1, 2, 3}) {
      QImage line = canvas(scale);
      QPainter linePainter(&line);
      linePainter.translate(0, offset);
      DevicePixels(linePainter).horizontal(0, 40, 7, Qt::red);
      linePainter.end();
      EXPECT_EQ(rowsOfInk(line), 1) << scale;

      QImage edge = canvas(scale);
      QPainter edgePainter(&edge);
      edgePainter.translate(0, offset);
      DevicePixels(edgePainter).edge(QRectF(3, 5, 30, 20), Qt::red, 4);
      edgePainter.end();
      EXPECT_EQ(rowsOfInk(edge), 2) << scale << " at " << offset;
    }
}

TEST(TabularTextTest, digitsDoNotMoveWhenTheyChange) {
  const QFont font = TYStyleKit::font(TextStyle::TimeCode);
  EXPECT_DOUBLE_EQ(TabularText::width(font, QStringLiteral("11:11")),
                   TabularText::width(font, QStringLiteral("00:00")));
  EXPECT_GT(TabularText::width(font, QStringLiteral("000")),
            TabularText::width(font, QStringLiteral("0:0")));
}

TEST(TYStyleTest, controlsKeepToTheGrid) {
  QLineEdit field;
  QComboBox box;
  QSpinBox spin;
  QPushButton button(QStringLiteral("Edit..."));
  QCheckBox check(QStringLiteral("Constrain"));
  for (QWidget* control : QList<QWidget*>{&field, &box, &spin, &button, &check})
    EXPECT_EQ(control->sizeHint().height(), 24) << control->metaObject()->className();
  QPushButton large(QStringLiteral("Ok"));
  large.setProperty("large", true);
  EXPECT_EQ(large.sizeHint(), QSize(84, 28));
}

TEST(TYStyleTest, fieldsShowFocusAndWrongEntriesByTheirEdge) {
  TYStyleKit::shared().setAppearance(TYStyleKit::Appearance::Dark);
  QWidget window;
  auto* column = new QVBoxLayout(&window);
  auto* field = new QLineEdit;
  auto* other = new QLineEdit;
  column->addWidget(other);
  column->addWidget(field);
  window.show();
  window.activateWindow();
  other->setFocus();
  QCoreApplication::processEvents();
  const auto edge = [field] { return field->grab().toImage().pixelColor(field->width() / 2, 0); };
  EXPECT_EQ(edge(), TYStyleKit::colour(Token::Border));
  field->setProperty("invalid", true);
  EXPECT_EQ(edge(), TYStyleKit::colour(Token::Broken));
  field->setProperty("invalid", false);
  field->setFocus();
  EXPECT_EQ(edge(), TYStyleKit::colour(Token::Accent));
  field->setEnabled(false);
  EXPECT_EQ(edge(), TYStyleKit::colour(Token::Separator));
}

TEST(TYStyleTest, onlyTheKeyboardBringsTheRing) {
  QWidget window;
  auto* column = new QVBoxLayout(&window);
  auto* first = new QPushButton(QStringLiteral("First"));
  auto* second = new QPushButton(QStringLiteral("Second"));
  column->addWidget(first);
  column->addWidget(second);
  window.show();
  window.activateWindow();
  QCoreApplication::processEvents();
  QTest::mouseClick(first, Qt::LeftButton);
  first->setFocus(Qt::MouseFocusReason);
  EXPECT_FALSE(window.findChild<QFocusFrame*>());
  QTest::keyClick(first, Qt::Key_Tab);
  ASSERT_TRUE(second->hasFocus());
  const auto* ring = window.findChild<QFocusFrame*>();
  ASSERT_TRUE(ring);
  EXPECT_EQ(ring->geometry(), second->geometry().adjusted(-3, -3, 3, 3));
}

TEST(TYStyleTest, scrollBarsHaveNoArrowsAndAThumbThatCanBeDragged) {
  QScrollBar bar(Qt::Vertical);
  bar.setRange(0, 1000);
  bar.setPageStep(100);
  bar.resize(bar.sizeHint().width(), 200);
  bar.show();
  QTest::mousePress(&bar, Qt::LeftButton, {}, QPoint(5, 8));
  QTest::mouseMove(&bar, QPoint(5, 199));
  QMouseEvent move(QEvent::MouseMove, QPointF(5, 500), bar.mapToGlobal(QPointF(5, 500)),
                   Qt::NoButton, Qt::LeftButton, {});
  QApplication::sendEvent(&bar, &move);
  EXPECT_EQ(bar.value(), 1000);
  QTest::mouseRelease(&bar, Qt::LeftButton, {}, QPoint(5, 199));
}
