#include "widgets/TYNumberField.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include "widgets/TYScrubLabel.h"
#include "widgets/TYTimecodeField.h"

using namespace widgets;

namespace {

/// A window with a label and its field, and what the field announces, in order.
class TYNumberFieldTest : public testing::Test {
 protected:
  TYNumberFieldTest()
      : field(new TYNumberField), label(new TYScrubLabel(QStringLiteral("Position"), field)) {
    auto* column = new QVBoxLayout(&window);
    column->addWidget(label);
    column->addWidget(field);
    column->addWidget(&other);
    field->setLocale(QLocale(QLocale::English));
    field->setValue(100);
    QObject::connect(field, &TYValueField::editBegan, &window,
                     [this] { log << QStringLiteral("began"); });
    QObject::connect(field, &TYValueField::valueEdited, &window,
                     [this](double value) { log << QString::number(value); });
    QObject::connect(field, &TYValueField::relativeEdited, &window,
                     [this](const NumberExpression& change) {
                       log << QStringLiteral("each 10 → %1").arg(change.appliedTo(10));
                     });
    QObject::connect(field, &TYValueField::editCommitted, &window,
                     [this] { log << QStringLiteral("committed"); });
    QObject::connect(field, &TYValueField::editCancelled, &window,
                     [this] { log << QStringLiteral("cancelled"); });
    window.show();
    window.activateWindow();
    field->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
  }
  ~TYNumberFieldTest() override { other.setParent(nullptr); }

  void type(const char* text) {
    field->selectAll();
    QTest::keyClicks(field, QString::fromUtf8(text));
  }
  void drag(QWidget* widget, QPoint from, const QList<QPair<int, Qt::KeyboardModifiers>>& moves) {
    QTest::mousePress(widget, Qt::LeftButton, {}, from);
    for (const auto& [x, modifiers] : moves) {
      QMouseEvent move(QEvent::MouseMove, QPointF(from.x() + x, from.y()),
                       widget->mapToGlobal(QPointF(from.x() + x, from.y())), Qt::NoButton,
                       Qt::LeftButton, modifiers);
      QApplication::sendEvent(widget, &move);
    }
  }
  [[nodiscard]] std::string events() const { return log.join(QStringLiteral(", ")).toStdString(); }

  QWidget window;
  TYNumberField* field;
  TYScrubLabel* label;
  QLineEdit other;
  QStringList log;
};

}  // namespace

TEST_F(TYNumberFieldTest, arithmeticIsTakenOverOnReturnAsOneEdit) {
  type("1920/2-40");
  EXPECT_EQ(events(), "");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(events(), "began, 920, committed");
  EXPECT_EQ(field->text(), QStringLiteral("920"));
  type("+=1000");
  other.setFocus();
  EXPECT_EQ(field->value(), 1920);
  EXPECT_EQ(field->text(), QStringLiteral("1,920"));
}

TEST_F(TYNumberFieldTest, aWrongEntryKeepsItsTextUntilEscape) {
  type("12,,4");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_TRUE(field->isInvalid());
  EXPECT_TRUE(field->property("invalid").toBool());
  EXPECT_FALSE(field->toolTip().isEmpty());
  EXPECT_EQ(field->text(), QStringLiteral("12,,4"));
  other.setFocus();
  EXPECT_EQ(field->text(), QStringLiteral("12,,4"));
  field->setValue(50);
  EXPECT_EQ(field->text(), QStringLiteral("12,,4"));
  field->setFocus();
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_FALSE(field->isInvalid());
  EXPECT_EQ(field->text(), QStringLiteral("50"));
  EXPECT_EQ(events(), "");
}

TEST_F(TYNumberFieldTest, escapeDropsWhatWasTyped) {
  type("77");
  QTest::keyClick(field, Qt::Key_Escape);
  other.setFocus();
  EXPECT_EQ(field->value(), 100);
  EXPECT_EQ(events(), "");
}

