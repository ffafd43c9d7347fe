#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "foundation/PropertyList.h"
#include "quartz/QuartzComposition.h"
#include "support/TessaryProgram.h"

namespace {

using foundation::PropertyDictionary;
using quartz::QuartzComposition;
using quartz::QuartzPatch;
using support::Outcome;
using support::tessary;

/// A red sprite over everything, its colour published with a label and its size known.
void writeSample(const QString& path) {
  QuartzComposition composition;
  composition.data().insert(QStringLiteral("editorViewerWindow"), QStringLiteral("0 0 64 32"));
  auto* sprite = composition.rootPatch()->addPatchWithClass(
      QStringLiteral("QCSprite"), {},
      {{QStringLiteral("inputWidth"), 2.0}, {QStringLiteral("inputHeight"), 2.0}});
  sprite->publishPort(QStringLiteral("inputColor"), QStringLiteral("Paint"));
  composition.setInputParameter(PropertyDictionary{{QStringLiteral("red"), 1.0},
                                                   {QStringLiteral("green"), 0.0},
                                                   {QStringLiteral("blue"), 0.0},
                                                   {QStringLiteral("alpha"), 1.0}},
                                QStringLiteral("Paint"));
  ASSERT_TRUE(composition.writeToFile(path, true));
}

const QString lowerThird = QStringLiteral(TESSARY_EXAMPLES "/harbour/lower-third.composition");

class CommandLine : public testing::Test {
 protected:
  void SetUp() override { writeSample(sample); }
  QTemporaryDir folder;
  QString sample = folder.filePath(QStringLiteral("red.qtz"));
  QString at(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
};

TEST_F(CommandLine, HelpAndVersionOfEveryCommand) {
  EXPECT_EQ(tessary({QStringLiteral("--version")}).status, 0);
  EXPECT_EQ(tessary({QStringLiteral("help"), QStringLiteral("key")}).out,
            tessary({QStringLiteral("key"), QStringLiteral("--help")}).out);
  EXPECT_EQ(tessary({QStringLiteral("help"), QStringLiteral("fly")}).status, 2);
  for (const char* command :
       {"", "info", "check", "render", "export", "patches", "new", "add", "set", "key", "stop",
        "guide", "remove", "order", "embed", "relative", "upgrade", "thumbnail", "batch"}) {
    QStringList arguments{QString::fromLatin1(command), QStringLiteral("--help")};
    arguments.removeAll(QString());
    const Outcome help = tessary(arguments);
    EXPECT_EQ(help.status, 0) << command;
    EXPECT_TRUE(help.out.startsWith("Usage: tessary")) << help.out.toStdString();
  }
}

TEST_F(CommandLine, WrongCallsEndWithStatusTwoAndSayWhy) {
  const std::pair<QStringList, const char*> cases[] = {
      {{}, "no command"},
      {{QStringLiteral("fly")}, "'fly'"},
      {{QStringLiteral("info")}, "one file name"},
      {{QStringLiteral("info"), sample, QStringLiteral("--loud")}, "loud"},
      {{QStringLiteral("render"), sample}, "-o OUT"},
      {{QStringLiteral("render"), sample, QStringLiteral("-o"), at("x_%d.png")}, "--frames"},
      {{QStringLiteral("render"), sample, QStringLiteral("-o"), at("x.png"),
        QStringLiteral("--frames"), QStringLiteral("3")},
       "one picture"},
      {{QStringLiteral("render"), sample, QStringLiteral("-o"), at("x.png"),
        QStringLiteral("--set"), QStringLiteral("Colour=#000000")},
       "the file has: Paint"},
      {{QStringLiteral("render"), sample, QStringLiteral("-o"), at("x.png"),
        QStringLiteral("--set"), QStringLiteral("Paint=loud")},
       "'Paint' takes a colour"},
      {{QStringLiteral("render"), sample, QStringLiteral("-o"), at("x_%s.png")},
       "one number place"},
      {{QStringLiteral("render"), sample, QStringLiteral("-o"), at("x.gif")}, ".png, .jpg"},
      {{QStringLiteral("render"), sample, QStringLiteral("-o"), at("x.png"),
        QStringLiteral("--size"), QStringLiteral("16384x16384")},
       "134 million"}};
  for (const auto& [arguments, part] : cases) {
    const Outcome outcome = tessary(arguments);
    EXPECT_EQ(outcome.status, 2) << part;
    EXPECT_TRUE(outcome.error.contains(QString::fromLatin1(part))) << outcome.error.toStdString();
    EXPECT_TRUE(outcome.out.isEmpty());
  }
}

TEST_F(CommandLine, UnreadableInputAndUnwritableOutputAreTold) {
  QFile broken(at("broken.qtz"));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("bplist00 and then nothing of the kind");
  broken.close();
  for (const QString& input : {at("missing.qtz"), at("broken.qtz"), folder.path()}) {
    const Outcome info = tessary({QStringLiteral("info"), input});
    EXPECT_EQ(info.status, 3);
    EXPECT_TRUE(info.error.contains(input)) << info.error.toStdString();
    EXPECT_EQ(tessary({QStringLiteral("render"), input, QStringLiteral("-o"), at("x.png")}).status,
              3);
  }
  const Outcome full = tessary(
      {QStringLiteral("render"), sample, QStringLiteral("-o"), QStringLiteral("/dev/full/x.png")});
  EXPECT_EQ(full.status, 4);
  EXPECT_TRUE(full.error.contains(QStringLiteral("/dev/full"))) << full.error.toStdString();
}

TEST_F(CommandLine, InfoTellsSizeInputsAndPatches) {
  const Outcome outcome = tessary({QStringLiteral("info"), sample, QStringLiteral("--json")});
  ASSERT_EQ(outcome.status, 0) << outcome.error.toStdString();
  const QJsonObject info = QJsonDocument::fromJson(outcome.out).object();
  EXPECT_EQ(info[QStringLiteral("width")].toInt(), 64);
  const QJsonObject paint = info[QStringLiteral("inputs")].toArray().at(0).toObject();
  EXPECT_EQ(paint[QStringLiteral("key")].toString(), QStringLiteral("Paint"));
  EXPECT_EQ(paint[QStringLiteral("type")].toString(), QStringLiteral("color"));
  EXPECT_EQ(paint[QStringLiteral("default")].toString(), QStringLiteral("#FF0000FF"));
  const QJsonObject patch = info[QStringLiteral("patches")].toArray().at(0).toObject();
  EXPECT_EQ(patch[QStringLiteral("class")].toString(), QStringLiteral("QCSprite"));
  EXPECT_EQ(patch[QStringLiteral("count")].toInt(), 1);
  EXPECT_TRUE(patch[QStringLiteral("known")].toBool());
}

TEST_F(CommandLine, InfoShowsTheGraphOfAFileAndOfWhatADocumentExports) {
  EXPECT_EQ(tessary({QStringLiteral("info"), sample, QStringLiteral("--graph")}).out.toStdString(),
            "QCSprite_1: QCSprite\n"
            "    inputColor <= Paint = #FF0000FF\n"
            "    inputHeight = 2\n"
            "    inputWidth = 2\n");
  const Outcome outcome = tessary({QStringLiteral("info"), lowerThird, QStringLiteral("--graph")});
  ASSERT_EQ(outcome.status, 0) << outcome.error.toStdString();
  const QString graph = QString::fromUtf8(outcome.out);
  for (const char* line :
       {"QCPlugInPatch_1: QCPlugInPatch:BRVStopframesPlugIn, timebase external\n"
        "    _time <- stopframetimer.outputTime\n"
        "    inputTrigger <= trigger\n",
        "    outputWaitingForTrigger => waitingForTrigger\n",
        "\n    Text <= Name_1_Text \"Name 1 Text\" = \"Harbour Master\"\n"})
    EXPECT_TRUE(graph.contains(QString::fromUtf8(line))) << line << graph.toStdString();
  EXPECT_EQ(tessary({QStringLiteral("info"), sample, QStringLiteral("--graph"),
                     QStringLiteral("--json")})
                .status,
            2);
}

TEST_F(CommandLine, RendersPicturesSequencesAndRawFrames) {
  ASSERT_EQ(tessary({QStringLiteral("render"), sample, QStringLiteral("-o"), at("one.png")}).status,
            0);
  const QImage one(at("one.png"));
  EXPECT_EQ(one.size(), QSize(64, 32));
  EXPECT_EQ(one.pixelColor(32, 16), QColor(255, 0, 0));

  ASSERT_EQ(tessary({QStringLiteral("render"), sample, QStringLiteral("-o"), at("s/f_%03d.jpg"),
                     QStringLiteral("--frames"), QStringLiteral("3"), QStringLiteral("--set"),
                     QStringLiteral("Paint=#0000FF")})
                .status,
            0);
  EXPECT_TRUE(QFile::exists(at("s/f_002.jpg")));
  EXPECT_FALSE(QFile::exists(at("s/f_003.jpg")));
  EXPECT_GT(QImage(at("s/f_000.jpg")).pixelColor(5, 5).blue(), 240);

  const Outcome raw =
      tessary({QStringLiteral("render"), sample, QStringLiteral("-o"), QStringLiteral("-"),
               QStringLiteral("--frames"), QStringLiteral("2"), QStringLiteral("--set"),
               QStringLiteral("Paint=#00FF0080"), QStringLiteral("--size"), QStringLiteral("8x4")});
  ASSERT_EQ(raw.out.size(), 2 * 8 * 4 * 4);
  EXPECT_EQ(raw.out.left(4), QByteArray("\x00\xff\x00\x80", 4));
}

void writeText(const QString& path, const QByteArray& text) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(text);
}

TEST_F(CommandLine, ValuesComeFromAFile) {
  const QStringList render{QStringLiteral("render"),   sample,
                           QStringLiteral("-o"),       at("v.png"),
                           QStringLiteral("--values"), at("values.json")};
  writeText(at("values.json"), "{\"Paint\": \"#102030\"}");
  ASSERT_EQ(tessary(render).status, 0);
  EXPECT_EQ(QImage(at("v.png")).pixelColor(1, 1), QColor(0x10, 0x20, 0x30));
  const std::tuple<const char*, int, const char*> cases[] = {
      {"{\"Paint\": [1]}", 2, "'Paint' takes a colour such as #1A58C4 or #1A58C480, not '[1]'"},
      {"{\"Colour\": \"#102030\"}", 2, "there is no input 'Colour'"},
      {"[1]", 3, "not a JSON object"},
      {"{\"Paint\"", 3, "byte"}};
  for (const auto& [text, status, part] : cases) {
    writeText(at("values.json"), text);
    const Outcome outcome = tessary(render);
    EXPECT_EQ(outcome.status, status) << text;
    EXPECT_TRUE(outcome.error.contains(at("values.json"))) << outcome.error.toStdString();
    EXPECT_TRUE(outcome.error.contains(QString::fromLatin1(part))) << outcome.error.toStdString();
  }
  QFile::remove(at("values.json"));
  EXPECT_EQ(tessary(render).status, 3);
}

TEST_F(CommandLine, AFolderThatIsNotThereIsMadeForASequence) {
  ASSERT_EQ(tessary({QStringLiteral("render"), sample, QStringLiteral("-o"), at("new/folder/"),
                     QStringLiteral("--frames"), QStringLiteral("2")})
                .status,
            0);
  EXPECT_TRUE(QFile::exists(at("new/folder/frame_00001.png")));
}

TEST_F(CommandLine, InfoOfADocumentTellsComponentsKeyFramesAndStopFrames) {
  const Outcome outcome = tessary({QStringLiteral("info"), lowerThird, QStringLiteral("--json")});
  ASSERT_EQ(outcome.status, 0) << outcome.error.toStdString();
  const QJsonObject info = QJsonDocument::fromJson(outcome.out).object();
  EXPECT_EQ(info[QStringLiteral("width")].toInt(), 1920);
  EXPECT_EQ(info[QStringLiteral("stopFrames")].toArray().size(), 2);
  EXPECT_EQ(info[QStringLiteral("stopFrames")][0][QStringLiteral("time")].toDouble(), 0.8);
  QJsonObject opacity;
  QJsonObject name;
  for (const QJsonValue component : info[QStringLiteral("components")].toArray()) {
    if (component[QStringLiteral("title")].toString() != QLatin1String("Name 1")) continue;
    for (const QJsonValue attribute : component[QStringLiteral("attributes")].toArray()) {
      const QString key = attribute[QStringLiteral("key")].toString();
      if (key == QLatin1String("opacity")) opacity = attribute.toObject();
      if (key == QLatin1String("Text")) name = attribute.toObject();
    }
  }
  EXPECT_EQ(name[QStringLiteral("type")].toString(), QStringLiteral("string"));
  EXPECT_EQ(name[QStringLiteral("value")].toString(), QStringLiteral("Harbour Master"));
  EXPECT_FALSE(name.contains(QStringLiteral("keyFrames")));
  const QJsonArray frames = opacity[QStringLiteral("keyFrames")].toArray();
  ASSERT_EQ(frames.size(), 4);
  EXPECT_EQ(frames[1][QStringLiteral("time")].toDouble(), 0.64);
  EXPECT_EQ(frames[1][QStringLiteral("value")].toDouble(), 1.0);

  const QString text = QString::fromUtf8(tessary({QStringLiteral("info"), lowerThird}).out);
  EXPECT_TRUE(text.contains(QStringLiteral("  0.8 s  Second person\n"))) << text.toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral(" = \"Harbour Master\"")));
  EXPECT_TRUE(text.contains(QStringLiteral("0.4 s: 0, 0.64 s: 1, 0.8 s: 1, 0.96 s: 0")));
}

