#include <gtest/gtest.h>

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "support/TessaryProgram.h"

namespace {

using support::Outcome;

QString q(const char* text) {
  return QString::fromUtf8(text);
}

class Batch : public testing::Test {
 protected:
  void write(const char* name, const char* text) const {
    const QString path = folder.filePath(q(name));
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }
  Outcome run(const char* text) const { return support::batch(q(text), folder.path()); }
  [[nodiscard]] bool exists(const char* name) const {
    return QFileInfo::exists(folder.filePath(q(name)));
  }
  [[nodiscard]] QByteArray info(const char* name) const {
    return support::tessary({q("info"), q(name)}, folder.path()).out;
  }
  QTemporaryDir folder;
};

TEST_F(Batch, AScriptMakesDocumentsWithNamesAndOtherScripts) {
  write("way/colours.tessary", "let deep #102030 # a colour\nlet look Color=$deep fields=Color\n");
  write("scripts/a.tessary", R"(# Two documents
let out a.composition
let title "Never seen"
include ../way/colours.tessary
new $out --mode "HD 1080p25" --duration 2
add Rectangle title="$title" $look \
    width=10   # goes on
new b.composition --mode "HD 720p50"
set . duration=3
set a.composition #1 height=20
stop b.composition 1 "In b"
open a.composition
stop 1 "In a"
export $title.qtz
)");
  const Outcome made = support::tessary(
      {q("batch"), q("scripts/a.tessary"), q("--let"), q("title=Bar")}, folder.path());
  EXPECT_EQ(made.status, 0) << made.error.toStdString();
  EXPECT_TRUE(made.error.isEmpty()) << made.error.toStdString();
  const QByteArray a = info("a.composition");
  EXPECT_TRUE(a.contains("  1 s  In a\n")) << a.toStdString();
  EXPECT_TRUE(a.contains("  Bar  0 s")) << a.toStdString();
  EXPECT_TRUE(a.contains("= #102030FF")) << a.toStdString();
  EXPECT_TRUE(a.contains("inputHeight               number    = 20")) << a.toStdString();
  EXPECT_TRUE(info("b.composition").contains("  1 s  In b\n"));
  EXPECT_TRUE(exists("Bar.qtz"));
}

TEST_F(Batch, LinesMayEndAsElsewhere) {
  EXPECT_EQ(run("new a.composition --mode \\\r\n \"HD 720p50\"\r\nset . duration=3\r\n").status, 0);
  EXPECT_TRUE(info("a.composition").contains("HD 720p50, 1280 x 720\nduration  3 s\n"));
}

TEST_F(Batch, AnErrorNamesItsLineAndNothingIsSavedThatWasNot) {
  write("deep.tessary", "stop 0.5\n\nadd \\\n  Rectangel\n");
  write("loop.tessary", "include loop.tessary\n");
  const std::tuple<const char*, int, const char*> cases[] = {
      {"include deep.tessary", 2, "deep.tessary:3: there is no standard component 'Rectangel'"},
      {"# fine\nset Bar x=1", 2, "-:6: there is no component 'Bar'"},
      {"ad Rectangle", 2, "-:5: a script has no command 'ad'; did you mean add?"},
      {"add \"Rect", 2, "-:5: the quotation mark \" is not closed"},
      {"include none.tessary", 3, "none.tessary: No such file"},
      {"include loop.tessary", 2, "files include one another too deeply"},
      {"save all", 2, "-:5: 'save' has the wrong number of arguments"},
      {"let 1a b", 2, "-:5: let takes a name"},
      {"add ImageComponent Image=@none.png", 3, "-:5: "},
      {"stop", 2, "-:5: something is missing (usage: tessary stop DOC TIME [TEXT] [--remove])"}};
  for (const auto& [line, status, message] : cases) {
    const Outcome outcome = run((QByteArray("new a.composition --replace --mode \"HD 1080p25\"\n"
                                            "save\nset . duration=7\n"
                                            "new b.composition --mode \"HD 1080p25\"\n") +
                                 line)
                                    .constData());
    EXPECT_EQ(outcome.status, status) << line;
    EXPECT_TRUE(outcome.error.contains(q(message))) << line << outcome.error.toStdString();
    EXPECT_TRUE(info("a.composition").contains("duration  5 s")) << line;
    EXPECT_FALSE(exists("b.composition")) << line;
  }
  EXPECT_EQ(run("stop 1").status, 2);
}

TEST_F(Batch, LongestValuesOfTheExamplesAreTaken) {
  const QDir sources(q(TESSARY_SOURCE_FOLDER "/resources/examples"));
  for (const char* way : {"harbour", "metro"})
    for (const QString& name : sources.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
      const QString values = sources.filePath(name + q("/longest.json"));
      if (!QFileInfo::exists(values)) continue;
      const Outcome outcome = support::tessary(
          {q("render"), q(TESSARY_EXAMPLES "/%1/%2.composition").arg(q(way), name), q("-o"),
           q("out.png"), q("--size"), q("480x270"), q("--values"), values},
          folder.path());
      EXPECT_EQ(outcome.status, 0) << name.toStdString() << outcome.error.toStdString();
    }
}

}  // namespace
