#include "document/KeyFrameClipboard.h"

#include <gmock/gmock.h>

#include "DocumentFixture.h"
#include "model/AttributeWords.h"

namespace document {

namespace {

using model::Attribute;
using model::AttributeValue;
using model::QuartzComponent;
using testing::ElementsAre;
using testing::HasSubstr;

class KeyFrameClipboardTest : public DocumentFixture {
 protected:
  KeyFrameClipboardTest() {
    headline = addText(QStringLiteral("One"));
    headline->setTitle(QStringLiteral("Headline"));
    other = addText(QStringLiteral("Two"));
    other->setTitle(QStringLiteral("Second \"Line\"\t"));
    opacity = headline->attributeForKey(QStringLiteral("opacity"));
    for (const double time : {0.6, 1.0, 4.4}) opacity->addTimepoint(time, time / 10);
  }
  void select(Attribute& attribute, const QList<double>& times) {
    for (const double time : times) attribute.setTimePointSelected(time, true);
  }
  static void select(QuartzComponent& component) {
    component.composition()->clearSelection();
    component.setSelected(true);
  }
  [[nodiscard]] static QList<double> hundredths(const QList<double>& times) {
    QList<double> rounded;
    for (const double time : times) rounded.append(std::round(time * 100) / 100);
    return rounded;
  }
  [[nodiscard]] QString undoName() const { return document.context().history().undoText(); }
  /// Pastes only the text, as it arrives from another program.
  [[nodiscard]] foundation::Result<void> pasteText(const QString& text,
                                                   Attribute* target = nullptr) {
    QMimeData data;
    data.setText(text);
    return clipboard.paste(data, target);
  }

