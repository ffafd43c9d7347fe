#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "document/CompositionDocument.h"
#include "document/DocumentLock.h"
#include "support/GraphBuilder.h"
#include "support/TessaryProgram.h"

namespace {

using support::Outcome;

QString q(const char* text) {
  return QString::fromUtf8(text);
}

class Editing : public testing::Test {
 protected:
  /// One call, its words parted by blanks but for those in quotation marks.
  Outcome call(const char* line) const {
    return support::tessary(QProcess::splitCommand(q(line)), folder.path());
  }
  void expectDone(const char* line) const {
    const Outcome outcome = call(line);
    EXPECT_EQ(outcome.status, 0) << line << ": " << outcome.error.toStdString();
    EXPECT_TRUE(outcome.error.isEmpty()) << line << ": " << outcome.error.toStdString();
  }
  void expectRefused(const char* line, int status, const char* message) const {
    const Outcome outcome = call(line);
    EXPECT_EQ(outcome.status, status) << line;
    EXPECT_TRUE(outcome.error.contains(q(message))) << line << ": " << outcome.error.toStdString();
    EXPECT_TRUE(outcome.out.isEmpty()) << line;
  }
  [[nodiscard]] QByteArray bytesOf(const char* name) const {
    QFile file(at(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void write(const char* name, const QByteArray& bytes) const {
    QFile file(at(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  [[nodiscard]] QString at(const char* name) const { return folder.filePath(q(name)); }
  /// What the program says of the document, without the lines that say nothing here.
  [[nodiscard]] QString info(const char* without =
                                 "margin|zRotation|Alignment|Shrink|Smallest|"
                                 "Spacing|Wrap|Tabular") const {
    QStringList lines = QString::fromUtf8(call("info a.composition").out).split(u'\n');
    const QRegularExpression left(q(without));
    lines.removeIf([&](const QString& line) { return line.contains(left); });
    return lines.join(u'\n');
  }
  QTemporaryDir folder;
};

TEST_F(Editing, TheWorkedExampleOfTheHelpDoesWhatItSays) {
  QString commands;
  const QString help = QString::fromUtf8(call("help").out);
  const QRegularExpression lines(q("^  (tessary (?:.*\\\\\\n)*.*)$"),
                                 QRegularExpression::MultilineOption);
  for (auto match = lines.globalMatch(help); match.hasNext();)
    commands += match.next().captured(1) + u'\n';
  for (const char* name : {"new", "add", "set", "key", "stop", "export", "render"})
    EXPECT_TRUE(commands.contains(q("tessary ") + q(name) + u' ')) << name;

  QProcess shell;
  shell.setWorkingDirectory(folder.path());
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(q("PATH"), QFileInfo(q(TESSARY_PROGRAM)).path() + q(":/usr/bin:/bin"));
  shell.setProcessEnvironment(environment);
  shell.start(q("/bin/sh"), {q("-e"), q("-c"), commands});
  ASSERT_TRUE(shell.waitForFinished(120'000));
  ASSERT_EQ(shell.exitCode(), 0) << shell.readAllStandardError().toStdString();

  const QImage picture(at("name.png"));
  ASSERT_EQ(picture.size(), QSize(1920, 1080));
  EXPECT_EQ(picture.pixelColor(1200, 900), QColor(0x1A, 0x58, 0xC4));  // the bar, grown
  EXPECT_EQ(picture.pixelColor(1230, 900).alpha(), 0);                 // beside it
  QRect letters;
  for (int y = 848; y < 1000; ++y)
    for (int x = 120; x < 1216; ++x)
      if (picture.pixelColor(x, y) == QColor(Qt::white)) letters |= QRect(x, y, 1, 1);
  EXPECT_GT(letters.width(), 300) << "the name that was filled in";
  EXPECT_NEAR(letters.left(), 160, 6);
}

TEST_F(Editing, EveryCommandLeavesWhatItSays) {
  QImage picture(30, 20, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(at("logo.png")));
  write("note.txt", "two\nlines\n");
  for (const char* line :
       {"new a.composition --mode \"HD 1080p25\" --duration 4",
        "add a.composition Rectangle --title Bar width=100 height=50",
        "add a.composition Text title=Name x=-10 y=20 \"Text=a=b\" Font_Name=50 "
        "Justification=Right",
        "add a.composition logo.png opacity=0.5 start=0:05 end=2",
        "set a.composition Name Text=@note.txt \"Font_Name=Inter Medium\" color=#12345678 "
        "fields=Text,x visible=no",
        "set a.composition #3 rotation=-5 margins=1,-2 title=Mark",
        "set a.composition Name fields=+color,-x",
        "set a.composition . poster=0:20 background=#102030 safeZones=yes",
        "key a.composition Bar width 0=0 0:10=100 2=7",
        "key a.composition Bar width --remove 2 1=100",
        "key a.composition Bar Color 0=#000000 1=#FFFFFF", "key a.composition Bar Color --off",
        "stop a.composition 1 \"Go on\"", "stop a.composition 2 Out", "stop a.composition 1 On",
        "stop a.composition 2 --remove", "guide a.composition x -50", "order a.composition Bar +1",
        "order a.composition Mark back"})
    expectDone(line);
  EXPECT_EQ(info().toStdString(), R"(a.composition
format    HD 1080p25, 1920 x 1080
duration  4 s
poster    0.8 s
background  #102030FF
stop frames (1)
  1 s  On
components, lowest first (3)
  Mark  0.2 s … 2 s
    Image                     image     = image 30x20
    File_Path                 file      = ""
    Fit                       index     = 1
    Color                     color     = #FFFFFFFF
    inputWidth                number    = 30
    inputHeight               number    = 20
    originX                   number    = 945
    originY                   number    = 530
    opacity                   number    = 0.5
    visibleInCompositionEditor  boolean   = true
  Name  0 s … 4 s
    Text                      string    = "two
lines"
    Font_Name                 font      = Inter Medium, 50 pt
    Color                     color     = #12345678
    Justification             index     = 2
    inputWidth                number    = 800
    inputHeight               number    = 80
    originX                   number    = -10
    originY                   number    = 20
    opacity                   number    = 1
    visibleInCompositionEditor  boolean   = false
  Bar  0 s … 4 s
    Color                     color     = #000000FF
    inputWidth                number     0 s: 0, 0.4 s: 100, 1 s: 100
    inputHeight               number    = 50
    originX                   number    = 910
    originY                   number    = 515
    opacity                   number    = 1
    visibleInCompositionEditor  boolean   = true
)");
  const Outcome odd = call("set a.composition Name \"Font_Name=No Such Font 40\"");
  EXPECT_EQ(odd.status, 1);
  EXPECT_EQ(odd.error, q("tessary: note: Name: there is no font 'No Such Font' on this machine\n"));
  // Numbers are counted before any is gone.
  expectDone("remove a.composition #1 Name");
  EXPECT_TRUE(info().contains(q("components, lowest first (1)\n  Bar")));
  // The picture that the package shows is the one that the command writes.
  expectDone("thumbnail a.composition t.jpg");
  EXPECT_EQ(bytesOf("t.jpg"), bytesOf("a.composition/QuickLook/Thumbnail.jpg"));
  expectDone("thumbnail a.composition t.png --time 0:05 --size 192x108");
  const QImage small(at("t.png"));
  EXPECT_EQ(small.size(), QSize(192, 108));
  EXPECT_EQ(small.pixelColor(5, 5), QColor(0x10, 0x20, 0x30));
}

TEST_F(Editing, WhatIsWrongIsToldAndLeavesTheDocumentAlone) {
  expectDone("new a.composition --mode \"HD 1080p25\" --duration 2");
  expectDone("add a.composition Rectangle title=Bar");
  expectDone("add a.composition Rectangle title=Bar");
  expectDone("add a.composition Text title=Name");
  expectDone("key a.composition Name opacity 0=0 1=1");
  const QByteArray before = bytesOf("a.composition/data.xml");
  const std::tuple<const char*, int, const char*> cases[] = {
      {"new a.composition", 4, "a.composition: is there already; --replace"},
      {"new b.qtz", 2, "ends in .composition, not 'b.qtz'"},
      {"new b.composition --mode VHS", 2, "no video format 'VHS'; there are: SD PAL, SD NTSC"},
      {"new b.composition --duration 0", 2, "above 0"},
      {"new none/b.composition", 4, "none"},
      {"add a.composition Rectangl", 2, "'Rectangl'; did you mean Rectangle, RoundedRectangle?"},
      {"add a.composition none.png", 3, "none.png: there is no such file"},
      {"add a.composition a.composition/data.xml", 2, "no standard component"},
      {"add a.composition Rectangle Colour=#000000", 2, "has no 'Colour'; did you mean Color?"},
      {"set a.composition Bar x=1", 2, "several components are called 'Bar': #1, #2"},
      {"set a.composition Nam x=1", 2, "there is no component 'Nam'; did you mean Name?"},
      {"set a.composition #4 x=1", 2, "there is no component #4; the document has 3"},
      {"set a.composition #1 x=left", 2, "'x' takes a number, not 'left'"},
      {"set a.composition #1 rotation=1e39", 2, "'rotation' is too large"},
      {"set a.composition #1 width=-1", 2, "'width' must not be negative"},
      {"set a.composition #1 opacity=2", 2, "'opacity' must lie between 0 and 1"},
      {"set a.composition #1 Color=red", 2, "'Color' takes a colour such as #1A58C4"},
      {"set a.composition #1 visible=maybe", 2, "'visible' takes true or false"},
      {"set a.composition #1 start=1 end=0.5", 2, "would end before it starts"},
      {"set a.composition #1 x", 2, "'x' is not KEY=VALUE"},
      {"set a.composition Name Justification=Up", 2, "or one of Left, Center, Right, not 'Up'"},
      {"set a.composition Name opacity=1", 2, "'opacity' is animated"},
      {"set a.composition Name fields=Text,opacity", 2, "'opacity' is animated"},
      {"set a.composition Name Text=@none.txt", 3, "none.txt: there is no such file"},
      {"set a.composition . mode=VHS", 2, "there is no video format 'VHS'"},
      {"set a.composition . poster=3", 2, "'poster' takes a time within the duration"},
      {"set a.composition . colour=#000000", 2, "a document has no 'colour'; there are: mode"},
      {"key a.composition #1 Color soon=#000000", 2, "'soon' is no time"},
      {"key a.composition #1 Color 1=red", 2, "'Color' takes a colour"},
      {"key a.composition #1 Color --remove 1", 2, "'Color' has no key frame at 1"},
      {"key a.composition #1 marginX 1=1", 2, "'marginX' cannot be animated"},
      {"key a.composition #1 Color", 2, "TIME=VALUE, --remove or --off is needed"},
      {"stop a.composition 2.5", 2, "'2.5' is no time within the duration"},
      {"stop a.composition 1 --remove", 2, "there is no stop frame at 1"},
      {"guide a.composition z 1", 2, "x or y, not 'z'"},
      {"order a.composition Name up", 2, "front, back, +N or -N, not 'up'"},
      {"remove a.composition", 2, "something is missing (usage: tessary remove DOC TARGET…)"},
      {"stop a.composition 1 Out Now", 2, "'Now' is one argument too many"},
      {"export a.composition none/a.qtz", 4, "none/a.qtz"},
      {"thumbnail a.composition t_%d.png", 2, "one .png or .jpg file"},
      {"set", 2, "a document is needed (usage: tessary set"},
      {"set b.composition . duration=1", 3, "b.composition: does not exist"}};
  for (const auto& [line, status, message] : cases) expectRefused(line, status, message);
  EXPECT_EQ(bytesOf("a.composition/data.xml"), before);
  EXPECT_FALSE(QFileInfo::exists(at("b.composition")));
}

TEST_F(Editing, PackagesAreTakenByAnyOfTheirFiles) {
  expectDone("new a.composition --mode \"HD 1080p25\"");
  expectDone("add a.composition Rectangle title=Bar fields=Color");
  for (const char* path :
       {"a.composition/", "a.composition/data.xml", "a.composition/QuickLook/Thumbnail.jpg"}) {
    const Outcome info = support::tessary({q("info"), q(path)}, folder.path());
    EXPECT_TRUE(info.out.contains("components, lowest first (1)")) << path;
  }
  expectDone("set a.composition/data.xml Bar x=7");
  // The composition within is a composition.
  const Outcome within = call("info a.composition/Composition.qtz");
  EXPECT_TRUE(within.out.contains("Bar_Color")) << within.out.toStdString();
  expectDone("check a.composition");
  expectDone("render a.composition -o p.png --set Bar_Color=#00FF00");
  EXPECT_EQ(QImage(at("p.png")).pixelColor(8, 540), QColor(0, 255, 0));

  ASSERT_TRUE(QDir(folder.path()).mkpath(q("empty.composition")));
  ASSERT_TRUE(QDir(folder.path()).mkpath(q("cut.composition")));
  write("cut.composition/data.xml", bytesOf("a.composition/data.xml").left(400));
  document::CompositionDocument none;
  ASSERT_TRUE(
      none.saveToURL(QUrl::fromLocalFile(at("none.composition")), document::SaveOperation::SaveAs));
  for (const char* command : {"info %1", "check %1", "render %1 -o x.png", "export %1 x.qtz",
                              "set %1 . duration=2", "thumbnail %1 x.png"}) {
    const auto refused = [&](const char* name, const char* message) {
      expectRefused(q(command).arg(q(name)).toUtf8().constData(), 3, message);
    };
    refused("missing.composition", "missing.composition: does not exist");
    refused("empty.composition", "empty.composition: holds no data.xml");
    refused("cut.composition", "cut.composition/data.xml: ");
    refused("none.composition", "none.composition/data.xml: holds no composition");
  }
}

TEST_F(Editing, ADocumentThatSomebodyHoldsIsLeftAlone) {
  expectDone("new a.composition --mode \"HD 1080p25\"");
  const auto held = document::DocumentLock::take(at("a.composition"));
  ASSERT_EQ(held.state, document::DocumentLock::State::Held);
  const Outcome outcome = call("set a.composition . duration=2");
  EXPECT_EQ(outcome.status, 4);
  EXPECT_TRUE(outcome.error.contains(QString::number(QCoreApplication::applicationPid())))
      << outcome.error.toStdString();
  EXPECT_EQ(call("new a.composition --replace").status, 4);
  EXPECT_EQ(call("export a.composition a.qtz").status, 0);  // looking is free
}

TEST_F(Editing, FilesOfADocumentAreEmbedded) {
  expectDone("new a.composition --mode \"HD 1080p25\"");
  QImage picture(8, 8, QImage::Format_RGB32);
  picture.fill(Qt::blue);
  ASSERT_TRUE(picture.save(at("logo.png")));
  support::GraphBuilder graph;
  const QString loader = graph.node(q("QCImageDownloader"));
  graph.publishInput(loader, q("inputURL"), q("Image_Path"));
  graph.publishOutput(loader, q("outputImage"), q("outputImage"));
  const auto composition =
      quartz::QuartzComposition::compositionWithDictionary(graph.composition());
  ASSERT_TRUE(composition->writeToFile(at("picture.qtz"), true));
  expectDone("add a.composition picture.qtz title=Picture Image_Path=@logo.png");
  const Outcome relative = call("relative a.composition");
  EXPECT_EQ(relative.status, 0);
  EXPECT_TRUE(relative.out.contains("logo.png")) << relative.out.toStdString();
  EXPECT_TRUE(info().contains(q("\"../logo.png\""))) << info().toStdString();
  const Outcome embedded = call("embed a.composition");
  EXPECT_EQ(embedded.status, 0);
  EXPECT_EQ(bytesOf("a.composition/logo.png"), bytesOf("logo.png"));
  EXPECT_TRUE(info().contains(q("= \"logo.png\""))) << info().toStdString();
}

}  // namespace