TEST_F(CommandLine, AFailedExportSaysItsMessageOnce) {
  const Outcome outcome = tessary({QStringLiteral("export"), lowerThird, at("not/there/out.qtz")});
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(outcome.error.count(QStringLiteral("Unable to write output file!")), 1)
      << outcome.error.toStdString();
}

TEST_F(CommandLine, ResourcesThatAreNamedAndNotThereAreTold) {
  const Outcome outcome =
      tessary({QStringLiteral("export"), lowerThird, at("out.qtz")}, {}, at("nowhere"));
  EXPECT_EQ(outcome.status, 5);
  EXPECT_TRUE(outcome.error.contains(at("nowhere"))) << outcome.error.toStdString();
  EXPECT_FALSE(QFile::exists(at("out.qtz")));
}

TEST_F(CommandLine, TheClockStartsWhereItIsToldAndGoesOn) {
  // The seconds of the clock are the red of a sprite: 2001-01-01 is the clock's beginning.
  QuartzComposition composition;
  QuartzPatch& root = *composition.rootPatch();
  const QString clock = root.addPatchWithClass(QStringLiteral("QCSystemTime"))->key();
  auto* color = root.addPatchWithClass(QStringLiteral("QCColorFromComponents"));
  color->setIdentifier(QStringLiteral("rgb"));
  auto* clear = root.addPatchWithClass(QStringLiteral("QCClear"));
  root.addConnectionFromComponent(clock, QStringLiteral("outputTime"), color->key(),
                                  QStringLiteral("input1"));
  root.addConnectionFromComponent(color->key(), QStringLiteral("outputColor"), clear->key(),
                                  QStringLiteral("inputColor"));
  ASSERT_TRUE(composition.writeToFile(at("clock.qtz"), true));
  const Outcome outcome =
      tessary({QStringLiteral("render"), at("clock.qtz"), QStringLiteral("-o"), QStringLiteral("-"),
               QStringLiteral("--size"), QStringLiteral("1x1"), QStringLiteral("--fps"),
               QStringLiteral("5"), QStringLiteral("--frames"), QStringLiteral("3"),
               QStringLiteral("--clock"), QStringLiteral("2001-01-01T00:00:00.200Z")});
  ASSERT_EQ(outcome.out.size(), 12) << outcome.error.toStdString();
  for (int frame = 0; frame < 3; ++frame)
    EXPECT_EQ(static_cast<uchar>(outcome.out[frame * 4]), 51 * (frame + 1)) << frame;  // 0.2 s each
}