  QuartzComponent* headline = nullptr;
  QuartzComponent* other = nullptr;
  Attribute* opacity = nullptr;
  KeyFrameClipboard clipboard{document};
};

}  // namespace

TEST_F(KeyFrameClipboardTest, CopiesMoveToTheEditorTimeAndAreSelected) {
  EXPECT_FALSE(clipboard.canCopy());
  select(*opacity, {0.6, 1.0});
  const auto data = clipboard.copy();
  ASSERT_TRUE(data);
  EXPECT_EQ(data->text(), QStringLiteral("Component\tAttribute\tKey\tType\tSeconds\tValue\n"
                                         "Headline\tOpacity\topacity\tnumber\t0.6\t0.06\n"
                                         "Headline\tOpacity\topacity\tnumber\t1\t0.1\n"));
  document.composition()->setEditorTimepoint(2);
  ASSERT_TRUE(clipboard.paste(*data, opacity));
  EXPECT_THAT(hundredths(opacity->sortedKeyFrames()), ElementsAre(0.6, 1, 2, 2.4, 4.4));
  EXPECT_THAT(hundredths(opacity->selectedTimepoints()), ElementsAre(2, 2.4));
  EXPECT_DOUBLE_EQ(opacity->valueAtTimepoint(2.4).toNumber(), 0.1);
  EXPECT_EQ(undoName(), QStringLiteral("Paste Key Frames"));
  document.context().undo();
  EXPECT_THAT(hundredths(opacity->sortedKeyFrames()), ElementsAre(0.6, 1, 4.4));
}

TEST_F(KeyFrameClipboardTest, CutAndDeleteAreOneStepEach) {
  Attribute* x = headline->attributeForKey(QStringLiteral("originX"));
  x->addTimepoint(3, 30.0);
  select(*opacity, {0.6, 4.4});
  select(*x, {3});
  ASSERT_TRUE(clipboard.cut());
  EXPECT_EQ(undoName(), QStringLiteral("Cut Key Frames"));
  EXPECT_THAT(hundredths(opacity->sortedKeyFrames()), ElementsAre(1));
  EXPECT_FALSE(x->animateable()) << "without key frames it stands still";
  EXPECT_EQ(x->currentValue().toNumber(), 30);
  EXPECT_FALSE(clipboard.canCopy());
  document.context().undo();
  EXPECT_THAT(hundredths(opacity->sortedKeyFrames()), ElementsAre(0.6, 1, 4.4));
  EXPECT_TRUE(x->animateable());
  opacity->deselectAllTimePoints();
  select(*opacity, {1});
  clipboard.deleteSelected();
  EXPECT_EQ(undoName(), QStringLiteral("Delete Key Frames"));
  EXPECT_THAT(hundredths(opacity->sortedKeyFrames()), ElementsAre(0.6, 4.4));
}

TEST_F(KeyFrameClipboardTest, OtherAttributesTakeWhatIsOfTheirType) {
  select(*opacity, {0.6, 1.0});
  const auto data = clipboard.copy();
  Attribute* rotation = other->attributeForKey(QStringLiteral("zRotation"));
  ASSERT_TRUE(clipboard.paste(*data, rotation));
  EXPECT_THAT(hundredths(rotation->sortedKeyFrames()), ElementsAre(0, 0.4));

  Attribute* text = other->attributeForKey(QStringLiteral("Text"));
  const auto refused = clipboard.paste(*data, text);
  ASSERT_FALSE(refused);
  EXPECT_THAT(refused.error().message.toStdString(), HasSubstr("of the type string"));
  EXPECT_FALSE(text->animateable());

  select(*other);
  ASSERT_TRUE(clipboard.paste(*data));
  EXPECT_THAT(hundredths(other->attributeForKey(QStringLiteral("opacity"))->sortedKeyFrames()),
              ElementsAre(0, 0.4));
  document.composition()->clearSelection();
  EXPECT_TRUE(clipboard.paste(*data)) << "back where they came from";
  EXPECT_THAT(hundredths(opacity->sortedKeyFrames()), ElementsAre(0, 0.4, 0.6, 1, 4.4));
  headline->setTitle(QStringLiteral("Renamed"));
  EXPECT_FALSE(clipboard.paste(*data));
}

TEST_F(KeyFrameClipboardTest, SeveralComponentsFindTheirOwnAgain) {
  Attribute* x = other->attributeForKey(QStringLiteral("originX"));
  x->addTimepoint(2, 1.0 / 3);
  select(*opacity, {1.0});
  select(*x, {2});
  const auto data = clipboard.copy();
  document.composition()->setEditorTimepoint(3);
  ASSERT_TRUE(clipboard.paste(*data));
  EXPECT_THAT(hundredths(opacity->sortedKeyFrames()), ElementsAre(0.6, 1, 3, 4.4));
  EXPECT_THAT(hundredths(x->sortedKeyFrames()), ElementsAre(2, 4));
  EXPECT_EQ(x->valueForTimepoint(4).toNumber(), 1.0 / 3) << "no digit is lost";
  document.composition()->setEditorTimepoint(1);
  ASSERT_TRUE(pasteText(data->text()));
  EXPECT_THAT(hundredths(x->sortedKeyFrames()), ElementsAre(2, 4)) << "2 was replaced";
}

TEST_F(KeyFrameClipboardTest, TextsFromSpreadsheetsAreReadOrSayWhatIsWrong) {
  const QString head = QStringLiteral("Component\tAttribute\tKey\tType\tSeconds\tValue");
  ASSERT_TRUE(pasteText(head + QStringLiteral("\r\n\r\n"
                                              "x\t\topacity\tnumber\t2,5\t1\r\n"
                                              "x\t\topacity\tnumber\t0.5\t0,25\r\n"),
                        opacity));
  EXPECT_THAT(hundredths(opacity->sortedKeyFrames()), ElementsAre(0, 0.6, 1, 2, 4.4));
  EXPECT_EQ(opacity->valueForTimepoint(0).toNumber(), 0.25);
  for (const auto& [line, complaint] :
       QList<std::pair<const char*, const char*>>{{"a\tb\tc\tnumber\tsoon\t1", "Line 2: \"soon\""},
                                                  {"a\tb\tc\tnumber\t1\tlots", "\"lots\" is no"},
                                                  {"a\tb\tc\timage\t1\t1", "\"image\" is no type"},
                                                  {"a\tb\tc\tcolor\t1\tred", "type color"},
                                                  {"a\tb\tc", "6 cells"},
                                                  {"a\tb\tc\tnumber\tnan\t1", "no time"},
                                                  {"", "no key frames"}}) {
    const auto pasted = pasteText(head + u'\n' + QString::fromLatin1(line), opacity);
    ASSERT_FALSE(pasted) << line;
    EXPECT_THAT(pasted.error().message.toStdString(), HasSubstr(complaint));
  }
  QMimeData plain;
  plain.setText(QStringLiteral("Component\tAttribute"));
  EXPECT_FALSE(KeyFrameClipboard::holdsKeyFrames(plain));
  QMimeData damaged;
  damaged.setData(KeyFrameClipboard::type(), QByteArray("bplist00 no"));
  EXPECT_FALSE(clipboard.paste(damaged));
}

TEST(AttributeWordsTest, ValuesAreReadAsTheyAreWritten) {
  using model::AttributeType;
  using model::AttributeWords;
  const foundation::Color colour{1, 0.2, 0, 0.4};
  for (const auto& [value, type] : QList<std::pair<AttributeValue, AttributeType>>{
           {AttributeValue(0.1), AttributeType::Number},
           {AttributeValue(-1e-7), AttributeType::Number},
           {AttributeValue(qint64{3}), AttributeType::Index},
           {AttributeValue(true), AttributeType::Boolean},
           {AttributeValue(colour), AttributeType::Color},
           {AttributeValue(QStringLiteral(" a text ")), AttributeType::String}})
    EXPECT_EQ(AttributeWords::valueFromText(value.description(), type), value)
        << value.description().toStdString();
  EXPECT_FALSE(AttributeWords::valueFromText(QStringLiteral("-1"), AttributeType::Index));
  EXPECT_FALSE(AttributeWords::valueFromText(QStringLiteral("inf"), AttributeType::Number));
}

}  // namespace document
