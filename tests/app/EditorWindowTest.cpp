#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

#include "RunningEditor.h"
#include "app/CanvasMenu.h"
#include "app/DocumentSaving.h"
#include "app/PSDLayerList.h"
#include "canvas/CompositionView.h"
#include "model/Composition.h"
#include "widgets/TYAlert.h"
#include "widgets/TYNumberField.h"

namespace app {

namespace {

using document::CompositionDocument;
using testing::SizeIs;

/// The editor with an empty document, and hands that work on its window.
class EditorWindowTest : public RunningEditor {
 protected:
  EditorWindowTest() { start(); }

  [[nodiscard]] bool isEnabled(const char* identifier) const {
    settle();
    return window().actions().action(QString::fromLatin1(identifier))->isEnabled();
  }
  void clickTool(const QString& name) {
    for (QToolButton* button : window().findChildren<QToolButton*>())
      if (button->accessibleName() == name) QTest::mouseClick(button, Qt::LeftButton);
    settle();
  }
  void clickButton(const QString& text) {
    settle();
    for (QPushButton* button : window().findChildren<QPushButton*>())
      if (button->isVisible() && button->text().remove(u'&') == text) {
        QTest::mouseClick(button, Qt::LeftButton);
        break;
      }
    settle();
  }
  void drag(const QPointF& from, const QPointF& to) {
    canvas::CompositionView& view = window().view();
    const auto send = [&](QEvent::Type type, const QPointF& pixel, Qt::MouseButton button) {
      const QPointF point = view.geometryOfPicture().viewPoint(pixel);
      QMouseEvent event(type, point, view.mapToGlobal(point), button,
                        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                        Qt::NoModifier);
      QApplication::sendEvent(&view, &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, (from + to) / 2, Qt::NoButton);
    send(QEvent::MouseMove, to, Qt::NoButton);
    send(QEvent::MouseButtonRelease, to, Qt::LeftButton);
    settle();
  }
};

}  // namespace

TEST_F(EditorWindowTest, StartsWithAnEmptyDocumentWhoseCommandsKnowWhatTheyCanDo) {
  EXPECT_EQ(window().windowTitle(), QStringLiteral("Untitled - 1080i25 RGBA[*]"));
  EXPECT_FALSE(window().isWindowModified());
  for (const char* identifier :
       {"undo", "redo", "cut", "delete", "sendForward", "AlignLeft", "revert"})
    EXPECT_FALSE(isEnabled(identifier)) << identifier;
  for (const char* identifier :
       {"save", "play", "jumpToEnd", "selectAll", "zoomIn", "embedResources"})
    EXPECT_TRUE(isEnabled(identifier)) << identifier;
  EXPECT_EQ(window().actions().action(QStringLiteral("AlignLeft"))->toolTip(),
            QStringLiteral("Select two or more components."));
}

TEST_F(EditorWindowTest, TheFirstMinutesWork) {
  clickTool(QStringLiteral("Text"));
  ASSERT_THAT(composition().componentArray(), SizeIs(1));
  model::QuartzComponent& text = *composition().componentArray().first();
  EXPECT_TRUE(text.selected());
  EXPECT_TRUE(window().isWindowModified());
  const double x = text.originX();
  const QPointF grip(text.centerH(), text.centerV());
  drag(grip, grip + QPointF(137, 61));
  EXPECT_NEAR(text.originX(), x + 137, 1.5);
  EXPECT_EQ(window().actions().action(QStringLiteral("undo"))->text(),
            QStringLiteral("&Undo Move Text"));
  window().view().setFocus();
  QTest::keyClick(&window().view(), Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_NEAR(text.originX(), x + 147, 1.5);

  trigger("duplicate");
  trigger("duplicate");
  ASSERT_THAT(composition().componentArray(), SizeIs(3));
  trigger("selectAll");
  trigger("AlignLeft");
  for (const auto* component : composition().componentArray())
    EXPECT_EQ(component->originX(), text.originX());
  trigger("sendToBack");

  while (window().document().context().canUndo()) trigger("undo");
  EXPECT_THAT(composition().componentArray(), SizeIs(0));
  EXPECT_FALSE(window().isWindowModified());
  while (window().document().context().canRedo()) trigger("redo");
  EXPECT_THAT(composition().componentArray(), SizeIs(3));
}

TEST_F(EditorWindowTest, GeometryFieldsEditTheSelectionInOneStep) {
  // The screen of these tests has no room for the inspector.
  window().setWindowState(Qt::WindowNoState);
  window().resize(1300, 760);
  clickTool(QStringLiteral("Text"));
  trigger("duplicate");
  trigger("selectAll");
  widgets::TYNumberField* field = nullptr;
  for (auto* candidate : window().findChildren<widgets::TYNumberField*>())
    if (candidate->accessibleName() == QStringLiteral("X")) field = candidate;
  ASSERT_TRUE(field);
  EXPECT_TRUE(field->isMixed());
  field->setFocus();
  field->selectAll();
  QTest::keyClicks(field, QStringLiteral("1920/2-40"));
  QTest::keyClick(field, Qt::Key_Return);
  settle();
  for (const auto* component : composition().componentArray()) EXPECT_EQ(component->originX(), 920);
  EXPECT_EQ(window().document().context().history().undoText(), QStringLiteral("Move"));
  window().document().context().undo();
  EXPECT_NE(composition().componentArray().first()->originX(), 920);
}

TEST_F(EditorWindowTest, GuidesAndSafeAreasAreShownInAllWindowsAndChangeNoDocument) {
  TYWindowController& first = window();
  window().services().newDocument({});
  settle();
  ASSERT_NE(&first, &window());
  EXPECT_FALSE(composition().showsSafeZones());
  trigger("showsSafeZones");
  EXPECT_TRUE(composition().showsSafeZones());
  EXPECT_TRUE(first.composition()->showsSafeZones());
  EXPECT_TRUE(defaults.value(QStringLiteral("showsSafeZones")).toBool());
  EXPECT_FALSE(window().isWindowModified());
  EXPECT_FALSE(first.isWindowModified());
  EXPECT_FALSE(isEnabled("undo"));
  // A new guide shows guides everywhere; documents that are made later begin like that.
  first.composition()->addRulerAtPosition(100, true);
  settle();
  EXPECT_TRUE(composition().showsRulers());
  EXPECT_TRUE(first.isWindowModified());
  EXPECT_FALSE(window().isWindowModified());
  window().services().newDocument({});
  settle();
  EXPECT_TRUE(composition().showsRulers());
  EXPECT_TRUE(composition().showsSafeZones());
  EXPECT_FALSE(window().isWindowModified());
}

TEST_F(EditorWindowTest, TheMenuOnTheCanvasIsAboutWhatIsSelected) {
  const auto entries = [this] {
    QMenu menu;
    fillCanvasMenu(menu, window(), composition());
    QStringList texts;
    for (const QAction* action : menu.actions())
      if (!action->isSeparator() && action->isEnabled()) texts.append(action->text().remove(u'&'));
    return texts;
  };
  EXPECT_THAT(entries(), testing::Contains(QStringLiteral("Guides")));
  EXPECT_THAT(entries(), testing::Not(testing::Contains(QStringLiteral("Cut"))));
  window().addStandardComponent(QStringLiteral("TextComponent"));
  settle();
  for (const char* entry : {"Edit Text", "Cut", "Duplicate", "Delete", "Send to Back", "Hide"})
    EXPECT_THAT(entries(), testing::Contains(QString::fromLatin1(entry)));
  QMenu menu;
  fillCanvasMenu(menu, window(), composition());
  for (QAction* action : menu.actions())
    if (action->text() == QStringLiteral("&Hide")) action->trigger();
  EXPECT_FALSE(composition().componentArray().first()->visibleInCompositionEditor());
  composition().context()->undo();
  EXPECT_TRUE(composition().componentArray().first()->visibleInCompositionEditor());
}

TEST_F(EditorWindowTest, ClosingAsksAndSavingRemembersWhere) {
  const QString package = path("strap.composition");
  clickTool(QStringLiteral("Text"));
  ASSERT_TRUE(
      window().document().saveToURL(QUrl::fromLocalFile(package), document::SaveOperation::SaveAs));
  trigger("duplicate");
  window().close();
  clickButton(QStringLiteral("Cancel"));
  ASSERT_THAT(delegate->controller().documents(), SizeIs(1)) << "cancelled";
  window().close();
  clickButton(QStringLiteral("Save"));
  settle();
  EXPECT_THAT(delegate->controller().documents(), SizeIs(0));

  delegate->openDocuments({package});
  settle();
  EXPECT_THAT(composition().componentArray(), SizeIs(2));
  EXPECT_EQ(window().windowTitle(), QStringLiteral("strap - 1080i25 RGBA[*]"));
  EXPECT_EQ(RecentDocuments(defaults).paths(), QStringList{package});
}

TEST_F(EditorWindowTest, ADocumentThatIsGoneCanBeSavedWhereItWas) {
  const QString package = path("gone.composition");
  ASSERT_TRUE(
      window().document().saveToURL(QUrl::fromLocalFile(package), document::SaveOperation::SaveAs));
  clickTool(QStringLiteral("Text"));
  ASSERT_TRUE(QDir(package).removeRecursively());
  trigger("save");
  clickButton(QStringLiteral("Save There"));
  EXPECT_TRUE(QFileInfo::exists(package + QStringLiteral("/data.xml")));
  EXPECT_FALSE(window().isWindowModified());
}

TEST_F(EditorWindowTest, RevertShowsWhatWasSaved) {
  const QString package = path("strap.composition");
  ASSERT_TRUE(
      window().document().saveToURL(QUrl::fromLocalFile(package), document::SaveOperation::SaveAs));
  clickTool(QStringLiteral("Text"));
  trigger("revert");
  clickButton(QStringLiteral("Revert"));
  EXPECT_THAT(composition().componentArray(), SizeIs(0));
  EXPECT_FALSE(window().isWindowModified());
  clickTool(QStringLiteral("Text"));
  EXPECT_THAT(composition().componentArray(), SizeIs(1));
  EXPECT_TRUE(isEnabled("undo"));
}

TEST_F(EditorWindowTest, LayeredImagesBecomeComponentsOrOneImage) {
  const QString file = QStringLiteral(TESSARY_SOURCE_DIR "/tests/document/files/gimp-layers.psd");
  window().view().addComponentsFromPaths({file}, false);
  settle();
  const auto* list = window().findChild<PSDLayerList*>();
  ASSERT_TRUE(list);
  const int layersTicked = list->tickedCount();
  clickButton(QStringLiteral("Import %1 Layers").arg(layersTicked));
  const auto layers = composition().componentsSortedByZLevel();
  ASSERT_GT(layers.size(), 1);
  EXPECT_EQ(layers.size(), layersTicked);
  EXPECT_EQ(window().document().context().history().undoText(), QStringLiteral("Import Layers"));
  trigger("undo");
  EXPECT_THAT(composition().componentArray(), SizeIs(0));

  window().view().addComponentsFromPaths({file}, false);
  settle();
  for (auto* choice : window().findChildren<QRadioButton*>())
    if (choice->isVisible() && !choice->isChecked()) choice->click();
  clickButton(QStringLiteral("Import Picture"));
  EXPECT_THAT(composition().componentArray(), SizeIs(1));
}

}  // namespace app