TEST_F(CommandLine, FindingsAreReportedAndSetTheStatus) {
  QuartzComposition composition;
  composition.rootPatch()->addPatchWithClass(QStringLiteral("XYNothingKnown"));
  ASSERT_TRUE(composition.writeToFile(at("odd.qtz"), true));
  const Outcome outcome =
      tessary({QStringLiteral("render"), at("odd.qtz"), QStringLiteral("-o"), at("odd.png")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.error.contains(QStringLiteral("XYNothingKnown")));
  EXPECT_TRUE(QFile::exists(at("odd.png")));
}

TEST_F(CommandLine, CheckListsFindingsOfSeveralFiles) {
  QuartzComposition composition;
  auto* sprite = composition.rootPatch()->addPatchWithClass(QStringLiteral("QCSprite"));
  composition.rootPatch()->addConnectionFromComponent(
      QStringLiteral("Gone"), QStringLiteral("output"), sprite->key(), QStringLiteral("inputX"));
  ASSERT_TRUE(composition.writeToFile(at("odd.qtz"), true));
  const Outcome sound = tessary({QStringLiteral("check"), sample});
  EXPECT_EQ(sound.status, 0);
  EXPECT_TRUE(sound.out.isEmpty()) << sound.out.toStdString();

  const Outcome odd = tessary({QStringLiteral("check"), sample, at("odd.qtz")});
  EXPECT_EQ(odd.status, 1);
  EXPECT_EQ(QString::fromUtf8(odd.out),
            QStringLiteral("%1: connection-from-missing-node: Root/%2: %2.inputX is connected to "
                           "Gone, which is not there\n")
                .arg(at("odd.qtz"), sprite->key()));

  // What cannot be read does not keep the others from being looked at.
  const Outcome missing = tessary(
      {QStringLiteral("check"), at("none.qtz"), at("odd.qtz"), sample, QStringLiteral("--json")});
  EXPECT_EQ(missing.status, 3);
  EXPECT_TRUE(missing.error.contains(at("none.qtz")));
  const QJsonArray files = QJsonDocument::fromJson(missing.out).array();
  ASSERT_EQ(files.size(), 2);
  EXPECT_EQ(files[0][QStringLiteral("file")].toString(), at("odd.qtz"));
  const QJsonObject finding = files[0][QStringLiteral("findings")][0].toObject();
  EXPECT_EQ(finding[QStringLiteral("code")].toString(),
            QStringLiteral("connection-from-missing-node"));
  EXPECT_EQ(finding[QStringLiteral("object")].toString(), QStringLiteral("Root/") + sprite->key());
  EXPECT_FALSE(finding[QStringLiteral("sentence")].toString().isEmpty());
  EXPECT_TRUE(files[1][QStringLiteral("findings")].toArray().isEmpty());
  EXPECT_EQ(tessary({QStringLiteral("check")}).status, 2);
}

}  // namespace
