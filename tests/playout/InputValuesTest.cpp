#include "playout/InputValues.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "runtime/StructureMember.h"

namespace {

using runtime::PortType;

tl::expected<runtime::Value, playout::ValueFailure> read(PortType type, const char* json,
                                                         const QStringList& menu = {}) {
  runtime::PortAttributes port;
  port.key = QStringLiteral("Key");
  port.type = type;
  port.menu = menu;
  const QJsonValue value = QJsonDocument::fromJson(QByteArray("[") + json + "]").array().at(0);
  return playout::InputValues::fromJson(value, port, QString());
}

tl::expected<runtime::Value, playout::ValueFailure> readText(PortType type, const char* text) {
  runtime::PortAttributes port;
  port.key = QStringLiteral("Key");
  port.type = type;
  if (type == PortType::Index) {
    port.menu = QStringList{QStringLiteral("Replace"), QStringLiteral("2"), QStringLiteral("Over")};
    port.maximum = 2;
  }
  return playout::InputValues::fromText(QString::fromLatin1(text), port, QString());
}

TEST(InputValues, TakeWhatTheirPortsTake) {
  EXPECT_EQ(read(PortType::Number, "2.5")->toNumber(), 2.5);
  EXPECT_EQ(read(PortType::Index, "\"Over\"", {QStringLiteral("Replace"), QStringLiteral("Over")})
                ->toIndex(),
            1u);
  EXPECT_TRUE(read(PortType::Boolean, "true")->toBoolean());
  EXPECT_EQ(read(PortType::String, "3")->toString(), QStringLiteral("3"));
  EXPECT_EQ(read(PortType::Color, "\"#FF000080\"")->toColor().alpha, 128 / 255.0);
  EXPECT_EQ(read(PortType::Structure, "[1, 2]")->toStructure().members().size(), 2u);
  EXPECT_TRUE(read(PortType::Image, "\"\"")->isEmpty());
}

TEST(InputValues, TextsStandForValues) {
  EXPECT_EQ(readText(PortType::Number, "-2.5")->toNumber(), -2.5);
  EXPECT_EQ(readText(PortType::Index, "Over")->toIndex(), 2u);
  EXPECT_EQ(readText(PortType::Index, "1")->toIndex(), 1u);
  EXPECT_EQ(readText(PortType::Index, "2")->toIndex(), 1u);  // a title goes before a number
  for (const char* yes : {"1", "true", "Yes", "ON"})
    EXPECT_TRUE(readText(PortType::Boolean, yes)->toBoolean()) << yes;
  for (const char* no : {"0", "False", "no", "off"})
    EXPECT_FALSE(readText(PortType::Boolean, no)->toBoolean()) << no;
  EXPECT_EQ(readText(PortType::String, "3.50")->toString(), QStringLiteral("3.50"));
  EXPECT_EQ(readText(PortType::Structure, "[1, 2]")->toStructure().members().size(), 2u);
  EXPECT_EQ(readText(PortType::Structure, "{\"a\": 1}")->toStructure().members().size(), 1u);
  const std::pair<PortType, const char*> wrong[] = {
      {PortType::Number, "two"}, {PortType::Number, "inf"},      {PortType::Number, "nan"},
      {PortType::Number, ""},    {PortType::Index, "over"},      {PortType::Index, "3"},
      {PortType::Index, "-1"},   {PortType::Boolean, "2"},       {PortType::Boolean, ""},
      {PortType::Color, "red"},  {PortType::Structure, "[1, 2"}, {PortType::Structure, "4"}};
  for (const auto& [type, text] : wrong) {
    const auto value = readText(type, text);
    ASSERT_FALSE(value) << text;
    EXPECT_EQ(value.error().kind, playout::ValueFailure::Kind::Wrong) << text;
  }
}

TEST(InputValues, RefuseWhatTheirPortsDoNotTake) {
  const std::pair<PortType, const char*> cases[] = {
      {PortType::String, "[1]"},        {PortType::String, "{\"a\": 1}"},
      {PortType::String, "null"},       {PortType::String, "true"},
      {PortType::Number, "true"},       {PortType::Number, "null"},
      {PortType::Number, "\"two\""},    {PortType::Number, "[2]"},
      {PortType::Index, "1.5"},         {PortType::Index, "-1"},
      {PortType::Index, "true"},        {PortType::Boolean, "2"},
      {PortType::Boolean, "null"},      {PortType::Color, "5"},
      {PortType::Color, "\"red\""},     {PortType::Color, "\"#12345\""},
      {PortType::Color, "\"#12#456\""}, {PortType::Image, "1"},
      {PortType::Image, "[\"a\"]"},     {PortType::Structure, "\"a\""},
      {PortType::Structure, "4"},       {PortType::Interaction, "1"},
      {PortType::Number, "\"2.5\""},    {PortType::Boolean, "\"on\""},
      {PortType::Boolean, "1"},         {PortType::Structure, "\"[1]\""}};
  for (const auto& [type, json] : cases) {
    const auto value = read(type, json);
    ASSERT_FALSE(value) << json;
    EXPECT_EQ(value.error().kind, playout::ValueFailure::Kind::Wrong) << json;
    EXPECT_TRUE(value.error().error.message.contains(QStringLiteral("'Key' takes"))) << json;
  }
  EXPECT_EQ(read(PortType::Image, "\"not-there.png\"").error().kind,
            playout::ValueFailure::Kind::Unreadable);
}

}  // namespace
