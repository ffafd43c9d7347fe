#include "model/Attribute.h"

#include <cmath>

#include "ComponentFiles.h"
#include "model/RichFontValue.h"
#include "runtime/CompositionRenderer.h"

namespace model {

using foundation::Color;
using foundation::PropertyArray;
using foundation::PropertyValue;

namespace {

const QString number = QStringLiteral("QCNumberPort");
const QString string = QStringLiteral("QCStringPort");
const QString color = QStringLiteral("QCColorPort");
const QString index = QStringLiteral("QCIndexPort");

/// (time, value) of each key frame; no value reads as -99.
QList<std::pair<double, double>> points(const PropertyArray& curve) {
  QList<std::pair<double, double>> result;
  for (const PropertyValue& entry : curve) {
    const auto& frame = entry.dictionary().value(u"kf").dictionary();
    result.append({frame.value(u"time").toDouble(), frame.value(u"value").toDouble(-99)});
  }
  return result;
}

class AttributeOf : public testing::Test {
 protected:
  Attribute& make(const ComponentFiles::Input& input) {
    const QString path = m_files.writeComponent(QStringLiteral("part.qtz"), {input});
    QStringList warnings;
    m_component = m_graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
    EXPECT_NE(m_component, nullptr) << warnings.join(u' ').toStdString();
    return *m_component->attributeForKey(input.key);
  }

