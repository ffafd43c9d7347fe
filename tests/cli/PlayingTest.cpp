#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "support/GraphBuilder.h"
#include "support/TessaryProgram.h"

namespace {

using support::Outcome;
using support::tessary;

QString q(const char* text) {
  return QString::fromUtf8(text);
}

QStringList words(const char* text) {
  return q(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// Three seconds in three full-frame colours, so that a pixel says what is on air. At four frames a
/// second all times are exact, and no colour begins at the time of a frame.
const char* const traffic = R"(
  new graphic.composition --replace --mode "HD 1080p25" --duration 3
  let full x=0 y=0 width=1920 height=1080
  add Rectangle title=Red $full start=0 end=0.9 Color=#FF0000 fields=Color
  add Rectangle title="Green bar" $full start=0.9 end=1.9 Color=#00FF00
  add Rectangle title=Blue $full start=1.9 Color=#0000FF fields=Color
)";

constexpr int width = 16;
constexpr int height = 9;
constexpr int frameBytes = width * height * 4;

/// The frames of a raw stream as letters: r, g and b, a point for an empty one.
QString letters(const QByteArray& frames) {
  QString text;
  for (qsizetype at = 0; at < frames.size(); at += frameBytes) {
    const QByteArray pixel = frames.mid(at, 4);
    if (frames.mid(at, frameBytes) != pixel.repeated(width * height)) return q("mixed");
    if (pixel == QByteArray("\xff\0\0\xff", 4))
      text += QLatin1Char('r');
    else if (pixel == QByteArray("\0\xff\0\xff", 4))
      text += QLatin1Char('g');
    else if (pixel == QByteArray("\0\0\xff\xff", 4))
      text += QLatin1Char('b');
    else
      text += pixel[3] == 0 ? QLatin1Char('.') : QLatin1Char('?');
  }
  return text;
}

class Playing : public testing::Test {
 protected:
  /// Exports a graphic with stop frames at the times.
  void makeTraffic(const QStringList& stopTimes) {
    QString script = q(traffic);
    for (const QString& time : stopTimes) script += q("stop ") + time + QLatin1Char('\n');
    make(script);
  }
  void make(const QString& script) {
    const Outcome made = support::batch(script + q("\nexport graphic.qtz"), folder.path());
    ASSERT_EQ(made.status, 0) << made.error.toStdString();
  }
  Outcome render(const QStringList& options) const {
    return tessary(QStringList{q("render"), graphic, q("-o"), q("-"), q("--fps"), q("4"),
                               q("--size"), QStringLiteral("%1x%2").arg(width).arg(height)} +
                   options);
  }
  /// What is on air, after checking the status.
  QString played(const char* options, int status = 0) const {
    const Outcome outcome = render(words(options));
    EXPECT_EQ(outcome.status, status) << options << ": " << outcome.error.toStdString();
    return letters(outcome.out);
  }
  QTemporaryDir folder;
  QString graphic = folder.filePath(q("graphic.qtz"));
};

TEST_F(Playing, TriggersReleaseAStopThatWaits) {
  makeTraffic({q("0.5"), q("1.5")});
  // Reaches 0.5 in the third frame; waits from 0.5 to 1 and, at 1.5, from 2 to 2.5.
  EXPECT_EQ(played("--trigger 1 --trigger 2.5"), q("rrrrrrggggggbbbb"));
  EXPECT_EQ(played("--trigger 2.5 --trigger 1"), q("rrrrrrggggggbbbb"));
  EXPECT_EQ(played("--trigger auto"), q("rrrrrgggggbbbb"));
  EXPECT_EQ(played("--frames 8"), q("rrrrrrrr"));
  EXPECT_EQ(played("", 1), q("rr"));  // without an end given, the wait is it
  // Before the stop a trigger is lost; in the frame that reaches it, it is pressed again.
  EXPECT_EQ(played("--trigger 0.25 --frames 8", 1), q("rrrrrrrr"));
  EXPECT_EQ(played("--trigger 0.25 --trigger 1 --frames 8", 1), q("rrrrrrgg"));
  EXPECT_EQ(played("--trigger 0.5 --frames 8"), q("rrrrrrgg"));
  // One at a time between two frames counts in the second of them.
  EXPECT_EQ(played("--trigger 0.8 --frames 8"), q("rrrrrrgg"));
}

TEST_F(Playing, AHeldTriggerReleasesOneStop) {
  makeTraffic({q("0.5"), q("1.5")});
  EXPECT_EQ(played("--set trigger=on --frames 12"), q("rrrrrrrrrrrr"));
  EXPECT_EQ(played("--set-at 1 trigger=on --frames 14"), q("rrrrrrgggggggg"));
  EXPECT_EQ(played("--set-at 1 trigger=on --set-at 2.25 trigger=off --set-at 2.5 trigger=on"),
            q("rrrrrrggggggbbbb"));
}

TEST_F(Playing, StopFramesAreCountedInEightBits) {
  QStringList times;
  for (int i = 1; i <= 256; ++i) times += QString::number(i / 100.0);
  makeTraffic(times);
  EXPECT_EQ(played(""), q("rrrrggggbbbb"));
  const Outcome info = tessary({q("info"), graphic, q("--json")});
  const QJsonObject facts = QJsonDocument::fromJson(info.out).object();
  for (const QJsonValue input : facts[q("inputs")].toArray())
    EXPECT_NE(input.toObject()[q("key")].toString(), q("trigger"));
  EXPECT_TRUE(facts[q("stopFrames")].toArray().isEmpty());
  EXPECT_EQ(played("--trigger 1", 2), QString());
  times += q("2.57");
  makeTraffic(times);
  EXPECT_EQ(played("--frames 6"), q("rrrrrr"));
}

TEST_F(Playing, AGraphicWithoutDurationIsOnePicture) {
  support::GraphBuilder graph;
  graph.node(q("QCClear"), {},
             {{q("inputColor"),
               support::GraphBuilder::Dictionary{
                   {q("red"), 0.0}, {q("green"), 1.0}, {q("blue"), 0.0}, {q("alpha"), 1.0}}}});
  const QString stops = graph.node(
      q("QCPlugInPatch:BRVStopframesPlugIn"),
      {{q("plugInState"), support::GraphBuilder::Dictionary{{q("compositionDuration"), 0.0}}}});
  graph.publishOutput(stops, q("outputActive"), q("active"));
  const auto made = quartz::QuartzComposition::compositionWithDictionary(graph.composition());
  ASSERT_TRUE(made->writeToFile(graphic, true));
  EXPECT_EQ(played(""), q("g"));
  EXPECT_EQ(played("--frames 3"), q("ggg"));
  make(q(R"(new graphic.composition --mode "HD 1080p25" --duration 0.0001
    add Rectangle x=0 y=0 width=1920 height=1080 Color=#FF0000)"));
  EXPECT_EQ(played(""), q("r"));
}

TEST_F(Playing, EnableKeysSwitchComponents) {
  makeTraffic({});
  EXPECT_EQ(played(""), q("rrrrggggbbbb"));
  EXPECT_EQ(played("--set Green_bar_Enable=off --set Blue_Enable=on"), q("rrrr....bbbb"));
  EXPECT_EQ(played("--set-at 0.25 Red_Enable=off --set-at 0.75 Red_Enable=on --frames 5"),
            q("r..rg"));
  const Outcome label = render({q("--set"), q("Green bar Enable=off")});
  EXPECT_EQ(label.status, 2);
  EXPECT_TRUE(label.error.contains(q("Green_bar_Enable"))) << label.error.toStdString();
  make(q(traffic) + q("set Blue visible=no"));
  EXPECT_EQ(played("--set Red_Enable=false"), q("....gggg...."));
  EXPECT_EQ(played("--set Blue_Enable=1 --set-at 2.5 Blue_Enable=0"), q("rrrrggggbb.."));
}

TEST_F(Playing, FramesStartEmptyWithClearOff) {
  makeTraffic({});
  EXPECT_EQ(played("--set clear_enable=off --set Green_bar_Enable=off --threads 1"),
            q("rrrr....bbbb"));
  EXPECT_EQ(render({q("--set"), q("clear_enable=off")}).out, render({}).out);
}

TEST_F(Playing, ValuesAreSetWithTheFirstFrameAtOrAfterTheirTime) {
  makeTraffic({});
  EXPECT_EQ(played("--set-at 0.5 Red_Color=#0000FF --frames 5"), q("rrbbg"));
  EXPECT_EQ(played("--set-at 0.3 Red_Color=#0000FF --frames 5"), q("rrbbg"));
  EXPECT_EQ(played("--set-at 0 Red_Color=#0000FF --frames 5"), q("bbbbg"));
  // In the order of their times, equal ones in the order given; frames before --from are played.
  EXPECT_EQ(played("--set-at 0.75 Red_Color=#FF0000 --set-at 0.25 Red_Color=#00FF00 "
                   "--set-at 0.25 Red_Color=#0000FF --frames 4"),
            q("rbbr"));
  EXPECT_EQ(played("--set-at 0.25 Red_Color=#00FF00 --from 0.5 --frames 1"), q("g"));
  EXPECT_EQ(played("--set-at 7 Red_Color=#00FF00 --frames 2", 1), q("rr"));

  makeTraffic({q("0.5")});
  // At a stop playing goes on until the last update has been seen.
  EXPECT_EQ(played("--set-at 1 Red_Color=#0000FF", 1), q("rrrrb"));
  EXPECT_EQ(played("--set-at 1 Red_Color=#0000FF --trigger 1.25 --frames 8"), q("rrrrbbbg"));
}

TEST_F(Playing, WrongUpdatesAreToldBeforePlaying) {
  makeTraffic({});
  const std::pair<QStringList, const char*> cases[] = {
      {{q("--set-at"), q("1")}, "a time in seconds and KEY=VALUE, not '1'"},
      {{q("--set-at"), q("soon"), q("Red_Color=#000000")}, "not 'soon Red_Color=#000000'"},
      {{q("--set-at"), q("-1"), q("Red_Color=#000000")}, "a time in seconds"},
      {{q("--set-at"), q("1"), q("Red_Color")}, "--set-at takes KEY=VALUE, not 'Red_Color'"},
      {{q("--set-at"), q("1"), q("Color=#000000")}, "there is no input 'Color'"},
      {{q("--set-at"), q("1"), q("Red_Color=dark")}, "'Red_Color' takes a colour"},
      {{q("--set-at")}, "set-at"}};
  for (const auto& [options, part] : cases) {
    const Outcome outcome = render(options);
    EXPECT_EQ(outcome.status, 2) << part;
    EXPECT_TRUE(outcome.out.isEmpty()) << part;
    EXPECT_TRUE(outcome.error.contains(q(part))) << outcome.error.toStdString();
  }
  EXPECT_EQ(played("--set-at=0.5 Red_Color=#0000FF --frames 3"), q("rrb"));
}

TEST_F(Playing, ATextChangesWhileItsGraphicWaits) {
  make(q(R"(new graphic.composition --mode "HD 1080p25" --duration 2
    stop 0.5
    add Text title=Name x=0 y=0 width=1920 height=1080 Text= Font_Name="Inter-Medium 900" \
      fields=Text)"));
  const auto frames = [this](const QStringList& options) {
    const Outcome outcome = render(options + words("--frames 8 --trigger 1.5"));
    EXPECT_EQ(outcome.status, 0) << outcome.error.toStdString();
    EXPECT_EQ(outcome.out.size(), 8 * frameBytes);
    return outcome.out;
  };
  const QByteArray all = frames({q("--set"), q("Name_Text=M I")});
  const QByteArray updated = frames({q("--set-at"), q("1"), q("Name_Text=M I")});
  EXPECT_NE(all.left(frameBytes), QByteArray(frameBytes, '\0'));
  EXPECT_EQ(updated.left(4 * frameBytes), QByteArray(4 * frameBytes, '\0'));
  EXPECT_EQ(updated.mid(4 * frameBytes), all.mid(4 * frameBytes));
}

}  // namespace
