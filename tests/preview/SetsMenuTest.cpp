#include "preview/fields/SetsMenu.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include "document/CompositionDocument.h"
#include "preview/fields/FieldsModel.h"

namespace preview {

namespace {

using document::CompositionDocument;
using runtime::PortType;

/// A saved document with sets, and a field for a name and one for a score.
class SetsMenuTest : public testing::Test {
 protected:
  SetsMenuTest() {
    document->emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("SD PAL")));
    EXPECT_TRUE(document->saveToURL(
        QUrl::fromLocalFile(folder.filePath(QStringLiteral("board.composition"))),
        document::SaveOperation::SaveAs));
    runtime::PortAttributes name;
    name.key = QStringLiteral("Name");
    name.type = PortType::String;
    name.defaultValue = QStringLiteral("Harbour");
    runtime::PortAttributes score;
    score.key = QStringLiteral("Score");
    score.type = PortType::Number;
    score.defaultValue = 2.0;
    model.setInputs({name, score});
    menu.setDocument(document.get());
    menu.resize(340, 40);
    menu.show();
  }

  [[nodiscard]] QComboBox& list() const { return *menu.findChild<QComboBox*>(); }
  [[nodiscard]] QString shown() const {
    return list().currentIndex() < 0 ? list().placeholderText() : list().currentText();
  }
  [[nodiscard]] QAction& action(const char* text) const {
    for (QAction* action : menu.findChild<QMenu*>()->actions())
      if (action->text().startsWith(QLatin1String(text))) return *action;
    throw std::runtime_error(std::string("no action ") + text);
  }
  void name(const char* command, const QString& text) {
    action(command).trigger();
    auto& field = *menu.findChild<QLineEdit*>();
    ASSERT_TRUE(field.isVisible());
    field.setText(text);
    QTest::keyClick(&field, Qt::Key_Return);
  }
  [[nodiscard]] QString value(const char* key) const {
    return model.field(QString::fromLatin1(key))->current().toString();
  }
  void enter(const QString& name, const QString& score) {
    EXPECT_TRUE(model.enter(QStringLiteral("Name"), name));
    EXPECT_TRUE(model.enterText(QStringLiteral("Score"), score));
    QTest::qWait(5);
  }

  QTemporaryDir folder;
  std::unique_ptr<CompositionDocument> document = std::make_unique<CompositionDocument>();
  FieldsModel model;
  SetsMenu menu{model};
};

TEST_F(SetsMenuTest, WhatIsFilledInIsKeptUnderANameAndComesBackWhole) {
  EXPECT_EQ(shown(), QStringLiteral("Values of the File"));
  enter(QStringLiteral("Northgate"), QStringLiteral("5"));
  EXPECT_EQ(shown(), QStringLiteral("Own Values"));
  name("Save", QStringLiteral("Evening"));
  EXPECT_EQ(shown(), QStringLiteral("Evening"));
  enter(QStringLiteral("Quay"), QStringLiteral("2"));
  EXPECT_EQ(shown(), QStringLiteral("Evening, Changed"));
  name("Save", QStringLiteral("Morning"));
  CompositionDocument again;
  const auto read = again.readFromURL(document->fileURL());
  ASSERT_TRUE(read) << read.error().text().toStdString();
  EXPECT_EQ(again.valueSets().names(),
            (QStringList{QStringLiteral("Evening"), QStringLiteral("Morning")}));
  EXPECT_EQ(again.valueSets().named(QStringLiteral("Morning"))->values,
            (QJsonObject{{QStringLiteral("Name"), QStringLiteral("Quay")}}));
  menu.choose(QStringLiteral("Evening"));
  EXPECT_EQ(value("Score"), QStringLiteral("5"));
  menu.choose(QStringLiteral("Morning"));
  // What a set does not name is the file's.
  EXPECT_EQ(value("Score"), QStringLiteral("2"));
  EXPECT_EQ(value("Name"), QStringLiteral("Quay"));
  menu.choose({});
  EXPECT_EQ(value("Name"), QStringLiteral("Harbour"));
}

TEST_F(SetsMenuTest, SetsAreReplacedRenamedRemovedAndShownInThumbnails) {
  EXPECT_FALSE(action("Replace").isEnabled());
  enter(QStringLiteral("Northgate"), QStringLiteral("5"));
  name("Save", QStringLiteral("Evening"));
  enter(QStringLiteral("Northgate"), QStringLiteral("6"));
  action("Replace").trigger();
  EXPECT_EQ(shown(), QStringLiteral("Evening"));
  name("Save", QStringLiteral("Evening"));
  // The name is taken: the field stays for another one.
  auto& field = *menu.findChild<QLineEdit*>();
  EXPECT_TRUE(field.isVisible());
  EXPECT_TRUE(field.property("invalid").toBool());
  QTest::keyClick(&field, Qt::Key_Escape);
  EXPECT_FALSE(field.isVisible());
  name("Rename", QStringLiteral("Late"));
  action("Use for").trigger();
  const playout::ValueSets& sets = document->valueSets();
  EXPECT_EQ(sets.names(), QStringList{QStringLiteral("Late")});
  EXPECT_EQ(sets.thumbnailName(), QStringLiteral("Late"));
  EXPECT_EQ(sets.named(QStringLiteral("Late"))->values.value(QStringLiteral("Score")), 6);
  action("Remove").trigger();
  EXPECT_TRUE(document->valueSets().isEmpty());
  EXPECT_EQ(shown(), QStringLiteral("Own Values"));
}

TEST_F(SetsMenuTest, PicturesAreTheDocumentsOnceTheyAreKept) {
  runtime::PortAttributes logo;
  logo.key = QStringLiteral("Logo");
  logo.type = PortType::Image;
  model.setInputs({logo});
  const QString path = folder.filePath(QStringLiteral("logo.png"));
  QImage picture(4, 3, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(path));
  EXPECT_TRUE(model.enter(logo.key, path));
  name("Save", QStringLiteral("Evening"));
  EXPECT_EQ(document->valueSets().named(QStringLiteral("Evening"))->values.value(logo.key),
            QStringLiteral("logo.png"));
  EXPECT_EQ(shown(), QStringLiteral("Evening"));
  // The chosen file is not needed any more, neither for choosing nor for keeping again.
  ASSERT_TRUE(QFile::remove(path));
  name("Save", QStringLiteral("Morning"));
  EXPECT_EQ(document->valueSets().named(QStringLiteral("Morning"))->values.value(logo.key),
            QStringLiteral("logo.png"));
  menu.choose({});
  menu.choose(QStringLiteral("Evening"));
  EXPECT_EQ(model.field(logo.key)->current().toImage().size(), QSize(4, 3));
  EXPECT_EQ(shown(), QStringLiteral("Evening"));
}

TEST_F(SetsMenuTest, AfterTheDocumentWasClosedSetsCanOnlyBeChosen) {
  enter(QStringLiteral("Northgate"), QStringLiteral("5"));
  name("Save", QStringLiteral("Evening"));
  menu.choose({});
  menu.documentWillClose();
  document.reset();
  menu.choose(QStringLiteral("Evening"));
  EXPECT_EQ(value("Score"), QStringLiteral("5"));
  for (const char* text : {"Save", "Replace", "Rename", "Remove", "Use for"}) {
    EXPECT_FALSE(action(text).isEnabled());
    EXPECT_TRUE(action(text).toolTip().contains(QStringLiteral("closed")));
  }
}

}  // namespace

}  // namespace preview