TEST_F(TYNumberFieldTest, arrowKeysStep) {
  QTest::keyClick(field, Qt::Key_Up);
  QTest::keyClick(field, Qt::Key_Up, Qt::ShiftModifier);
  QTest::keyClick(field, Qt::Key_Down, Qt::ControlModifier);
  QTest::keyClick(field, Qt::Key_Down, Qt::AltModifier);
  EXPECT_NEAR(field->value(), 110.8, 1e-9);
  EXPECT_EQ(log.count(QStringLiteral("committed")), 4);
  field->setRange(0, 111);
  QTest::keyClick(field, Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(field->value(), 111);
}

TEST_F(TYNumberFieldTest, whatIsNotShownIsNotLost) {
  field->setDecimals(2);
  field->setValue(1.23456789);
  EXPECT_EQ(field->text(), QStringLiteral("1.23"));
  type("1.23");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(field->value(), 1.23456789);
  EXPECT_EQ(events(), "");
  QTest::keyClick(field, Qt::Key_Up);
  EXPECT_DOUBLE_EQ(field->value(), 2.23456789);
}

TEST_F(TYNumberFieldTest, mixedValuesAreSetTogetherOrChangedEachByItself) {
  field->setMixed(true);
  EXPECT_EQ(field->text(), QStringLiteral("—"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(events(), "");
  type("*=2");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(events(), "began, each 10 → 20, committed");
  EXPECT_EQ(field->text(), QStringLiteral("—"));
  log.clear();
  type("5");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(events(), "began, 5, committed");
  EXPECT_FALSE(field->isMixed());
}

TEST_F(TYNumberFieldTest, draggingTheLabelIsOneEditWithOneStepAPixel) {
  drag(label, {5, 5}, {{2, {}}, {10, {}}, {12, Qt::ShiftModifier}, {22, Qt::ControlModifier}});
  EXPECT_NEAR(field->value(), 100 + 10 + 20 + 1, 1e-9);
  QTest::mouseRelease(label, Qt::LeftButton, {}, QPoint(27, 5));
  EXPECT_EQ(log.constFirst(), QStringLiteral("began"));
  EXPECT_EQ(log.constLast(), QStringLiteral("committed"));
  EXPECT_EQ(log.count(QStringLiteral("began")), 1);
}

TEST_F(TYNumberFieldTest, escapeTakesADragBack) {
  drag(label, {5, 5}, {{40, {}}});
  EXPECT_EQ(field->value(), 140);
  QTest::keyClick(label, Qt::Key_Escape);
  EXPECT_EQ(field->value(), 100);
  EXPECT_EQ(field->text(), QStringLiteral("100"));
  EXPECT_EQ(events(), "began, 140, cancelled");
  QTest::mouseRelease(label, Qt::LeftButton, {}, QPoint(45, 5));
  EXPECT_EQ(events(), "began, 140, cancelled");
}

TEST_F(TYNumberFieldTest, clickingTheLabelOnlySelectsTheField) {
  other.setFocus();
  QTest::mouseClick(label, Qt::LeftButton);
  EXPECT_TRUE(field->hasFocus());
  EXPECT_EQ(field->selectedText(), QStringLiteral("100"));
  EXPECT_EQ(events(), "");
  EXPECT_EQ(field->accessibleName(), QStringLiteral("Position"));
}

TEST_F(TYNumberFieldTest, thePrefixCanBeDraggedToo) {
  field->setPrefix(QStringLiteral("X"));
  drag(field, {10, field->height() / 2}, {{20, {}}});
  QTest::mouseRelease(field, Qt::LeftButton, {}, QPoint(30, 5));
  EXPECT_EQ(field->value(), 120);
  drag(field, {field->width() - 12, field->height() / 2}, {{20, {}}});
  EXPECT_EQ(field->value(), 120);
}

TEST_F(TYNumberFieldTest, aDisabledFieldCannotBeDragged) {
  field->setEnabled(false);
  drag(label, {5, 5}, {{40, {}}});
  EXPECT_EQ(field->value(), 100);
  EXPECT_EQ(events(), "");
}

TEST(TYTimecodeFieldTest, usesTheNotationThatItIsGiven) {
  TYTimecodeField field;
  field.setNotation([](double frames) { return QStringLiteral("f%1").arg(frames); },
                    [](const QString& text, double current) -> foundation::Result<double> {
                      if (text.startsWith(QLatin1Char('+')))
                        return current + text.mid(1).toDouble();
                      if (!text.startsWith(QLatin1Char('f')))
                        return foundation::failure(QStringLiteral("No time."));
                      return text.mid(1).toDouble();
                    });
  field.setValue(12);
  EXPECT_EQ(field.text(), QStringLiteral("f12"));
  QSignalSpy edits(&field, &TYValueField::valueEdited);
  field.selectAll();
  QTest::keyClicks(&field, QStringLiteral("+8"));
  QTest::keyClick(&field, Qt::Key_Return);
  EXPECT_EQ(field.value(), 20);
  field.selectAll();
  QTest::keyClicks(&field, QStringLiteral("soon"));
  QTest::keyClick(&field, Qt::Key_Return);
  EXPECT_EQ(field.toolTip(), QStringLiteral("No time."));
  EXPECT_EQ(edits.size(), 1);
}
