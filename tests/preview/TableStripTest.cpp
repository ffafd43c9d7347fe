#include "preview/fields/TableStrip.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include "foundation/UserDefaults.h"
#include "preview/fields/FieldsModel.h"

namespace preview {

namespace {

using runtime::PortType;

/// A strip over fields for a name and a score, and files to open.
class TableStripTest : public testing::Test {
 protected:
  TableStripTest() {
    runtime::PortAttributes name;
    name.key = QStringLiteral("Home_Text");
    name.label = QStringLiteral("Home Text");
    name.type = PortType::String;
    runtime::PortAttributes score;
    score.key = QStringLiteral("Score");
    score.type = PortType::Number;
    score.maximum = 99;
    score.defaultValue = 1.0;
    runtime::PortAttributes clock;
    clock.key = QStringLiteral("Clock");
    clock.type = PortType::String;
    model.setInputs({name, score, clock});
    strip.resize(340, 100);
    strip.show();
  }

  QString file(const char* name, const QByteArray& content) {
    const QString path = folder.filePath(QString::fromLatin1(name));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return path;
  }
  [[nodiscard]] QToolButton& button(const char* name) const {
    for (auto* button : strip.findChildren<QToolButton*>())
      if (button->accessibleName() == QLatin1String(name)) return *button;
    throw std::runtime_error(std::string("no button ") + name);
  }
  [[nodiscard]] QString value(const char* key) const {
    return model.field(QString::fromLatin1(key))->current().toString();
  }

  QTemporaryDir folder;
  FieldsModel model;
  TableStrip strip{model};
};

TEST_F(TableStripTest, RowsFillInWhatTheirColumnsNameAndTellTheRest) {
  (void)model.enter(QStringLiteral("Score"), 7);
  strip.openTable(file("games.csv", "Home Text,Score,Referee\nHarbour,3,Ada\nQuay,100,Bo\n"));
  ASSERT_TRUE(strip.isOpen());
  EXPECT_EQ(strip.findChild<QComboBox*>()->count(), 2);
  // Nothing happens before a row is chosen.
  EXPECT_EQ(value("Home_Text"), QString());
  EXPECT_FALSE(button("Previous Row").isEnabled());
  QTest::mouseClick(&button("Next Row"), Qt::LeftButton);
  EXPECT_EQ(value("Home_Text"), QStringLiteral("Harbour"));
  EXPECT_EQ(value("Score"), QStringLiteral("3"));
  EXPECT_EQ(strip.problems(), QStringLiteral("Columns without a field: Referee"));
  QTest::mouseClick(&button("Next Row"), Qt::LeftButton);
  EXPECT_EQ(value("Home_Text"), QStringLiteral("Quay"));
  EXPECT_EQ(value("Score"), QStringLiteral("1"));
  EXPECT_TRUE(strip.problems().contains(QStringLiteral("row 2"))) << strip.problems().toStdString();
  EXPECT_FALSE(button("Next Row").isEnabled());
  // With held changes the row waits like anything else.
  model.setHoldsChanges(true);
  QTest::mouseClick(&button("Previous Row"), Qt::LeftButton);
  EXPECT_EQ(model.pendingCount(), 2);
  EXPECT_EQ(model.field(QStringLiteral("Home_Text"))->sent->value.toString(),
            QStringLiteral("Quay"));
}

TEST_F(TableStripTest, ARowLeavesNothingOfAnotherRowInTheFieldsOfTheTable) {
  (void)model.enterText(QStringLiteral("Clock"), QStringLiteral("19:30"));
  strip.openTable(file("games.csv", "Home Text,Score\nHarbour,3\nQuay,\nPier,many\nMole,4\nEnd\n"));
  for (const char* score : {"3", "1", "1", "4", "1"}) {
    strip.goTo(strip.row() + 1);
    EXPECT_EQ(value("Score"), QLatin1String(score)) << strip.row();
    EXPECT_EQ(strip.problems().isEmpty(), strip.row() != 2) << strip.problems().toStdString();
  }
  EXPECT_EQ(value("Home_Text"), QStringLiteral("End"));
  EXPECT_EQ(value("Clock"), QStringLiteral("19:30")) << "the table has no column for it";
}

TEST_F(TableStripTest, TheFirstTableIsLookedForBesideTheDocument) {
  auto& defaults = foundation::UserDefaults::standard();
  defaults.setValue(QString(), QStringLiteral("previewTable"));
  EXPECT_EQ(strip.startPath(), QDir::homePath());
  strip.setDocumentPath([this] { return folder.filePath(QStringLiteral("a.composition")); });
  EXPECT_EQ(strip.startPath(), folder.path());
  const QString path = file("games.csv", "Score\n3\n");
  strip.openTable(path);
  EXPECT_EQ(strip.startPath(), path);
  QFile::remove(path);
  EXPECT_EQ(strip.startPath(), folder.path());
}

TEST_F(TableStripTest, AChangedFileIsReadAgainOnDemandAndADamagedOneLeavesWhatThereWas) {
  const QString path = file("games.json", R"([{"Score": 1}, {"Score": 2}])");
  strip.openTable(path);
  strip.goTo(1);
  EXPECT_EQ(value("Score"), QStringLiteral("2"));
  file("games.json", R"([{"Score": 5}])");
  EXPECT_TRUE(QTest::qWaitFor(
      [this] { return strip.problems().contains(QStringLiteral("Reload Table")); }, 5000));
  EXPECT_EQ(value("Score"), QStringLiteral("2"));
  QTest::mouseClick(&button("Reload Table"), Qt::LeftButton);
  EXPECT_EQ(strip.row(), -1);
  EXPECT_EQ(strip.problems(), QString());
  file("games.json", "[{");
  strip.reload();
  EXPECT_TRUE(strip.problems().contains(QStringLiteral("games.json")));
  strip.goTo(0);
  EXPECT_EQ(value("Score"), QStringLiteral("5"));
  strip.close();
  EXPECT_FALSE(strip.isOpen());
  EXPECT_EQ(strip.problems(), QString());
}

}  // namespace

}  // namespace preview
