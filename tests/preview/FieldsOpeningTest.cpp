#include "preview/fields/FieldsOpening.h"

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QScreen>

#include "PreviewFixture.h"
#include "preview/FieldsPanel.h"
#include "preview/PreviewView.h"

namespace preview {

namespace {

const QString textKey = QStringLiteral("Name_Text");

/// The player with documents whose text may be filled in.
class FieldsOpeningTest : public PreviewTest {
 protected:
  static std::unique_ptr<CompositionDocument> graphicOf(const QString& text) {
    auto document = graphic(60);
    QStringList warnings;
    model::QuartzComponent* name = document->composition()->addComponenWithQuartzCompositionFile(
        *document->standardComponents().pathOf(QStringLiteral("Text")), {}, warnings);
    name->setTitle(QStringLiteral("Name"));
    for (model::Attribute* attribute : name->attributes())
      if (attribute->key() == QLatin1String("Text")) {
        attribute->setCurrentValue(text);
        attribute->setPermissionToChange(true);
      }
    return document;
  }
  [[nodiscard]] static FieldsPanel& panel() { return player().fieldsPanel(); }
  [[nodiscard]] static QString text() {
    const Field* field = panel().model().field(textKey);
    return field ? field->current().toString() : QStringLiteral("(none)");
  }
  [[nodiscard]] static QImage picture() {
    return player().view().picture() ? player().view().picture()->image().copy() : QImage();
  }
  [[nodiscard]] static bool hasPicture() {
    return QTest::qWaitFor([] { return !picture().isNull(); }, 5000);
  }
};

TEST_F(FieldsOpeningTest, TheWindowGrowsForThePanelAndThePictureKeepsItsSize) {
  const auto document = graphicOf(QStringLiteral("Ada"));
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&player()));
  EXPECT_FALSE(panel().isVisible());
  const QSize window = player().size();
  const bool hasRoom =
      player().screen()->availableGeometry().width() > window.width() + FieldsPanel::panelWidth + 4;
  const QSize picture = player().view().size();
  QTest::keyClick(&player(), Qt::Key_F, Qt::ControlModifier);
  QTest::qWait(50);
  EXPECT_TRUE(panel().isVisible());
  EXPECT_EQ(panel().width(), FieldsPanel::panelWidth);
  EXPECT_TRUE(!hasRoom || player().view().size() == picture);
  EXPECT_LE(player().geometry().right(), player().screen()->availableGeometry().right());
  auto* field = panel().findChild<QLineEdit*>(textKey);
  ASSERT_TRUE(field);
  EXPECT_TRUE(field->hasFocus());
  // In full screen there is the picture alone.
  QTest::keyClick(field, Qt::Key_F11);
  QTest::qWait(50);
  EXPECT_FALSE(panel().isVisible());
  QTest::keyClick(&player(), Qt::Key_Escape);
  QTest::qWait(50);
  EXPECT_TRUE(panel().isVisible());
  QTest::keyClick(&player(), Qt::Key_F6);
  EXPECT_TRUE(field->hasFocus());
  QTest::keyClick(field, Qt::Key_F, Qt::ControlModifier);
  QTest::qWait(50);
  EXPECT_FALSE(panel().isVisible());
  EXPECT_TRUE(player().hasFocus());
  EXPECT_EQ(player().size(), window);
  // It is there again when the next player opens.
  QTest::keyClick(&player(), Qt::Key_F, Qt::ControlModifier);
  TYPreviewController::closeShared();
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  EXPECT_TRUE(panel().isVisible());
}

TEST_F(FieldsOpeningTest, ValuesOutliveReloadingEditsAndOtherDocuments) {
  const auto document = graphicOf(QStringLiteral("Ada"));
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  EXPECT_EQ(text(), QStringLiteral("Ada"));
  EXPECT_TRUE(panel().model().enter(textKey, QStringLiteral("Grace")));
  ASSERT_TRUE(hasPicture());
  QTest::keyClick(&player(), Qt::Key_R);
  EXPECT_EQ(text(), QStringLiteral("Grace"));
  // Another text in the document: what was filled in stays, what was not follows.
  QTest::keyClick(&player(), Qt::Key_R, Qt::ShiftModifier);
  EXPECT_EQ(text(), QStringLiteral("Grace"));
  ASSERT_TRUE(hasPicture());
  QTest::qWait(200);
  const QImage grace = picture();
  const auto other = graphicOf(QStringLiteral("Edsger"));
  TYPreviewController::togglePreviewForCompositionDocument(*other);
  EXPECT_EQ(text(), QStringLiteral("Edsger"));
  TYPreviewController::togglePreviewForCompositionDocument(*document);
  EXPECT_EQ(text(), QStringLiteral("Grace"));
  // The first picture of what is loaded has it already.
  ASSERT_TRUE(hasPicture());
  EXPECT_EQ(picture(), grace);
  TYPreviewController::documentWillClose(*document);
  EXPECT_TRUE(panel().model().enter(textKey, QStringLiteral("Barbara")));
  QTest::keyClick(&player(), Qt::Key_R);
  EXPECT_EQ(text(), QStringLiteral("Barbara"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return picture() != grace; }, 5000));
}

}  // namespace

}  // namespace preview
