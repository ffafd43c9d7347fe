#include <QComboBox>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "app/RenderProgress.h"
#include "app/RenderQueue.h"
#include "app/RenderSheet.h"
#include "app/RunningEditor.h"
#include "widgets/TYAlert.h"
#include "widgets/TYSegmentedControl.h"

namespace app {

namespace {

using Kind = RenderChoices::Kind;

/// The editor, with settings that make rendering quick, and the file that is proposed.
class RenderingTest : public RunningEditor {
 protected:
  RenderingTest() {
    defaults.setValue(folder.path(), QStringLiteral("renderFolder"));
    defaults.setValue(static_cast<int>(RenderChoices::Size::Own), QStringLiteral("renderSize"));
    defaults.setValue(QSize(160, 90), QStringLiteral("renderOwnSize"));
    start();
    window().addStandardComponent(QStringLiteral("Rectangle"));
  }
  [[nodiscard]] RenderQueue& queue() const { return window().services().renders(); }
  RenderSheet* openSheet() {
    trigger("render");
    RenderSheet* sheet = nullptr;
    for (RenderSheet* each : window().findChildren<RenderSheet*>())
      if (each->isVisible()) sheet = each;
    EXPECT_TRUE(sheet);
    return sheet;
  }
  static void choose(RenderSheet& sheet, Kind kind) {
    QTest::mouseClick(
        sheet.findChild<widgets::TYSegmentedControl*>()->segment(static_cast<int>(kind)),
        Qt::LeftButton);
  }
  static void typePath(RenderSheet& sheet, const QString& path) {
    auto* field = sheet.findChild<QLineEdit*>(QStringLiteral("path"));
    field->selectAll();
    QTest::keyClicks(field, path);
  }
  void press(QWidget& sheet, const char* text) {
    for (auto* button : sheet.findChildren<QPushButton*>())
      if (button->text() == QString::fromUtf8(text)) {
        QTest::mouseClick(button, Qt::LeftButton);
        settle();
        return;
      }
    FAIL() << text;
  }
  /// The message that is shown, none when there is none.
  [[nodiscard]] widgets::TYAlert* alert() const {
    for (auto* each : window().findChildren<widgets::TYAlert*>())
      if (each->isVisible()) return each;
    return nullptr;
  }
  bool comesToRest() {
    return QTest::qWaitFor([this] { return !queue().isBusy(); }, 60'000);
  }
};

TEST_F(RenderingTest, ReturnRendersTheDocumentAsItIsAndTheChoicesAreRemembered) {
  RenderSheet* sheet = openSheet();
  choose(*sheet, Kind::Still);
  EXPECT_TRUE(sheet->choices().path.endsWith(QLatin1String(".png")));
  typePath(*sheet, path("still"));
  QTest::keyClick(sheet, Qt::Key_Return);
  // What is changed from now on is not in the picture.
  composition().componentArray().first()->setOpacity(0);
  ASSERT_TRUE(comesToRest());
  ASSERT_EQ(queue().notices().size(), 1);
  EXPECT_EQ(queue().notices().first().path, path("still.png"));
  const QImage picture(path("still.png"));
  EXPECT_EQ(picture.size(), QSize(160, 90));
  EXPECT_NE(picture.pixelColor(80, 45).alpha(), 0);
  EXPECT_TRUE(window().findChild<RenderProgress*>()->isVisible());
  EXPECT_EQ(openSheet()->choices().kind, Kind::Still);
}

TEST_F(RenderingTest, WhatIsThereIsReplacedOnlyWhenThePersonSaysSo) {
  QFile file(path("there.png"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("mine");
  file.close();
  RenderSheet* sheet = openSheet();
  choose(*sheet, Kind::Still);
  typePath(*sheet, path("there.png"));
  press(*sheet, "Render");
  ASSERT_TRUE(alert());
  press(*alert(), "Cancel");
  EXPECT_FALSE(queue().isBusy());
  EXPECT_EQ(QFileInfo(path("there.png")).size(), 4);
  // The same choices are there again.
  RenderSheet* again = nullptr;
  for (RenderSheet* each : window().findChildren<RenderSheet*>())
    if (each->isVisible()) again = each;
  ASSERT_TRUE(again);
  EXPECT_EQ(again->choices().path, path("there.png"));
  press(*again, "Render");
  ASSERT_TRUE(alert());
  press(*alert(), "Replace");
  ASSERT_TRUE(comesToRest());
  EXPECT_EQ(QImageReader(path("there.png")).size(), QSize(160, 90));
}

TEST_F(RenderingTest, QuittingAsksWhileSomethingIsRenderedAndThenLeavesNothing) {
  composition().setDuration(3600);
  press(*openSheet(), "Render");
  ASSERT_TRUE(queue().isBusy());
  const QString made = RenderQueue::pathOf(queue().current()->settings());
  EXPECT_EQ(QFileInfo(made).path(), folder.path());

  RenderSheet* second = openSheet();
  typePath(*second, made);
  press(*second, "Render");
  ASSERT_TRUE(alert()) << "one file is written twice";
  press(*alert(), "Ok");
  EXPECT_EQ(queue().waiting(), 0);

  ASSERT_TRUE(window().document().saveToURL(QUrl::fromLocalFile(path("saved.composition")),
                                            document::SaveOperation::SaveAs));
  trigger("quit");
  ASSERT_TRUE(alert());
  QTest::keyClick(alert(), Qt::Key_Return);
  settle();
  EXPECT_TRUE(queue().isBusy()) << "given up by the key that is pressed without looking";
  trigger("quit");
  ASSERT_TRUE(alert());
  QTest::keyClick(alert(), Qt::Key_Escape);
  settle();
  EXPECT_TRUE(queue().isBusy());
  trigger("quit");
  ASSERT_TRUE(alert());
  press(*alert(), "Stop and Quit");
  EXPECT_FALSE(QFileInfo::exists(made));
}

TEST_F(RenderingTest, AFileThatCannotBeWrittenIsToldInTheWindow) {
  QFile blocking(path("file"));
  ASSERT_TRUE(blocking.open(QIODevice::WriteOnly));
  RenderSheet* sheet = openSheet();
  typePath(*sheet, path("file/movie.mov"));
  press(*sheet, "Render");
  ASSERT_TRUE(comesToRest());
  settle();
  ASSERT_TRUE(alert());
  EXPECT_TRUE(queue().notices().isEmpty());
}

TEST_F(RenderingTest, WhatOneOfSeveralRenderingsFoundIsKeptUntilItIsDismissed) {
  composition().addStopFrame(1);
  const auto source = render::RenderSource::fromDocument(window().document(), false);
  ASSERT_TRUE(source);
  const auto render = [&](const char* name, std::vector<double> triggers) {
    render::RenderSettings settings;
    settings.output = *render::OutputName::read(path(name));
    settings.size = QSize(64, 36);
    settings.frames = 1;
    settings.triggers = std::move(triggers);
    queue().add(std::make_unique<render::RenderTask>(*source, settings));
  };
  render("nothing.png", {});
  render("early.png", {0});  // no stop waits yet
  render("last.png", {});
  ASSERT_TRUE(comesToRest());
  ASSERT_EQ(queue().notices().size(), 2);
  EXPECT_EQ(queue().notices().first().path, path("early.png"));
  const QString finding = queue().notices().first().findings.value(0);
  EXPECT_FALSE(finding.isEmpty());
  auto* progress = window().findChild<RenderProgress*>();
  const auto isTold = [progress, &finding] {
    for (QLabel* label : progress->findChildren<QLabel*>())
      if (label->isVisible() && label->toolTip().contains(finding)) return true;
    return false;
  };
  EXPECT_TRUE(isTold());
  render("another.png", {});
  ASSERT_TRUE(comesToRest());
  EXPECT_TRUE(isTold());
  // The file of that name is another one now.
  render("early.png", {});
  ASSERT_TRUE(comesToRest());
  EXPECT_FALSE(isTold());
  queue().dismissNotices();
  EXPECT_FALSE(progress->isVisible());
}

TEST_F(RenderingTest, ASetOfValuesTakesThePlaceOfTheDocumentsOwn) {
  playout::ValueSets sets;
  const QString key = composition().componentArray().first()->title() + QStringLiteral("_Enable");
  ASSERT_TRUE(sets.add({QStringLiteral("Hidden"), {{key, false}}}));
  ASSERT_TRUE(window().document().setValueSets(sets));
  RenderSheet* sheet = openSheet();
  choose(*sheet, Kind::Still);
  typePath(*sheet, path("set.png"));
  auto* values = sheet->findChild<QComboBox*>(QStringLiteral("values"));
  ASSERT_TRUE(values);
  values->setFocus();
  QTest::keyClick(values, Qt::Key_Down);
  EXPECT_EQ(sheet->choices().valueSet, QStringLiteral("Hidden"));
  press(*sheet, "Render");
  ASSERT_TRUE(comesToRest());
  ASSERT_EQ(queue().notices().size(), 1);
  EXPECT_EQ(QImage(path("set.png")).pixelColor(80, 45).alpha(), 0);
}

TEST_F(RenderingTest, ChoicesBecomeSettingsOrASentence) {
  RenderChoices c;
  c.path = path("a");
  c.kind = Kind::Pictures;
  EXPECT_TRUE(c.settings(composition())->output.name.isSequence);
  c.path = path("a.webm");
  c.kind = Kind::Movie;
  c.format[0] = QStringLiteral("mp4 h264");
  EXPECT_EQ(c.fittingPath(), path("a.mp4"));
  c.size = RenderChoices::Size::Half;
  const auto settings = c.settings(composition());
  ASSERT_TRUE(settings) << settings.error().text().toStdString();
  EXPECT_EQ(*settings->size, QSize(960, 540));
  EXPECT_FALSE(settings->duration) << "to its end";
  c.extent = RenderChoices::Extent::FromTo;
  c.from = 2;
  c.to = 1;
  EXPECT_FALSE(c.settings(composition()));
  c.to = 5;
  EXPECT_EQ(*c.settings(composition())->duration, 3);
  EXPECT_FALSE(c.settings(composition())->passesStops) << "from and to are as played";
  c.kind = Kind::Still;
  c.stillAt = 1.2;
  const auto still = c.settings(composition());
  ASSERT_TRUE(still);
  EXPECT_EQ(still->from, 1.2);
  EXPECT_TRUE(still->passesStops) << "the playhead knows of no waiting";
  EXPECT_FALSE(still->automaticTrigger);
  c.kind = Kind::Movie;
  c.path = path("a.webm");
  c.size = RenderChoices::Size::Own;
  c.ownSize = {161, 90};
  EXPECT_FALSE(c.settings(composition())) << "H.264 needs even sides";
  c.path = QStringLiteral("somewhere.mp4");
  c.ownSize = {160, 90};
  EXPECT_FALSE(c.settings(composition())) << "not a whole path";
}

TEST(RenderProgress, SaysHowFarItIsAndHowLongItTakes) {
  const auto text = [](qint64 frames, std::optional<qint64> total, std::optional<double> left) {
    return RenderProgress::progressText(frames, total, left);
  };
  EXPECT_EQ(text(34, 250, {}), QStringLiteral("34 of 250"));
  EXPECT_EQ(text(34, 250, 11.2), QStringLiteral("34 of 250, 12 s left"));
  EXPECT_EQ(text(34, 250, 125), QStringLiteral("34 of 250, 2:05 min left"));
  EXPECT_EQ(text(260, 250, 0), QStringLiteral("260 frames"));
  EXPECT_EQ(text(34, {}, {}), QStringLiteral("34 frames"));
}

}  // namespace

}  // namespace app
