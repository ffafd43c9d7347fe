#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>

#include "inspector/FontPanel.h"
#include "inspector/InspectorFixture.h"
#include "inspector/TYTextPanel.h"
#include "model/RFTValueTransformer.h"
#include "widgets/TYImageWell.h"

namespace inspector {

using model::AttributeType;
using model::AttributeValue;
using model::FontValue;

namespace {

QString q(const char* latin) {
  return QString::fromLatin1(latin);
}

class PanelsTest : public InspectorFixture {
 protected:
  [[nodiscard]] TYTextPanel* textPanel() const { return panel.findChild<TYTextPanel*>(); }
  [[nodiscard]] FontPanel* fontPanel() const { return panel.findChild<FontPanel*>(); }
  void press(QWidget* in, const QString& title) {
    for (QPushButton* button : in->findChildren<QPushButton*>())
      if (button->isVisible() && button->text() == title) {
        QTest::mouseClick(button, Qt::LeftButton);
        settle();
        return;
      }
    ADD_FAILURE() << "no button " << title.toStdString();
  }
};

}  // namespace

TEST_F(PanelsTest, TheTextPanelWritesAtEveryChangeAndCancelTakesItBack) {
  auto* component = add(q("Strap"));
  auto* text = give(component, q("Text"), AttributeType::String, q("One"));
  select({component});
  press(row(q("Text")), q("Edit..."));
  ASSERT_TRUE(textPanel());
  auto* view = textPanel()->findChild<QPlainTextEdit*>();
  EXPECT_EQ(textPanel()->stringValue(), q("One"));
  QTest::keyClick(view, Qt::Key_Return);
  QTest::keyClicks(view, q("Two"));
  EXPECT_EQ(text->currentValue(), AttributeValue(q("One\nTwo")));
  QApplication::clipboard()->setText(QString(10 << 20, u'x'));
  QTest::keyClick(view, Qt::Key_V, Qt::ControlModifier);
  QApplication::clipboard()->clear();
  EXPECT_EQ(textPanel()->stringValue(), q("One\nTwo"));
  press(textPanel(), q("Cancel"));
  EXPECT_EQ(text->currentValue(), AttributeValue(q("One")));
  EXPECT_EQ(steps(), 0);

  press(row(q("Text")), q("Edit..."));
  QTest::keyClicks(textPanel()->findChild<QPlainTextEdit*>(), q("!?"));
  press(textPanel(), q("Ok"));
  EXPECT_EQ(text->currentValue(), AttributeValue(q("One!?")));
  EXPECT_EQ(steps(), 1);
  EXPECT_EQ(undoName(), q("Change Text"));
}

TEST_F(PanelsTest, FontsAreTypedChosenAndReplacedEverywhere) {
  auto* first = add(q("First"));
  auto* second = add(q("Second"));
  auto* here = give(first, q("Font"), AttributeType::Font, FontValue{q("Quay-Condensed"), 40});
  auto* there = give(second, q("Other"), AttributeType::Font, FontValue{q("Quay-Condensed"), 20});
  select({first});
  auto* field = control<QLineEdit>(q("Font"));
  EXPECT_EQ(field->text(), q("Quay-Condensed, 40"));
  EXPECT_THAT(row(q("Font"))->complaint().toStdString(), testing::HasSubstr("not installed"));

  type(field, q("No Such Font"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(here->currentValue(), AttributeValue(FontValue{q("Quay-Condensed"), 40}));
  EXPECT_EQ(steps(), 0);
  settle();
  select({});
  select({first});

  press(row(q("Font")), QStringLiteral("Replace…"));
  ASSERT_TRUE(fontPanel());
  auto* families = fontPanel()->findChild<QListView*>(QString(), Qt::FindDirectChildrenOnly);
  type(fontPanel()->findChild<QLineEdit*>(), q("DejaVu Sans Mono"));
  const QModelIndex mono = families->model()->index(0, 0);
  if (!mono.isValid()) GTEST_SKIP() << "DejaVu Sans Mono is not installed";
  QTest::mouseClick(families->viewport(), Qt::LeftButton, {}, families->visualRect(mono).center());
  settle();
  const QString chosen = here->currentValue().as<FontValue>()->name;
  EXPECT_TRUE(chosen.startsWith(q("DejaVuSansMono"))) << chosen.toStdString();
  EXPECT_EQ(here->currentValue().as<FontValue>()->size, 40);
  EXPECT_EQ(there->currentValue(), AttributeValue(FontValue{chosen, 20}));
  EXPECT_EQ(steps(), 1);
  EXPECT_TRUE(row(q("Font"))->complaint().isEmpty());
  auto* faces = fontPanel()->findChild<QListWidget*>();
  faces->setFocus();
  QTest::keyClick(faces, Qt::Key_Down);
  EXPECT_EQ(steps(), 1) << "choosing on is the same step";
  EXPECT_EQ(undoName(), q("Replace Font"));
}

TEST_F(PanelsTest, OfSeveralFontsOnlyWhatWasChosenChanges) {
  auto* first = add(q("First"));
  auto* second = add(q("Second"));
  auto* here = give(first, q("Font"), AttributeType::Font, FontValue{q("Inter"), 40});
  auto* there = give(second, q("Font"), AttributeType::Font, FontValue{q("Inter Bold"), 20});
  select({first, second});
  auto* field = control<QLineEdit>(q("Font"));
  type(field, q("Inter SemiBold"));
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(here->currentValue(), AttributeValue(FontValue{q("Inter SemiBold"), 40}));
  EXPECT_EQ(there->currentValue(), AttributeValue(FontValue{q("Inter SemiBold"), 20}));
  press(row(q("Font")), q("Choose..."));
  ASSERT_TRUE(fontPanel() && fontPanel()->isVisible());
  QTest::keyClick(fontPanel(), Qt::Key_Escape);
  EXPECT_FALSE(fontPanel() && fontPanel()->isVisible());
}

TEST_F(PanelsTest, FilesAreChosenInADialogAndFoundAgainForAll) {
  auto* first = add(q("First"));
  auto* second = add(q("Second"));
  auto* here = give(first, q("File"), AttributeType::File, q("/nowhere/bridge.mov"));
  auto* there = give(second, q("Other"), AttributeType::File, q("/nowhere/bridge.mov"));
  select({first});
  const QString found = files.writeComponent(q("found.qtz"), {});
  const QString chosen = files.writeComponent(q("chosen.qtz"), {});
  const auto answer = [](const QString& path) {
    settle();
    QFileDialog* dialog = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* open = qobject_cast<QFileDialog*>(window); open && open->isVisible()) dialog = open;
    ASSERT_TRUE(dialog);
    type(dialog->findChild<QLineEdit*>(q("fileNameEdit")), path);
    QTest::keyClick(dialog->findChild<QLineEdit*>(q("fileNameEdit")), Qt::Key_Return);
    settle();
  };
  press(row(q("File")), QStringLiteral("Locate…"));
  answer(found);
  EXPECT_EQ(here->currentValue(), AttributeValue(found));
  EXPECT_EQ(there->currentValue(), AttributeValue(found)) << "missing there as well";
  EXPECT_EQ(steps(), 1);
  EXPECT_TRUE(row(q("File"))->complaint().isEmpty());
  press(row(q("File")), q("Choose..."));
  answer(chosen);
  EXPECT_EQ(here->currentValue(), AttributeValue(chosen));
  EXPECT_EQ(there->currentValue(), AttributeValue(found));
}

TEST_F(PanelsTest, RichTextKeepsItsSizesAndRefusesDamagedRtf) {
  auto* component = add(q("Strap"));
  const QString rtf = q("{\\rtf1\\ansi{\\fonttbl\\f0 Inter;}\\f0\\fs120 Harbour \\b Bridge}");
  auto* text = give(component, q("RTF"), AttributeType::RichText, rtf);
  select({component});
  auto* view = control<QTextEdit>(q("RTF"));
  EXPECT_EQ(view->toPlainText(), q("Harbour Bridge"));
  EXPECT_EQ(view->height(), 61);
  EXPECT_EQ(steps(), 0);
  view->setFocus();
  view->moveCursor(QTextCursor::End);
  QTest::keyClicks(view, q("!"));
  const auto written =
      model::RFTValueTransformer::transformedValue(text->currentValue().toString());
  EXPECT_EQ(written->toPlainText(), q("Harbour Bridge!"));
  QTextCursor end(written.get());
  end.movePosition(QTextCursor::End);
  EXPECT_EQ(end.charFormat().fontPointSize(), 60);
  EXPECT_GT(end.charFormat().fontWeight(), QFont::Medium);

  auto* data = new QMimeData;
  data->setData(q("text/rtf"), "{\\rtf1 {{{ open");
  QApplication::clipboard()->setMimeData(data);
  QTest::keyClick(view, Qt::Key_V, Qt::ControlModifier);
  QApplication::clipboard()->clear();
  EXPECT_EQ(view->toPlainText(), q("Harbour Bridge!"));
  EXPECT_FALSE(row(q("RTF"))->complaint().isEmpty());
}

TEST_F(PanelsTest, MissingFilesAreMarkedAndBrokenPicturesRefused) {
  auto* component = add(q("Strap"));
  auto* file = give(component, q("File"), AttributeType::File, q("/nowhere/bridge.mov"));
  QImage red(4, 4, QImage::Format_ARGB32);
  red.fill(Qt::red);
  auto* picture = give(component, q("Image"), AttributeType::Image, AttributeValue(red));
  select({component});
  EXPECT_THAT(row(q("File"))->complaint().toStdString(), testing::HasSubstr("bridge.mov"));
  const QString there = files.writeComponent(q("there.qtz"), {});
  auto* field = control<QLineEdit>(q("File"));
  type(field, there);
  QTest::keyClick(field, Qt::Key_Return);
  settle();
  EXPECT_EQ(file->currentValue(), AttributeValue(there));
  EXPECT_TRUE(row(q("File"))->complaint().isEmpty());

  auto* well = control<widgets::TYImageWell>(q("Image"));
  Q_EMIT well->fileDropped(there);
  EXPECT_FALSE(row(q("Image"))->complaint().isEmpty());
  EXPECT_EQ(picture->currentValue(), AttributeValue(red));
  QImage blue = red;
  blue.fill(Qt::blue);
  ASSERT_TRUE(blue.save(files.path(q("blue.png"))));
  Q_EMIT well->fileDropped(files.path(q("blue.png")));
  EXPECT_EQ(picture->currentValue(), AttributeValue(blue));
  EXPECT_TRUE(row(q("Image"))->complaint().isEmpty());
}

TEST_F(PanelsTest, AValueIsCopiedPastedAndSetBack) {
  QStringList warnings;
  auto* component = graphic->addComponenWithQuartzCompositionFile(
      files.writeComponent(q("Gauge.qtz"), {{q("Gap"), q("QCNumberPort"), 4.5, {}}}), {}, warnings);
  auto* gap = component->attributeForKey(q("Gap"));
  ASSERT_TRUE(gap);
  auto* count = give(component, q("Count"), AttributeType::Index, qint64{7});
  auto* words = give(component, q("Words"), AttributeType::String, q("Seven"));
  select({component});
  const auto choose = [&](const QString& label, const QString& title, bool possible = true) {
    InspectorRow* line = row(label);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5),
                            line->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(line, &event);
    auto* menu = line->findChild<QMenu*>();
    ASSERT_TRUE(menu);
    for (QAction* action : menu->actions())
      if (action->text() == title) {
        EXPECT_EQ(action->isEnabled(), possible) << title.toStdString();
        if (possible) action->trigger();
      }
    menu->close();
    settle();
  };
  choose(q("Count"), q("Copy Value"));
  choose(q("Words"), q("Paste Value"), false);
  choose(q("Gap"), q("Paste Value"));
  EXPECT_EQ(gap->currentValue(), AttributeValue(7.0));
  EXPECT_EQ(undoName(), q("Paste Gap"));
  choose(q("Gap"), q("Reset to the File's Value"));
  EXPECT_EQ(gap->currentValue(), AttributeValue(4.5));
  choose(q("Words"), q("Reset to the File's Value"), false);
  QApplication::clipboard()->clear();
  EXPECT_EQ(words->currentValue(), AttributeValue(q("Seven")));
  EXPECT_EQ(count->currentValue(), AttributeValue(qint64{7}));
}

}  // namespace inspector
