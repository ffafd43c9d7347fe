#include "cli/InputValues.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "runtime/StructureMember.h"

namespace {

using runtime::PortType;

tl::expected<runtime::Value, cli::LoadFailure> read(PortType type, const char* json,
                                                    const QStringList& menu = {}) {
  runtime::PortAttributes port;
  port.key = QStringLiteral("Key");
  port.type = type;
  port.menu = menu;
  const QJsonValue value = QJsonDocument::fromJson(QByteArray("[") + json + "]").array().at(0);
  return cli::InputValues::fromJson(value, port, QString());
}

TEST(InputValues, TakeWhatTheirPortsTake) {
  EXPECT_EQ(read(PortType::Number, "2.5")->toNumber(), 2.5);
  EXPECT_EQ(read(PortType::Number, "\"2.5\"")->toNumber(), 2.5);
  EXPECT_EQ(read(PortType::Index, "\"Over\"", {QStringLiteral("Replace"), QStringLiteral("Over")})
                ->toIndex(),
            1u);
  EXPECT_TRUE(read(PortType::Boolean, "\"on\"")->toBoolean());
  EXPECT_TRUE(read(PortType::Boolean, "1")->toBoolean());
  EXPECT_EQ(read(PortType::String, "3")->toString(), QStringLiteral("3"));
  EXPECT_EQ(read(PortType::Color, "\"#FF000080\"")->toColor().alpha, 128 / 255.0);
  EXPECT_EQ(read(PortType::Structure, "[1, 2]")->toStructure().members().size(), 2u);
  EXPECT_EQ(read(PortType::Structure, "\"{\\\"a\\\": 1}\"")->toStructure().members().size(), 1u);
  EXPECT_TRUE(read(PortType::Image, "\"\"")->isEmpty());
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
      {PortType::Structure, "4"},       {PortType::Interaction, "1"}};
  for (const auto& [type, json] : cases) {
    const auto value = read(type, json);
    ASSERT_FALSE(value) << json;
    EXPECT_EQ(value.error().status, cli::ExitStatus::Usage) << json;
    EXPECT_TRUE(value.error().error.message.contains(QStringLiteral("'Key' takes"))) << json;
  }
  EXPECT_EQ(read(PortType::Image, "\"not-there.png\"").error().status,
            cli::ExitStatus::InputUnreadable);
}

}  // namespace
