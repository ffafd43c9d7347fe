#include <gmock/gmock.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTest>

#include "canvas/CompositionView.h"
#include "canvas/InPlaceTextEditor.h"
#include "desktop/Designer.h"
#include "model/Composition.h"
#include "preview/FieldsPanel.h"
#include "preview/PreviewView.h"
#include "preview/TYPreviewController.h"
#include "preview/fields/FieldEditor.h"
#include "preview/fields/FieldList.h"
#include "preview/fields/FieldRow.h"
#include "support/TessaryProgram.h"

namespace desktop {

namespace {

using preview::TYPreviewController;
using testing::ElementsAre;
using testing::SizeIs;

const QString waiting = QStringLiteral("Waiting for Trigger");
const QString playing = QStringLiteral("Playing Untitled");
const QString finished = QStringLiteral("Playout finished");
const QString sources = QStringLiteral(TESSARY_SOURCE_FOLDER);

/// Everything that the status of the player says, one after the other.
class StatusLog {
 public:
  StatusLog() {
    m_timer.setInterval(2);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
    m_timer.start();
  }
  [[nodiscard]] const QStringList& seen() {
    look();
    return m_seen;
  }

 private:
  void look() {
    const TYPreviewController* player = TYPreviewController::shared();
    const QString status = player ? player->statusRow().status() : QString();
    if (!status.isEmpty() && (m_seen.isEmpty() || m_seen.last() != status)) m_seen.append(status);
  }
  QTimer m_timer;
  QStringList m_seen;
};

/// How the first person's texts go, both at once.
const std::vector<Designer::Moment> leaves{{"0.8s", {{"Opacity", 100}, {"Position", 308}}},
                                           {"0.88s", {{"Position", 305.2}}},
                                           {"0.96s", {{"Opacity", 0}, {"Position", 280}}}};

/// A graphic from the first drag to the file on air, made as its designer makes it.
class WholeGraphicTest : public testing::Test, protected EditorDesk {
 protected:
  void makeDocument();
  void makeBar();
  void makeRuleAndArcs();
  void makePersons();
  void makeTile();
  void makeStops();
  void select(const QString& title);

  [[nodiscard]] static TYPreviewController& player() { return *TYPreviewController::shared(); }
  /// The player's picture, when nothing moves in it any more.
  [[nodiscard]] static QImage heldPicture();
  void waitForStatus(const QString& status);
  /// Without a window manager nobody gives it back to a window when another one closes.
  void takeKeyboard() { click(pixel({-40, 540})); }
  void closeAndOpen(const QString& package);
  /// What there is to lose, a line each.
  [[nodiscard]] QStringList contents() const;
  [[nodiscard]] static QWidget& buttonOf(QWidget& panel, const QString& text);
  /// A field of the player.
  void fillIn(const QString& key, const QString& text);
  /// For whoever wants to look: where TESSARY_DEMO_PICTURES says.
  static void keep(const QImage& picture, const char* name);
  static void keep(QWidget& widget, const char* name) { keep(widget.grab().toImage(), name); }
  /// What the program draws at a time, premultiplied.
  [[nodiscard]] QImage rendered(const QStringList& arguments);
  [[nodiscard]] static QImage over(const QImage& ground, const QImage& picture);
  [[nodiscard]] static int difference(const QImage& a, const QImage& b);