  ComponentFiles m_files;
  Graphic m_graphic = emptyGraphic();
  QuartzComponent* m_component = nullptr;
};

}  // namespace

TEST_F(AttributeOf, TimesAreSinglePrecisionAndFinite) {
  Attribute& amount = make({QStringLiteral("Amount"), number, 1.0, {}});
  EXPECT_EQ(amount.adjustTimepointsBy(1, Attribute::Moved::All), 0);  // static
  EXPECT_EQ(amount.currentValue(), AttributeValue(1.0));
  amount.addTimepoint(0.5, 1.0);
  amount.addTimepoint(1.1, 2.0);
  amount.addTimepoint(1.3, 3.0);
  // In double precision 1.1 lies before its key frame, and 1.3 after.
  EXPECT_EQ(amount.nextTimePoint(1.1), roundedTimepoint(1.3));
  EXPECT_EQ(amount.previousTimePoint(1.3), roundedTimepoint(1.1));

  const QList<double> times = amount.sortedKeyFrames();
  const double none = std::nan("");
  amount.deleteTimepoint(none);
  for (const double time : {none, double(INFINITY), 1e39}) amount.addTimepoint(time, 9.0);
  amount.adjustTimepointsBy(none, Attribute::Moved::All);
  EXPECT_EQ(amount.sortedKeyFrames(), times);
  EXPECT_EQ(amount.valueForTimepoint(0.5), AttributeValue(1.0));
}

TEST(AttributeLabel, TakesPositionAndCategoryOutOfTheLabel) {
  const auto both = AttributeLabel::parse(QStringLiteral("Size [3] (Layout)"));
  EXPECT_EQ(both.text, QStringLiteral("Size "));
  EXPECT_EQ(both.position, 3u);
  EXPECT_EQ(both.category, QStringLiteral("Layout"));
  const auto category = AttributeLabel::parse(QStringLiteral("Size (Layout)"));
  EXPECT_EQ(category.text, QStringLiteral("Size (Layout)"));
  EXPECT_EQ(category.category, QStringLiteral("Layout"));
  EXPECT_EQ(category.position, AttributeLabel::noPosition);
  EXPECT_EQ(AttributeLabel::parse(QStringLiteral("A (b) [2]")).text, QStringLiteral("A "));
  EXPECT_EQ(AttributeLabel::parse(QStringLiteral("[7] A")).text, QStringLiteral("[7] A"));
  EXPECT_EQ(AttributeLabel::parse(QStringLiteral("open [3")).position, AttributeLabel::noPosition);
}

TEST_F(AttributeOf, KeyFramesHoldOutsideAndBlendBetween) {
  Attribute& attribute = make({QStringLiteral("Amount"), number, 4.0, {}});
  EXPECT_EQ(attribute.type(), AttributeType::Number);
  EXPECT_EQ(attribute.currentValue(), AttributeValue(4.0));
  attribute.setPermissionToChange(true);
  attribute.addTimepoint(1.00000001, 10.0);
  attribute.addTimepoint(2, 20.0);
  EXPECT_TRUE(attribute.animateable());
  EXPECT_FALSE(attribute.permissionToChange());
  EXPECT_EQ(attribute.valueForTimepoint(1), AttributeValue(10.0));
  EXPECT_TRUE(attribute.hasKeyframeAtTimePoint(1.004));
  EXPECT_EQ(attribute.valueAtTimepoint(0), AttributeValue(10.0));
  EXPECT_EQ(attribute.valueAtTimepoint(1.25), AttributeValue(12.5));
  EXPECT_EQ(attribute.valueAtTimepoint(5), AttributeValue(20.0));
  m_graphic->setEditorTimepoint(1.5);
  EXPECT_EQ(attribute.currentValue(), AttributeValue(15.0));
  attribute.deleteTimepoint(1);
  attribute.deleteTimepoint(2);
  EXPECT_FALSE(attribute.animateable());
  EXPECT_EQ(attribute.currentValue(), AttributeValue(20.0));
}

TEST_F(AttributeOf, ColoursBlendByChannelAndTextsHold) {
  Attribute& tint = make({QStringLiteral("Tint"), color, {}, {}});
  tint.addTimepoint(0, Color{0, 1, 0.5, 1});
  tint.addTimepoint(2, Color{1, 0, 0.5, 0});
  EXPECT_EQ(tint.valueAtTimepoint(1), AttributeValue(Color{0.5, 0.5, 0.5, 0.5}));
  const PropertyArray curves = tint.keyFrameInformation();
  ASSERT_EQ(curves.size(), 3);
  EXPECT_EQ(points(curves[1].array()), (QList<std::pair<double, double>>{{0, 1}, {2, 0}}));
  EXPECT_TRUE(tint.keyFrameValuesForMultiplexer().isEmpty());

  Attribute& text = make({QStringLiteral("Text"), string, QStringLiteral("x"), {}});
  text.addTimepoint(1, QStringLiteral("a"));
  text.addTimepoint(3, QStringLiteral("b"));
  EXPECT_EQ(text.valueAtTimepoint(2.9), AttributeValue(QStringLiteral("a")));
  EXPECT_EQ(points(text.keyFrameInformation()),
            (QList<std::pair<double, double>>{{0, 0}, {1, 0}, {3, 0}, {3, 1}}));
  EXPECT_EQ(text.keyFrameValuesForMultiplexer(),
            (PropertyArray{QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(AttributeOf, NumberCurvesStartAtZeroWithControlsHalfWay) {
  Attribute& attribute = make({QStringLiteral("Amount"), number, {}, {}});
  attribute.addTimepoint(0.5, 1.0);
  attribute.addTimepoint(1.5, 3.0);
  const PropertyArray curve = attribute.keyFrameInformation();
  EXPECT_EQ(points(curve), (QList<std::pair<double, double>>{{0, 1}, {0.5, 1}, {1.5, 3}}));
  const auto control = [&](qsizetype i, QStringView side) {
    return curve[i].dictionary().value(side).dictionary().value(u"time").toDouble();
  };
  EXPECT_EQ(control(0, u"rc"), 0);
  EXPECT_EQ(control(1, u"lc"), -0.25);
  EXPECT_EQ(control(1, u"rc"), 0.5);
  EXPECT_EQ(control(2, u"lc"), -0.5);
  EXPECT_EQ(control(2, u"rc"), 0);
  EXPECT_EQ(curve[0].dictionary().value(u"fixedControls"), PropertyValue(true));
}

TEST_F(AttributeOf, IndexCurvesJump) {
  Attribute& attribute = make({QStringLiteral("Choice"), index, 1, {}});
  EXPECT_EQ(attribute.type(), AttributeType::Index);
  attribute.addTimepoint(1, qint64(4));
  attribute.addTimepoint(2, qint64(4));
  attribute.addTimepoint(3, qint64(5));
  // The jump to the first value comes from no value at all.
  EXPECT_EQ(points(attribute.keyFrameInformation()),
            (QList<std::pair<double, double>>{{0, 4}, {1, -99}, {1, 4}, {2, 4}, {3, 4}, {3, 5}}));
  EXPECT_FALSE(
      attribute.keyFrameInformation()[1].dictionary().value(u"kf").dictionary().contains(u"value"));
}

TEST_F(AttributeOf, KeyFramesMoveWithinTheComponentsTimes) {
  using Moved = Attribute::Moved;
  Attribute& attribute = make({QStringLiteral("Amount"), number, {}, {}});
  m_component->setStartTime(0.5);
  for (const double time : {0.75, 1.0, 1.5}) attribute.addTimepoint(time, time);
  attribute.setTimePointSelected(1.0, true);
  const KeyFrames before = attribute.values();
  EXPECT_EQ(attribute.adjustTimepointsBy(-3, Moved::All), 0.5);
  EXPECT_EQ(attribute.sortedKeyFrames(), (QList<double>{0.5, 0.75, 1.25}));
  EXPECT_EQ(attribute.selectedTimepoints(), QList<double>{0.75});
  m_graphic.context->undo();
  EXPECT_EQ(attribute.values(), before);
  // The other end; only the lower clamp counts where both would.
  EXPECT_EQ(attribute.adjustTimepointsBy(3, Moved::All), 1.25);
  m_graphic.context->undo();
  // One that lands on another takes its place; undo brings both back.
  attribute.deselectAllTimePoints();
  attribute.setTimePointSelected(1.0, true);
  EXPECT_EQ(attribute.adjustTimepointsBy(0.5, Moved::OnlySelected), 1.5);
  EXPECT_EQ(attribute.sortedKeyFrames(), (QList<double>{0.75, 1.5}));
  EXPECT_EQ(attribute.valueForTimepoint(1.5), AttributeValue(1.0));
  m_graphic.context->undo();
  EXPECT_EQ(attribute.values(), before);
  EXPECT_EQ(attribute.selectedTimepoints(), QList<double>{1.0});  // the selection comes along
  attribute.deselectAllTimePoints();
  EXPECT_EQ(attribute.adjustTimepointsBy(1, Moved::OnlySelected), 0);
}

TEST_F(AttributeOf, DeletingKeyFramesAndUndoingIt) {
  Attribute& attribute = make({QStringLiteral("Amount"), number, 3.0, {}});
  attribute.addTimepoint(0.5, 1.0);
  attribute.addTimepoint(1.0, 2.0);
  attribute.setTimePointSelected(0.5, true);
  attribute.setTimePointSelected(1.0, true);
  attribute.deleteTimepoint(0.7);  // none there
  EXPECT_EQ(attribute.sortedKeyFrames().size(), 2);
  attribute.deleteSelectedTimepoints();
  EXPECT_FALSE(attribute.animateable());
  EXPECT_EQ(attribute.currentValue(), AttributeValue(2.0));
  EXPECT_TRUE(attribute.selectedTimepoints().isEmpty());
  m_graphic.context->undo();
  EXPECT_TRUE(attribute.animateable());
  EXPECT_EQ(attribute.sortedKeyFrames(), (QList<double>{0.5, 1.0}));
}

TEST_F(AttributeOf, AnimatingTakesThePermissionAndUndoGivesItBack) {
  Attribute& attribute = make({QStringLiteral("Amount"), number, 3.0, {}});
  attribute.setPermissionToChange(true);
  int announced = 0;
  const auto current =
      attribute.observe(QStringLiteral("currentValue"), [&](const store::Change&) { ++announced; });
  attribute.setAnimateable(true);
  EXPECT_FALSE(attribute.permissionToChange());
  EXPECT_TRUE(attribute.lostPermissionToAnimation());
  EXPECT_TRUE(attribute.values().isEmpty());
  EXPECT_GT(announced, 0);
  m_graphic.context->undo();
  EXPECT_TRUE(attribute.permissionToChange());
  EXPECT_FALSE(attribute.lostPermissionToAnimation());
  EXPECT_EQ(attribute.currentValue(), AttributeValue(3.0));
  m_graphic->setEditorTimepoint(1);
  attribute.addTimepoint(0.5, 1.0);
  attribute.setCurrentValue(9.0);  // a key frame at the editor time
  EXPECT_EQ(attribute.valueForTimepoint(1), AttributeValue(9.0));
  attribute.setCurrentValue(AttributeValue());  // missing: the one before holds
  EXPECT_EQ(attribute.currentValue(), AttributeValue(1.0));
}

TEST_F(AttributeOf, MarginsAreTakenOffTheOrigin) {
  make({QStringLiteral("Amount"), number, {}, {}});
  m_component->setOriginX(100);
  m_component->setOriginY(50);
  m_component->setMarginX(12);
  const auto adjusted = [&](const char* key) {
    return m_component->attributeForKey(QString::fromLatin1(key))
        ->marginAdjustedValueForTimepoint(noTimepoint);
  };
  EXPECT_EQ(adjusted("originX"), AttributeValue(88.0));
  EXPECT_EQ(adjusted("originY"), AttributeValue(50.0));
  m_component->setMarginX(-5);
  EXPECT_EQ(adjusted("originX"), AttributeValue(100.0));
}

TEST_F(AttributeOf, RichFontsGatherTheirGroup) {
  const QString path = m_files.writeComponent(
      QStringLiteral("rich.qtz"),
      {{QStringLiteral("Head_Rich_Font_Name"), string, QStringLiteral("Inter"), {}},
       {QStringLiteral("Head_Rich_Font_Size"), number, 40.0, {}},
       {QStringLiteral("Rich_Font_Size"), number, 1.0, {}},
       {QStringLiteral("Other_Font_Size"), number, 1.0, {}}});
  QStringList warnings;
  m_component = m_graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
  ASSERT_NE(m_component, nullptr);
  EXPECT_EQ(m_component->attributes().size(), 1 + 9);
  const Attribute& attribute = *m_component->attributes().front();
  EXPECT_EQ(attribute.type(), AttributeType::RichFont);
  EXPECT_EQ(attribute.title(), QStringLiteral("Rich Font"));
  const AttributeValue value = attribute.currentValue();
  const auto& font = **value.as<std::shared_ptr<const RichFontValue>>();
  EXPECT_EQ(font.keyPattern(), QStringLiteral("Head_%@"));
  EXPECT_EQ(font.font(), (FontValue{QStringLiteral("Inter"), 40}));
  EXPECT_EQ(attribute.quartzValues().value(u"Head_Rich_Font_Size"), PropertyValue(40.0));
}

}  // namespace model
