#include "preview/fields/FieldsModel.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QTemporaryDir>

#include "preview/fields/FieldGroups.h"

namespace preview {

namespace {

using runtime::PortAttributes;
using runtime::PortType;
using runtime::Value;
using testing::ElementsAre;
using testing::Pair;

PortAttributes port(const char* key, PortType type, const Value& usual) {
  PortAttributes made;
  made.key = QString::fromLatin1(key);
  made.label = QString(made.key).replace(u'_', u' ');
  made.type = type;
  made.defaultValue = usual;
  return made;
}

/// A model of a score board, and what it sent.
class FieldsModelTest : public testing::Test {
 protected:
  FieldsModelTest() {
    QObject::connect(&model, &FieldsModel::sending, &model,
                     [this](const QString& key, const Value& value) {
                       sent.emplace_back(key.toStdString(), value.toString().toStdString());
                     });
    score.minimum = 0;
    score.maximum = 99;
    model.setInputs({name, score, port("trigger", PortType::Boolean, false),
                     port("_time", PortType::Number, 0.0),
                     port("Live_videoInput", PortType::Image, Value()),
                     port("Shape", PortType::Mesh, Value())});
  }

  PortAttributes name = port("Home_Text", PortType::String, QStringLiteral("Harbour"));
  PortAttributes score = port("Home_Score", PortType::Number, 2.0);
  const QString nameKey = QStringLiteral("Home_Text");
  const QString scoreKey = QStringLiteral("Home_Score");
  FieldsModel model;
  std::vector<std::pair<std::string, std::string>> sent;
};

TEST_F(FieldsModelTest, OnlyWhatAnOperatorFillsInIsAFieldAndWhatFitsIsSentAtOnce) {
  ASSERT_EQ(model.fields().size(), 2U);
  EXPECT_TRUE(model.enter(nameKey, QStringLiteral("Northgate")));
  EXPECT_TRUE(model.enterText(scoreKey, QStringLiteral("3")));
  const auto refused = model.enterText(scoreKey, QStringLiteral("100"));
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error(), QStringLiteral("Takes a number from 0 to 99, not '100'."));
  EXPECT_FALSE(model.enter(nameKey, true));
  EXPECT_THAT(sent, ElementsAre(Pair("Home_Text", "Northgate"), Pair("Home_Score", "3")));
  EXPECT_EQ(model.pendingCount(), 0);
  // The default, typed or gone back to, is no value of its own.
  EXPECT_TRUE(model.enterText(scoreKey, QStringLiteral("2")));
  EXPECT_FALSE(model.field(scoreKey)->value);
  model.reset(nameKey);
  EXPECT_EQ(sent.back(), std::make_pair(std::string("Home_Text"), std::string("Harbour")));
  EXPECT_TRUE(model.filledIn().isEmpty());
}

TEST_F(FieldsModelTest, HeldChangesAreSentTogetherAndOnlyThose) {
  model.setHoldsChanges(true);
  (void)model.enter(nameKey, QStringLiteral("Northgate"));
  (void)model.enter(scoreKey, 5);
  EXPECT_TRUE(sent.empty());
  EXPECT_EQ(model.pendingCount(), 2);
  // A file that is loaded meanwhile gets what was sent.
  EXPECT_TRUE(model.sentValues().empty());
  (void)model.enter(scoreKey, 2);
  EXPECT_EQ(model.pendingCount(), 1);
  model.update();
  EXPECT_THAT(sent, ElementsAre(Pair("Home_Text", "Northgate")));
  ASSERT_EQ(model.sentValues().size(), 1U);
  // Taking it back is a change to be held as well.
  model.reset(nameKey);
  EXPECT_EQ(model.pendingCount(), 1);
  EXPECT_EQ(sent.size(), 1U);
  (void)model.enter(scoreKey, 7);
  model.resetAll();
  EXPECT_EQ(model.pendingCount(), 0);
  EXPECT_THAT(sent, testing::Contains(Pair("Home_Text", "Harbour")));
  EXPECT_THAT(sent, testing::Contains(Pair("Home_Score", "2")));
  EXPECT_TRUE(model.sentValues().empty());
}

TEST_F(FieldsModelTest, ValuesComeBackWithTheirKeyAndTypeAndFollowTheFileOtherwise) {
  int rebuilt = 0;
  QObject::connect(&model, &FieldsModel::fieldsChanged, &model, [&rebuilt] { ++rebuilt; });
  (void)model.enter(scoreKey, 50);
  name.defaultValue = QStringLiteral("Harbour City");
  model.setInputs({name, score});
  EXPECT_EQ(rebuilt, 0);
  EXPECT_EQ(model.field(nameKey)->current().toString(), QStringLiteral("Harbour City"));
  EXPECT_EQ(model.field(scoreKey)->current().toNumber(), 50);
  model.setInputs({name});
  EXPECT_EQ(rebuilt, 1);
  EXPECT_EQ(model.field(scoreKey), nullptr);
  score.maximum = 20;
  model.setInputs({name, score});
  EXPECT_FALSE(model.field(scoreKey)->value);
  model.setInputs({name, port("Home_Score", PortType::String, QString())});
  EXPECT_FALSE(model.field(scoreKey)->value);
  score.maximum = 99;
  model.setInputs({name, score});
  EXPECT_EQ(model.field(scoreKey)->current().toNumber(), 50);
  EXPECT_TRUE(sent.size() == 1);
}

TEST_F(FieldsModelTest, AFillTakesWhatFitsAndTellsTheRest) {
  (void)model.enter(scoreKey, 50);
  const QStringList wrong = model.fill(
      {{nameKey, QStringLiteral("Northgate")}, {QStringLiteral("Away_Text"), QString()}}, {}, {});
  EXPECT_EQ(wrong, QStringList{QStringLiteral("Away_Text: There is no field “Away_Text”.")});
  EXPECT_EQ(model.filledIn(),
            (QJsonObject{{nameKey, QStringLiteral("Northgate")}, {scoreKey, 50}}));
  (void)model.fill({{nameKey, QStringLiteral("Quay")}}, {}, model.keys());
  EXPECT_EQ(model.filledIn(), (QJsonObject{{nameKey, QStringLiteral("Quay")}}));
}

TEST_F(FieldsModelTest, PicturesAreKeptByTheirWholePath) {
  const QTemporaryDir folder;
  QImage logo(4, 3, QImage::Format_RGB32);
  logo.fill(Qt::red);
  ASSERT_TRUE(logo.save(folder.filePath(QStringLiteral("logo.png"))));
  model.setInputs({port("Logo", PortType::Image, Value())});
  const QString key = QStringLiteral("Logo");
  EXPECT_TRUE(model.enter(key, QStringLiteral("logo.png"), folder.path()));
  EXPECT_EQ(model.filledIn().value(key).toString(), folder.filePath(QStringLiteral("logo.png")));
  EXPECT_EQ(model.field(key)->current().toImage().size(), QSize(4, 3));
  const auto missing = model.enter(key, QStringLiteral("none.png"), folder.path());
  ASSERT_FALSE(missing);
  EXPECT_TRUE(missing.error().contains(QStringLiteral("none.png")))
      << missing.error().toStdString();
}

TEST(FieldGroups, FollowTheComponentsAndGatherBareSwitches) {
  std::vector<Field> fields;
  const auto add = [&](const char* key, const char* label, PortType type) {
    Field field{port(key, type, Value())};
    field.port.label = QString::fromLatin1(label);
    fields.push_back(field);
  };
  add("clear_enable", "Enable Clear", PortType::Boolean);
  add("Bar_Enable", "Bar Enable", PortType::Boolean);
  add("Home_Text", "Home Text", PortType::String);
  add("Home_Enable", "Home Enable", PortType::Boolean);
  add("Home_score_Font_Size", "Home score Font_Size", PortType::Number);
  add("Home_score_Line_1", "Home score Line_1", PortType::String);
  add("Home_score_Enable", "Home score Enable", PortType::Boolean);
  add("Home_Text_1", "Home Text 1", PortType::String);
  add("Home_Enable_1", "Home Enable", PortType::Boolean);
  QStringList lines;
  for (const FieldGroup& group : FieldGroups::of(fields)) {
    QStringList titles;
    for (const auto& member : group.members) titles += member.title;
    lines += group.title + QStringLiteral(": ") + titles.join(QStringLiteral(", "));
  }
  EXPECT_EQ(lines, (QStringList{QStringLiteral("Home: Text, Enable"),
                                QStringLiteral("Home score: Font Size, Line 1, Enable"),
                                QStringLiteral("Home (2): Text, Enable"),
                                QStringLiteral("Visibility: Enable Clear, Bar")}))
      << lines.join(u'\n').toStdString();
}

}  // namespace

}  // namespace preview
