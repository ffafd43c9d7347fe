#include "model/RichFontValue.h"

#include <gtest/gtest.h>

#include "ComponentFiles.h"
#include "foundation/archive/KeyedArchive.h"
#include "runtime/CompositionRenderer.h"

namespace model {

using foundation::ArchiveDictionary;
using foundation::ArchiveObject;
using foundation::ArchiveValue;
using foundation::Color;
using foundation::KeyedArchive;

namespace {

const Color red{1, 0, 0, 1};
const Color blue{0, 0, 1, 0.5};

QString key(const char* suffix) {
  return QStringLiteral("Head_Rich_Font_") + QLatin1String(suffix);
}

RichFontValue styledFont() {
  return {QStringLiteral("Head_%@"),
          {{key("Name"), QStringLiteral("Inter-Bold")},
           {key("Size"), 0.1},
           {key("Color"), red},
           {key("Use_Shadow"), 1.0},
           {key("Shadow_Blur_Radius"), 4.0},
           {key("Shadow_Offset_X"), 2.0},
           {key("Shadow_Offset_Y"), -3.0},
           {key("Underline_Style"), qint64(0x201)},
           {key("Underline_Color"), blue},
           {key("Strikethrough_Style"), qint64(0)}}};
}

}  // namespace

TEST(RichFontValue, TakesItsGroupFromTheRenderer) {
  ComponentFiles files;
  const QString path = files.writeComponent(
      QStringLiteral("rich.qtz"),
      {{key("Name"), QStringLiteral("QCStringPort"), QStringLiteral("Inter"), {}},
       {key("Size"), QStringLiteral("QCNumberPort"), 40.0, {}},
       {key("Shadow_Blur_Radius"), QStringLiteral("QCNumberPort"), 7.0, {}},
       {QStringLiteral("Rich_Font_Size"), QStringLiteral("QCNumberPort"), 1.0, {}}});
  const auto graphic = emptyGraphic();
  QStringList warnings;
  QuartzComponent* component = graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
  ASSERT_NE(component, nullptr) << warnings.join(u' ').toStdString();
  const RichFontValue font(key("Name"), *component->renderer());
  EXPECT_EQ(font.keyPattern(), QStringLiteral("Head_%@"));
  EXPECT_EQ(font.font(), (FontValue{QStringLiteral("Inter"), 40}));
  EXPECT_EQ(font.valueForInputKey(QStringLiteral("Rich_Font_Shadow_Blur_Radius")),
            AttributeValue(7.0));
  EXPECT_EQ(font.renderAttributes().size(), 3);
}

TEST(RichFontValue, TellsItsTextAttributes) {
  const TextAttributes attributes = styledFont().textAttributes();
  EXPECT_EQ(attributes.foreground, red);
  EXPECT_EQ(attributes.shadow, (TextAttributes::Shadow{{2, -3}, 4}));
  EXPECT_EQ(attributes.underline, (TextAttributes::Line{0x201, blue}));
  EXPECT_EQ(attributes.strikethrough, (TextAttributes::Line{0, {}}));
  EXPECT_EQ(RichFontValue(QStringLiteral("%@"), {}).textAttributes(), TextAttributes());
  EXPECT_EQ(styledFont().font().size, static_cast<double>(0.1f));
}

TEST(RichFontValue, OnlyAShadowFlagOfOneIsOn) {
  RichFontValue font = styledFont();
  const auto hasShadow = [&](const AttributeValue& flag) {
    font.setValueForFullKey(flag, key("Use_Shadow"));
    return font.textAttributes().shadow.has_value();
  };
  EXPECT_TRUE(hasShadow(1.9));
  EXPECT_TRUE(hasShadow(true));
  EXPECT_FALSE(hasShadow(2.0));
  EXPECT_FALSE(hasShadow(0.9));
  EXPECT_FALSE(hasShadow(1e300));
  EXPECT_FALSE(hasShadow({}));
}

TEST(RichFontValue, KeepsWhatTheAttributesLeaveOut) {
  RichFontValue font = styledFont();
  font.setTextAttributes({});
  RichFontValue expected = styledFont();
  expected.setValueForFullKey(0.0, key("Use_Shadow"));
  expected.setValueForFullKey(qint64(0), key("Underline_Style"));
  EXPECT_EQ(font, expected);  // radius, offsets and colours stay
}

TEST(RichFontValue, TakesTextAttributesBack) {
  RichFontValue font(QStringLiteral("Head_%@"), {});
  TextAttributes attributes;
  attributes.foreground = blue;
  attributes.shadow = TextAttributes::Shadow{{0.1, 2}, 3};
  attributes.underline = TextAttributes::Line{9, red};
  attributes.strikethrough = TextAttributes::Line{1, {}};
  font.setTextAttributes(attributes);
  EXPECT_EQ(font.valueForInputKey(QStringLiteral("Rich_Font_Shadow_Offset_X")),
            AttributeValue(static_cast<double>(0.1f)));
  attributes.shadow->offset.setWidth(static_cast<double>(0.1f));
  EXPECT_EQ(font.textAttributes(), attributes);
  EXPECT_FALSE(font.contains(key("Strikethrough_Color")));
}

TEST(RichFontValue, SurvivesTheArchive) {
  const RichFontValue font = styledFont();
  const QByteArray bytes = KeyedArchive::write(font.archiveValue()).value();
  const auto back = RichFontValue::fromArchiveValue(KeyedArchive::read(bytes).value());
  ASSERT_TRUE(back) << back.error().text().toStdString();
  EXPECT_EQ(*back, font);
}

TEST(RichFontValue, RefusesOtherArchivedObjects) {
  const auto refused = [](const ArchiveValue& value) {
    return !RichFontValue::fromArchiveValue(value);
  };
  EXPECT_TRUE(refused({}));
  EXPECT_TRUE(refused(ArchiveObject{QStringLiteral("Other"), {}}));
  EXPECT_TRUE(refused(ArchiveObject{QStringLiteral("RichFontValue"), {}}));
  EXPECT_TRUE(refused(ArchiveObject{QStringLiteral("RichFontValue"),
                                    {{QStringLiteral("keyPattern"), QStringLiteral("%@")}}}));
}

TEST(TextAttributes, ShowAsFarAsQtTextCan) {
  const QTextCharFormat format = styledFont().textAttributes().charFormat();
  EXPECT_EQ(format.foreground().color(), QColor(255, 0, 0));
  EXPECT_EQ(format.underlineStyle(), QTextCharFormat::DashUnderline);
  EXPECT_EQ(format.underlineColor(), blue.toQColor());
  EXPECT_TRUE(format.hasProperty(QTextFormat::FontStrikeOut));
  EXPECT_FALSE(format.fontStrikeOut());
  EXPECT_EQ(TextAttributes().charFormat(), QTextCharFormat());
  for (const qint64 style : {0x000, 0x001, 0x101, 0x201, 0x301, 0x401}) {
    TextAttributes attributes;
    attributes.underline = TextAttributes::Line{style, red};
    attributes.strikethrough = TextAttributes::Line{style & 1, {}};
    attributes.foreground = red;
    EXPECT_EQ(TextAttributes::fromCharFormat(attributes.charFormat()), attributes);
  }
}

}  // namespace model
