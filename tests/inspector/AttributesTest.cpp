#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSlider>
#include <QWheelEvent>

#include "inspector/InspectorFixture.h"
#include "inspector/rows/KeyFrameControl.h"
#include "widgets/TYColorWell.h"
#include "widgets/TYKeyDiamond.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYScrubLabel.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/color/ColorPopover.h"

namespace inspector {

using foundation::Color;
using model::AttributeType;
using model::AttributeValue;
using testing::ElementsAre;
using testing::IsEmpty;
using widgets::TYNumberField;

namespace {

const QString text = QStringLiteral("Text");
const QString spacing = QStringLiteral("Line_Spacing");

QString q(const char* latin) {
  return QString::fromLatin1(latin);
}

class AttributesTest : public InspectorFixture {
 protected:
  void animate(model::Attribute* attribute) {
    attribute->addTimepoint(0.2, 1.0);
    attribute->addTimepoint(1.2, 11.0);
    graphic.context->clearHistory();
    settle();
  }
};

}  // namespace

TEST_F(AttributesTest, OneRowAKeySortedByKeyWithoutStandardAndHiddenOnes) {
  auto* first = add(q("First"));
  give(first, q("b"), AttributeType::Number, 1.0);
  give(first, q("_hidden"), AttributeType::Number, 1.0);
  give(first, q("Rich"), AttributeType::RichFont, {});
  give(first, q("videoInput"), AttributeType::VideoInput, {});
  auto* second = add(q("Second"));
  give(second, q("b"), AttributeType::String, q("kept out: the first one counts"));
  give(second, q("a_long_name"), AttributeType::String, QString());
  give(second, q("B"), AttributeType::Boolean, false);
  select({first, second});
  EXPECT_THAT(attributeLabels(), ElementsAre(q("B"), q("a long name"), q("b")));
  EXPECT_TRUE(control<TYNumberField>(q("b")));

  select({add(q("Plain"))});
  EXPECT_THAT(attributeLabels(), IsEmpty());
  bool toldSo = false;
  for (const QLabel* label : panel.findChildren<QLabel*>())
    toldSo = toldSo || (label->isVisible() && label->text() == q("No attributes"));
  EXPECT_TRUE(toldSo);
}

TEST_F(AttributesTest, MenusOfExactlyTheFiveAlignmentsAreSegments) {
  auto* component = add(q("Strap"));
  const QStringList five{q("Left"), q("Center"), q("Right"), q("Justified"), q("Natural")};
  auto* justification = give(component, q("j"), AttributeType::IndexWithMenu, qint64{1}, five);
  give(component, q("k"), AttributeType::IndexWithMenu, qint64{1}, five.sliced(0, 4));
  select({component});
  auto* segments = control<widgets::TYSegmentedControl>(q("j"));
  ASSERT_TRUE(segments);
  EXPECT_EQ(segments->selectedSegment(), 1);
  QTest::mouseClick(segments->segment(3), Qt::LeftButton);
  EXPECT_EQ(justification->currentValue(), AttributeValue(qint64{3}));
  EXPECT_EQ(undoName(), q("Change j"));
  auto* box = control<QComboBox>(q("k"));
  ASSERT_TRUE(box);
  EXPECT_EQ(box->currentText(), q("Center"));
  box->setFocus();
  QTest::keyClick(box, Qt::Key_Down);
  EXPECT_EQ(component->attributeForKey(q("k"))->currentValue(), AttributeValue(qint64{2}));
}

TEST_F(AttributesTest, MixedValuesStayUntilTheyAreEdited) {
  auto* first = add(q("First"));
  auto* second = add(q("Second"));
  auto* a = give(first, spacing, AttributeType::Number, 1.25);
  auto* b = give(second, spacing, AttributeType::Number, 3.0);
  give(first, text, AttributeType::String, q("One"));
  auto* words = give(second, text, AttributeType::String, q("Two"));
  select({first, second});
  auto* field = control<TYNumberField>(q("Line Spacing"));
  EXPECT_EQ(field->text(), QStringLiteral("—"));
  field->setFocus();
  QTest::keyClick(field, Qt::Key_Tab);
  auto* line = control<QLineEdit>(text);
  EXPECT_EQ(line->text(), QString());
  EXPECT_EQ(line->placeholderText(), QStringLiteral("—"));
  line->setFocus();
  QTest::keyClick(line, Qt::Key_Tab);
  EXPECT_EQ(steps(), 0) << "walking through changes nothing";

  type(field, q("+=10"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(a->currentValue(), AttributeValue(11.25));
  EXPECT_EQ(b->currentValue(), AttributeValue(13.0));
  type(field, q("1920/2-40"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(a->currentValue(), AttributeValue(920.0));
  EXPECT_EQ(b->currentValue(), AttributeValue(920.0));
  EXPECT_EQ(steps(), 2);
  settle();
  EXPECT_EQ(field->text(), field->locale().toString(920));
  type(line, q("All"));
  EXPECT_EQ(words->currentValue(), AttributeValue(q("All")));
  graphic->clearSelection();
  settle();
  EXPECT_EQ(steps(), 3);
  EXPECT_EQ(undoName(), q("Change Text"));
}

TEST_F(AttributesTest, TypingWritesAtOnceAndIsOneStep) {
  auto* component = add(q("Strap"));
  auto* attribute = give(component, text, AttributeType::String, q("Morning"));
  give(component, q("z"), AttributeType::String, QString());
  select({component});
  auto* field = control<QLineEdit>(text);
  type(field, q("News"));
  EXPECT_EQ(attribute->currentValue(), AttributeValue(q("News")));
  QTest::mousePress(control<QLineEdit>(q("z")), Qt::LeftButton);
  EXPECT_FALSE(graphic.context->isInStep());
  EXPECT_EQ(steps(), 1);
  graphic.context->undo();
  settle();
  EXPECT_EQ(field->text(), q("Morning"));

  type(field, q("Dropped"));
  QTest::keyClick(field, Qt::Key_Escape);
  settle();
  EXPECT_EQ(attribute->currentValue(), AttributeValue(q("Morning")));
  EXPECT_EQ(field->text(), q("Morning"));
  type(field, q("Kept"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(steps(), 1);
  EXPECT_EQ(attribute->currentValue(), AttributeValue(q("Kept")));
}

TEST_F(AttributesTest, ADragOfTheLabelIsOneStepAndEscapeTakesItBack) {
  auto* component = add(q("Strap"));
  auto* attribute = give(component, spacing, AttributeType::Number, 10.0);
  select({component});
  auto* label = control<widgets::TYScrubLabel>(q("Line Spacing"));
  const QPoint at = label->rect().center();
  QTest::mousePress(label, Qt::LeftButton, {}, at);
  QTest::mouseMove(label, at + QPoint(20, 0));
  QTest::mouseMove(label, at + QPoint(30, 0));
  EXPECT_EQ(attribute->currentValue(), AttributeValue(40.0));
  QTest::mouseRelease(label, Qt::LeftButton, {}, at + QPoint(30, 0));
  EXPECT_EQ(steps(), 1);
  QTest::mousePress(label, Qt::LeftButton, {}, at);
  QTest::mouseMove(label, at + QPoint(50, 0));
  QTest::keyClick(label, Qt::Key_Escape);
  EXPECT_EQ(attribute->currentValue(), AttributeValue(40.0));
  EXPECT_EQ(steps(), 1);
}

TEST_F(AttributesTest, TheColourPanelIsOneStep) {
  auto* component = add(q("Strap"));
  auto* attribute = give(component, q("c"), AttributeType::Color, Color{1, 0, 0, 1});
  select({component});
  auto* well = control<widgets::TYColorWell>(q("c"));
  QTest::mouseClick(well, Qt::LeftButton);
  ASSERT_TRUE(well->popover());
  auto* hex = well->popover()->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
  type(hex, q("00ff00"));
  QTest::keyClick(hex, Qt::Key_Return);
  settle();
  EXPECT_EQ(attribute->currentValue().description(), q("#00ff00ff"));
  EXPECT_EQ(steps(), 1);
  EXPECT_EQ(undoName(), q("Change c"));
}

TEST_F(AttributesTest, AnimatedOnesGetKeyFramesAtTheCurrentTime) {
  auto* component = add(q("Strap"));
  auto* attribute = give(component, spacing, AttributeType::Number, 10.0);
  select({component});
  InspectorRow* line = row(q("Line Spacing"));
  auto* diamond = line->findChild<widgets::TYKeyDiamond*>();
  using State = widgets::TYKeyDiamond::State;
  EXPECT_EQ(diamond->state(), State::Still);
  animate(attribute);
  EXPECT_EQ(diamond->state(), State::Animated);
  graphic->setEditorTimepoint(0.72);
  settle();
  auto* field = control<TYNumberField>(q("Line Spacing"));
  EXPECT_NEAR(field->value(), 6.2, 1e-3) << "in between";
  type(field, q("50"));
  QTest::keyClick(field, Qt::Key_Return);
  settle();
  EXPECT_EQ(attribute->sortedKeyFrames().size(), 3);
  EXPECT_EQ(diamond->state(), State::KeyHere);

  diamond->setFocus();
  QTest::keyClick(diamond, Qt::Key_Left);
  EXPECT_NEAR(graphic->editorTimepoint(), 0.2, 1e-6);
  QTest::keyClick(diamond, Qt::Key_Right);
  EXPECT_NEAR(graphic->editorTimepoint(), 0.72, 1e-6);
  settle();
  EXPECT_EQ(diamond->state(), State::KeyHere);
  QTest::mouseClick(diamond, Qt::LeftButton);
  EXPECT_EQ(attribute->sortedKeyFrames().size(), 2);
  settle();
  QTest::mouseClick(diamond, Qt::LeftButton);
  EXPECT_NEAR(attribute->valueForTimepoint(0.72).toNumber(), 6.2, 1e-3);
  EXPECT_EQ(undoName(), q("Add Key Frame"));
}

TEST_F(AttributesTest, OneOfAPairCanBeAnimatedAlone) {
  auto* component = add(q("Strap"));
  auto* x = component->attributeForKey(q("originX"));
  auto* y = component->attributeForKey(q("originY"));
  animate(x);
  select({component});
  auto* diamond = row(q("Position"))->findChild<widgets::TYKeyDiamond*>();
  using State = widgets::TYKeyDiamond::State;
  EXPECT_EQ(diamond->state(), State::Animated);
  QTest::mouseClick(diamond, Qt::LeftButton);
  settle();
  EXPECT_EQ(x->sortedKeyFrames().size(), 3);
  EXPECT_FALSE(y->animateable());
  EXPECT_EQ(diamond->state(), State::KeyHere);
  for (int i = 0; i < 2; ++i) graphic.context->undo();
  x->setAnimateable(false);
  settle();
  QTest::mouseClick(diamond, Qt::LeftButton);
  EXPECT_TRUE(x->animateable() && y->animateable());
}

TEST_F(AttributesTest, BadInputKeepsTheValueAndSaysWhatIsWrong) {
  auto* component = add(q("Strap"));
  auto* number = give(component, spacing, AttributeType::Number, 10.0);
  auto* words = give(component, text, AttributeType::String, q("Morning"));
  select({component});
  auto* field = control<TYNumberField>(q("Line Spacing"));
  type(field, q("twelve"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(number->currentValue(), AttributeValue(10.0));
  EXPECT_FALSE(row(q("Line Spacing"))->complaint().isEmpty());
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_TRUE(row(q("Line Spacing"))->complaint().isEmpty());

  auto* line = control<QLineEdit>(text);
  line->setFocus();
  line->selectAll();
  QApplication::clipboard()->setText(QString(10 << 20, u'x'));
  QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
  QApplication::clipboard()->clear();
  EXPECT_EQ(words->currentValue(), AttributeValue(q("Morning")));
  EXPECT_FALSE(row(text)->complaint().isEmpty());
  EXPECT_EQ(line->text(), q("Morning"));
  EXPECT_EQ(steps(), 0);
}

TEST_F(AttributesTest, LimitsOfThePortMakeASlider) {
  QStringList warnings;
  const auto path = model::StandardComponents::located().pathOf(q("GradientBar"));
  ASSERT_TRUE(path);
  auto* component = graphic->addComponenWithQuartzCompositionFile(*path, {}, warnings);
  select({component});
  auto* slider = control<QSlider>(q("Opacity 1"));
  ASSERT_TRUE(slider);
  EXPECT_EQ(slider->value(), slider->maximum());
  slider->setFocus();
  QTest::keyClick(slider, Qt::Key_Home);
  EXPECT_EQ(component->attributeForKey(q("Opacity_1"))->currentValue(), AttributeValue(0.0));
  auto* field = control<TYNumberField>(q("Opacity 1"));
  type(field, q("7"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(component->attributeForKey(q("Opacity_1"))->currentValue(), AttributeValue(1.0));

  auto* well = control<widgets::TYColorWell>(q("Color 1"));
  ASSERT_TRUE(well);
  QTest::mouseClick(well, Qt::LeftButton);
  QSet<QString> offered;
  for (const auto* swatch : well->popover()->findChildren<QAbstractButton*>())
    offered.insert(swatch->accessibleName());
  const auto* second = component->attributeForKey(q("Color_2"));
  ASSERT_TRUE(second);
  const QColor color = second->currentValue().as<Color>()->toQColor();
  EXPECT_TRUE(offered.contains(widgets::ColorPopover::hexText(color)));
  well->popover()->close();
}

TEST_F(AttributesTest, UndoBelongsToTheWindowOnceAFieldIsThrough) {
  auto* component = add(q("Strap"));
  auto* number = give(component, spacing, AttributeType::Number, 10.0);
  auto* words = give(component, text, AttributeType::String, q("Morning"));
  select({component});
  QShortcut undo(QKeySequence::Undo, &panel);
  QObject::connect(&undo, &QShortcut::activated, &panel, [this] { graphic.context->undo(); });
  auto* field = control<TYNumberField>(q("Line Spacing"));
  type(field, q("20"));
  QTest::keyClick(field, Qt::Key_Return);
  QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(number->currentValue(), AttributeValue(10.0));
  auto* line = control<QLineEdit>(text);
  type(line, q("New"));
  QTest::keyClick(line, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(words->currentValue(), AttributeValue(line->text())) << "in the field";
  QTest::keyClicks(line, q("s"));
  QTest::keyClick(line, Qt::Key_Return);
  QTest::keyClick(line, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(words->currentValue(), AttributeValue(q("Morning")));
}

TEST_F(AttributesTest, TheWheelChangesNothing) {
  auto* component = add(q("Strap"));
  auto* choice = give(component, q("m"), AttributeType::IndexWithMenu, qint64{0}, {q("A"), q("B")});
  select({component});
  for (QWidget* target : {static_cast<QWidget*>(control<QComboBox>(q("m"))),
                          static_cast<QWidget*>(control<QSlider>(q("Opacity")))}) {
    const QPointF at = QRectF(target->rect()).center();
    QWheelEvent event(at, target->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(target, &event);
  }
  EXPECT_EQ(choice->currentValue(), AttributeValue(qint64{0}));
  EXPECT_EQ(component->opacity(), 1);
}

TEST_F(AttributesTest, RemovedComponentsAndAttributesLeaveThePane) {
  auto* component = add(q("Strap"));
  give(component, spacing, AttributeType::Number, 10.0);
  auto* words = give(component, text, AttributeType::String, q("Morning"));
  select({component});
  graphic.context->remove(*words);
  settle();
  EXPECT_THAT(attributeLabels(), ElementsAre(q("Line Spacing")));
  type(control<TYNumberField>(q("Line Spacing")), q("5"));
  graphic->removeComponents({component});
  settle();
  EXPECT_THAT(rows(), IsEmpty());
  graphic.context->undo();
  settle();
}

TEST_F(AttributesTest, TabGoesDownTheRowsFromLeftToRight) {
  auto* component = add(q("Strap"));
  give(component, q("a"), AttributeType::String, QString());
  give(component, q("c"), AttributeType::Number, 1.0);
  select({component});
  give(component, q("b"), AttributeType::Boolean, false);
  settle();
  auto* field = control<QLineEdit>(q("a"));
  field->setFocus();
  QStringList way;
  for (int i = 0; i < 5; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    way.append(QApplication::focusWidget()->accessibleName());
  }
  EXPECT_THAT(way, ElementsAre(q("Edit a"), q("Click to animate a."), q("b"),
                               q("Click to animate b."), q("c")));
}

}  // namespace inspector