  Designer designer{*this};
};

void WholeGraphicTest::makeDocument() {
  designer.showTab(QStringLiteral("Document"));
  designer.setTime(QStringLiteral("Duration"), QStringLiteral("2s"));
  EXPECT_EQ(graphic().duration(), 2);
  openMenu(QStringLiteral("Edit"));
  choose(openedMenu(), QStringLiteral("Background"));
  choose(openedMenu(), QStringLiteral("Image"));
  giveFile(sources + QStringLiteral("/docs/images/harbour.jpg"));
  EXPECT_EQ(graphic().backgroundMode(), model::BackgroundMode::Image);
  designer.showTab(QStringLiteral("Properties"));
}

void WholeGraphicTest::makeBar() {
  designer.add(QStringLiteral("GradientBar"), QStringLiteral("Bar"));
  designer.place(272, 80, 1096, 152);
  designer.setColour(QStringLiteral("Color 1"), QStringLiteral("0A1B44"));
  designer.setColour(QStringLiteral("Color 2"), QStringLiteral("1A58C4"));
  designer.duplicate(QStringLiteral("Sheen"));
  designer.place(272, 156, 1096, 76);
  designer.setColour(QStringLiteral("Color 1"), QStringLiteral("5F93FF"));
  designer.setColour(QStringLiteral("Color 2"), QStringLiteral("5F93FF"));
  designer.setNumber(QStringLiteral("Opacity 1"), 0);
  designer.setNumber(QStringLiteral("Opacity 2"), 0.22);
  designer.pick(QStringLiteral("Direction"), QStringLiteral("Up"));
  // Both grow and shrink together.
  click(pixel({100, 900}));
  key("ctrl+a");
  ASSERT_THAT(graphic().selectedComponents(), SizeIs(2));
  designer.animate({{"0.12s", {{"Size", 0}}},
                    {"0.36s", {{"Size", 1008.32}}},
                    {"0.52s", {{"Size", 1096}}},
                    {"1.56s", {{"Size", 1096}}},
                    {"1.72s", {{"Size", 986.4}}},
                    {"1.92s", {{"Size", 0}}}});
}

void WholeGraphicTest::makeRuleAndArcs() {
  designer.add(QStringLiteral("ImageComponent"), QStringLiteral("Arcs"));
  designer.place(968, 80, 400, 152);
  designer.setPicture(QStringLiteral("Image"),
                      sources + QStringLiteral("/resources/examples/images/arcs.png"));
  designer.pick(QStringLiteral("Fit"), QStringLiteral("Stretch"));
  designer.animate({{"0.52s", {{"Opacity", 0}}},
                    {"0.72s", {{"Opacity", 100}}},
                    {"1.4s", {{"Opacity", 100}}},
                    {"1.56s", {{"Opacity", 0}}}});
  designer.add(QStringLiteral("Rectangle"), QStringLiteral("Rule"));
  designer.place(272, 80, 1096, 6);
  designer.setColour(QStringLiteral("Color"), QStringLiteral("FFB02E"));
  designer.animate({{"0s", {{"Size", 0}}},
                    {"0.24s", {{"Size", 1008.32}}},
                    {"0.4s", {{"Size", 1096}}},
                    {"1.6s", {{"Size", 1096}}},
                    {"1.76s", {{"Size", 986.4}}},
                    {"2s", {{"Size", 0}}}});
}

void WholeGraphicTest::makePersons() {
  // A name and a role that look as they shall; the second person's are copies of them.
  designer.add(QStringLiteral("Text"), QStringLiteral("Name 1"));
  designer.place(308, 145, 1024, 80);
  doubleClick(pixel({500, 185}));
  waitFor([this] { return view().textEditor() && view().textEditor()->hasFocus(); },
          "the text on the canvas");
  perform([](Hand& hand) {
    hand.type("Harbour Master");
    hand.key("Return");
  });
  designer.setText(QStringLiteral("Font"), QStringLiteral("InterDisplay-Bold, 66"));
  designer.setNumber(QStringLiteral("Smallest Size"), 46);
  designer.publish(QStringLiteral("Text"));
  designer.duplicate(QStringLiteral("Role 1"));
  designer.place(308, 100, 1024, 48);
  designer.setText(QStringLiteral("Text"), QStringLiteral("Port authority, on site at the bridge"));
  designer.setText(QStringLiteral("Font"), QStringLiteral("Inter-Medium, 36"));
  designer.setColour(QStringLiteral("Color"), QStringLiteral("D3E1FF"));
  designer.setNumber(QStringLiteral("Smallest Size"), 28);
  designer.duplicate(QStringLiteral("Role 2"));
  designer.place(308, 100, 1024, 48);
  designer.setText(QStringLiteral("Text"), QStringLiteral("Bridge inspection, north tower"));
  designer.animate({{"1.12s", {{"Opacity", 0}, {"Position", 348}}},
                    {"1.28s", {{"Position", 311.2}}},
                    {"1.36s", {{"Opacity", 100}}},
                    {"1.4s", {{"Position", 308}, {"Opacity", 100}}},
                    {"1.56s", {{"Opacity", 0}}}});
  select(QStringLiteral("Name 1"));
  designer.duplicate(QStringLiteral("Name 2"));
  designer.place(308, 145, 1024, 80);
  designer.setText(QStringLiteral("Text"), QStringLiteral("Chief Engineer"));
  designer.animate({{"1s", {{"Opacity", 0}, {"Position", 348}}},
                    {"1.16s", {{"Position", 311.2}}},
                    {"1.24s", {{"Opacity", 100}}},
                    {"1.28s", {{"Position", 308}}},
                    {"1.4s", {{"Opacity", 100}}},
                    {"1.56s", {{"Opacity", 0}}}});
  select(QStringLiteral("Name 1"));
  designer.animate({{"0.4s", {{"Opacity", 0}, {"Position", 348}}},
                    {"0.56s", {{"Position", 311.2}}},
                    {"0.64s", {{"Opacity", 100}}},
                    {"0.68s", {{"Position", 308}}}});
  designer.animate(leaves);
  select(QStringLiteral("Role 1"));
  designer.animate({{"0.52s", {{"Opacity", 0}, {"Position", 348}}},
                    {"0.68s", {{"Position", 311.2}}},
                    {"0.76s", {{"Opacity", 100}}}});
  designer.animate(leaves);
}

void WholeGraphicTest::select(const QString& title) {
  click(timelineTitle(title));
  waitFor(
      [&] {
        const auto selected = graphic().selectedComponents();
        return selected.size() == 1 && selected.first()->title() == title;
      },
      qPrintable(title));
}

void WholeGraphicTest::makeTile() {
  designer.add(QStringLiteral("GradientBar"), QStringLiteral("Tile"));
  designer.place(120, 80, 152, 152);
  designer.setColour(QStringLiteral("Color 1"), QStringLiteral("FF8A1F"));
  designer.setColour(QStringLiteral("Color 2"), QStringLiteral("FFC23C"));
  designer.pick(QStringLiteral("Direction"), QStringLiteral("Up"));
  designer.animate({{"0.08s", {{"Size", 0, 1}}},
                    {"0.24s", {{"Size", 139.84, 1}}},
                    {"0.36s", {{"Size", 152, 1}}},
                    {"1.72s", {{"Size", 152, 1}}},
                    {"1.8s", {{"Size", 136.8, 1}}},
                    {"1.96s", {{"Size", 0, 1}}}});
  designer.add(QStringLiteral("ImageComponent"), QStringLiteral("Logo"));
  designer.place(120, 80, 152, 152);
  designer.setPicture(QStringLiteral("Image"),
                      sources + QStringLiteral("/resources/examples/images/logo-harbour.png"));
  designer.publish(QStringLiteral("Image"));
  designer.animate({{"0.24s", {{"Opacity", 0}, {"Position", 64, 1}}},
                    {"0.4s", {{"Position", 78.72, 1}}},
                    {"0.44s", {{"Opacity", 100}}},
                    {"0.48s", {{"Position", 80, 1}}},
                    {"1.6s", {{"Opacity", 100}}},
                    {"1.72s", {{"Opacity", 0}}}});
}

void WholeGraphicTest::makeStops() {
  designer.showTab(QStringLiteral("Document"));
  designer.setStopFrame("0.8s", QStringLiteral("Second person"));
  designer.setStopFrame("1.4s", QStringLiteral("Out"));
  designer.showTab(QStringLiteral("Properties"));
  designer.goTo("0.8s");
}

QWidget& WholeGraphicTest::buttonOf(QWidget& panel, const QString& text) {
  for (QPushButton* button : panel.findChildren<QPushButton*>())
    if (button->text() == text) return *button;
  ADD_FAILURE() << "there is no button " << text.toStdString();
  return panel;
}

void WholeGraphicTest::fillIn(const QString& key, const QString& text) {
  const preview::FieldsPanel& panel = player().fieldsPanel();
  waitFor([&] { return panel.isVisible() && panel.list().row(key); }, "the fields");
  auto* field = qobject_cast<QLineEdit*>(&panel.list().row(key)->editor().control());
  ASSERT_TRUE(field) << key.toStdString();
  fill(*field, text);
  waitFor([&] { return panel.model().filledIn().value(key).toString() == text; }, qPrintable(text));
}

void WholeGraphicTest::waitForStatus(const QString& status) {
  waitFor([&] { return player().statusRow().status() == status; }, qPrintable(status));
}

QImage WholeGraphicTest::rendered(const QStringList& arguments) {
  const QString file = path("frame.png");
  const support::Outcome outcome =
      support::tessary(QStringList{QStringLiteral("render"), QStringLiteral("--frames"),
                                   QStringLiteral("1"), QStringLiteral("-o"), file} +
                       arguments);
  EXPECT_EQ(outcome.status, 0) << outcome.error.toStdString();
  return QImage(file).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

void WholeGraphicTest::closeAndOpen(const QString& package) {
  takeKeyboard();
  key("ctrl+n");
  waitFor([this] { return editor().controller().documents().size() == 2; }, "a new document");
  editor().windowOf(*editor().controller().documents().first())->close();
  waitFor([this] { return editor().controller().documents().size() == 1; }, "a document to close");
  useWindow();
  takeKeyboard();
  key("ctrl+o");
  giveFile(package);
  waitFor([this] { return graphic().componentArray().size() == 10; }, "the document to open");
  useWindow();
}

QStringList WholeGraphicTest::contents() const {
  QStringList lines{graphic().broadcastMode(), QString::number(graphic().duration())};
  for (const model::StopFrame* stop : graphic().stopFramesSortedByTime())
    lines.append(QString::number(stop->timepoint()) + stop->triggerInformation());
  for (const model::QuartzComponent* component : graphic().componentsSortedByZLevel())
    for (const model::Attribute* attribute : component->attributesSortedByTitle()) {
      QString line = component->title() + u' ' + attribute->key() + u' ' +
                     attribute->valueForTimepoint(0.7).toString();
      if (attribute->permissionToChange()) line += QStringLiteral(" published");
      for (const double time : attribute->sortedKeyFrames())
        line +=
            QStringLiteral(" %1: %2").arg(time).arg(attribute->valueForTimepoint(time).toNumber());
      lines.append(line);
    }
  return lines;
}

QImage WholeGraphicTest::over(const QImage& ground, const QImage& picture) {
  QImage both = ground;
  QPainter(&both).drawImage(0, 0, picture);
  return both;
}

/// The largest of any channel.
int WholeGraphicTest::difference(const QImage& a, const QImage& b) {
  if (a.size() != b.size() || a.format() != b.format()) return 256;
  int largest = 0;
  for (int y = 0; y < a.height(); ++y) {
    const uchar* first = a.constScanLine(y);
    const uchar* second = b.constScanLine(y);
    for (qsizetype i = 0; i < qsizetype{4} * a.width(); ++i)
      largest = std::max(largest, std::abs(first[i] - second[i]));
  }
  return largest;
}

QImage WholeGraphicTest::heldPicture() {
  const void* last = nullptr;
  for (int same = 0; same < 5;) {
    QTest::qWait(40);
    const void* now = player().view().picture().get();
    same = now && now == last ? same + 1 : 0;
    last = now;
  }
  return player().view().picture()->image().copy();
}

void WholeGraphicTest::keep(const QImage& picture, const char* name) {
  const QString folder = qEnvironmentVariable("TESSARY_DEMO_PICTURES");
  if (!folder.isEmpty()) picture.save(folder + u'/' + QString::fromLatin1(name));
}

}  // namespace

TEST_F(WholeGraphicTest, IsBuiltPreviewedSavedExportedAndRenderedAlike) {
  makeDocument();
  makeBar();
  makeRuleAndArcs();
  makePersons();
  makeTile();
  makeStops();
  keep(window(), "1-built.png");
  ASSERT_THAT(graphic().componentArray(), SizeIs(10));

  // On air at the desk: held at each stop until the trigger comes.
  StatusLog statuses;
  key("ctrl+p");
  waitFor([] { return TYPreviewController::shared() && player().isActiveWindow(); },
          "the player to take the keyboard");
  waitForStatus(waiting);
  const QImage first = heldPicture();
  keep(player(), "2-player.png");
  perform([](Hand& hand) { hand.hold("space"); });
  waitForStatus(playing);
  waitForStatus(waiting);  // held, it releases one stop only
  const QImage second = heldPicture();
  perform([](Hand& hand) { hand.letGo("space"); });
  EXPECT_TRUE(player().isWaitingForTrigger());
  click(buttonOf(player().statusRow(), QStringLiteral("Trigger")));
  waitForStatus(finished);
  EXPECT_THAT(statuses.seen(), ElementsAre(playing, waiting, playing, waiting, playing, finished));

  // Other texts, typed into the fields of the player; what they hold goes to a file of values.
  key("ctrl+f");
  fillIn(QStringLiteral("Name_1_Text"), QStringLiteral("Deputy Minister"));
  fillIn(QStringLiteral("Role_1_Text"), QStringLiteral("Opens the bridge again at nine"));
  keep(player(), "3-fields.png");
  click(buttonOf(player().fieldsPanel(), QStringLiteral("Play")));
  waitForStatus(waiting);
  const QImage filledIn = heldPicture();
  EXPECT_NE(filledIn, first);
  const QString values = path("values.json");
  QFile json(values);
  ASSERT_TRUE(json.open(QIODevice::WriteOnly));
  json.write(QJsonDocument(player().fieldsPanel().model().filledIn()).toJson());
  json.close();
  click(player().view());
  key("ctrl+w");
  waitFor([] { return TYPreviewController::shared() == nullptr; }, "the player to close");

  // Saved, closed, opened again: all of it is there.
  takeKeyboard();
  key("ctrl+s");
  giveFile(path("person"));
  const QString package = path("person.composition");
  waitFor([this] { return !window().isWindowModified(); }, "the document to be saved");
  const QStringList before = contents();
  closeAndOpen(package);
  EXPECT_EQ(contents(), before);

  // Exported, and drawn by the program that needs no screen: the same picture.
  takeKeyboard();
  key("ctrl+e");
  const QString file = path("person.qtz");
  giveFile(file);
  waitFor([&] { return QFileInfo::exists(file); }, "the exported file");
  const QString background = QStringLiteral("--background");
  const QString from = QStringLiteral("--from");
  const QStringList atFirst{from, QStringLiteral("1")};
  const QStringList atSecond{QStringLiteral("--trigger"), QStringLiteral("1"), from,
                             QStringLiteral("2")};
  EXPECT_EQ(rendered(QStringList{package, background} + atFirst), first);
  EXPECT_EQ(rendered(QStringList{package, background} + atSecond), second);
  // The graphic is empty at its beginning, so this is what it stands on.
  const QImage ground = rendered({package, background});
  const QStringList withValues{QStringLiteral("--values"), values};
  EXPECT_EQ(rendered(QStringList{package, background} + withValues + atFirst), filledIn);
  const QImage alone = rendered(QStringList{file} + atFirst);
  keep(alone, "4-rendered.png");
  EXPECT_LE(difference(over(ground, alone), first), 1);
  EXPECT_LE(difference(over(ground, rendered(QStringList{file} + atSecond)), second), 1);
  EXPECT_LE(difference(over(ground, rendered(QStringList{file} + withValues + atFirst)), filledIn),
            1);
}

}  // namespace desktop
