#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "support/TessaryProgram.h"

namespace {

using support::Outcome;

QString q(const char* text) {
  return QString::fromUtf8(text);
}

/// A graphic that is one colour, which a playout system may change.
class Values : public testing::Test {
 protected:
  void SetUp() override {
    const Outcome made = support::batch(
        q("new a.composition --mode \"HD 1080p25\" --duration 3\n"
          "add Rectangle title=Bar x=0 y=0 width=1920 height=1080 Color=#0000FF fields=Color\n"
          "set . poster=1\n"),
        folder.path());
    ASSERT_EQ(made.status, 0) << made.error.toStdString();
    write("red.json", "{\"Bar_Color\": \"#FF0000\"}");
    write("rows.csv", "Name;bar_color\nOne;#00FF00\nTwo;#FF0000\nThree;green\n");
  }
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
    EXPECT_EQ(outcome.status, status) << line << ": " << outcome.error.toStdString();
    EXPECT_TRUE(outcome.error.contains(q(message))) << line << ": " << outcome.error.toStdString();
  }
  [[nodiscard]] Outcome render(const char* values) const {
    return call(
        (QByteArray("render a.composition -o out.png --size 16x9 --from 1 --values ") + values)
            .constData());
  }
  /// "#rrggbb" in the middle of the picture.
  [[nodiscard]] QString colour(const char* picture = "out.png") const {
    const QImage image(at(picture));
    return image.isNull() ? QString() : image.pixelColor(image.rect().center()).name();
  }
  void expectPlays(const char* values, const char* expected, int status = 0) const {
    const Outcome outcome = render(values);
    EXPECT_EQ(outcome.status, status) << values << ": " << outcome.error.toStdString();
    EXPECT_EQ(colour(), q(expected)) << values;
  }
  void write(const char* name, const QByteArray& bytes) const {
    QFile file(at(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  [[nodiscard]] QByteArray bytesOf(const char* name) const {
    QFile file(at(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  [[nodiscard]] QString at(const char* name) const { return folder.filePath(q(name)); }

  QTemporaryDir folder;
};

TEST_F(Values, ADocumentPlaysWithItsSets) {
  const QByteArray graphic = bytesOf("a.composition/data.xml");
  expectDone("values a.composition set \"Home / 1\" red.json");
  expectDone("values a.composition set green rows.csv --row 1 --help");  // help changes nothing
  write("green.json", "{\"Bar_Color\": \"#00FF00\"}");
  expectDone("values a.composition set green green.json");
  EXPECT_EQ(bytesOf("a.composition/data.xml"), graphic) << "the graphic is not touched";
  EXPECT_EQ(call("values a.composition").out, "Home / 1\ngreen\n");
  expectPlays("\"Home / 1\"", "#ff0000");
  expectPlays("green --background", "#00ff00");
  expectPlays("green --set Bar_Color=#FF0000", "#ff0000");
  // A file of the name wins; a folder is none.
  write("green", "{\"Bar_Color\": \"#FFFF00\"}");
  expectPlays("green", "#ffff00");
  ASSERT_TRUE(QFile::remove(at("green")));
  ASSERT_TRUE(QDir(folder.path()).mkdir(q("green")));
  expectPlays("green", "#00ff00");
  EXPECT_EQ(render("./greener").status, 3) << "always a file";
  expectRefused("render a.composition -o x.png --values grey", 2, "it has: Home / 1, green");
  expectDone("export a.composition a.qtz");
  expectRefused("render a.qtz -o x.png --values green", 3, "green");

  const QByteArray shown = call("values a.composition show green").out;
  EXPECT_EQ(QJsonDocument::fromJson(shown).object(), QJsonObject({{q("Bar_Color"), q("#00FF00")}}));
  EXPECT_TRUE(call("info a.composition").out.contains("sets of values (2)"));
  const QJsonObject info = QJsonDocument::fromJson(call("info a.composition --json").out).object();
  EXPECT_EQ(info[q("valueSets")][1][q("values")][q("Bar_Color")], q("#00FF00"));

  expectDone("values a.composition rename green Green");
  expectRefused("values a.composition rename Green \"Home / 1\"", 2, "already");
  expectDone("values a.composition remove \"Home / 1\"");
  expectRefused("values a.composition remove green", 2, "the document has: Green");
  EXPECT_EQ(call("values a.composition list").out, "Green\n");
}

TEST_F(Values, SetsHaveToFitTheGraphicAndTheirNames) {
  write("wrong.json", "{\"Bar_Colour\": \"#FF0000\"}");
  expectRefused("values a.composition set x wrong.json", 2, "'Bar_Colour'");
  write("wrong.json", "{\"Bar_Color\": \"red\"}");
  expectRefused("values a.composition set x wrong.json", 2, "'Bar_Color' takes a colour");
  expectRefused("values a.composition set x none.json", 3, "none.json");
  expectRefused("values a.composition set \" \" red.json", 2, "empty");
  expectRefused("values a.composition set \"two\nlines\" red.json", 2, "line ends");
  expectRefused("values a.composition set x", 2, "values set takes 2 words");
  expectRefused("values a.composition jump", 2, "not 'jump'");
  expectRefused("values a.composition thumbnail x", 2, "the document has: none");
  EXPECT_FALSE(QFile::exists(at("a.composition/Values.json")));
  // A set that was right once: the key is named when it is asked for.
  expectDone("values a.composition set x red.json");
  expectDone("set a.composition Bar title=Strap");
  expectRefused("render a.composition -o x.png --values x", 2, "'Bar_Color'");
}

TEST_F(Values, SetsKnowScrollersByTheirOwnKeys) {
  expectDone("add a.composition TextScroller title=Crawl fields=Strings_1Input");
  write("crawl.json", "{\"Crawl_Strings_1Input\": \"News\"}");
  expectDone("values a.composition set crawl crawl.json");
  expectDone("render a.composition -o out.png --size 16x9 --values crawl");
  expectDone("render a.composition -o out.png --size 16x9 --values crawl --background");
  // Values files are for what is exported by hand, where translations go by one key.
  write("hand.json", "{\"EAS_TRANSLATION\": \"News\"}");
  expectDone("render a.composition -o out.png --size 16x9 --values hand.json");
  expectDone("render a.composition -o out.png --size 16x9 --values hand.json --background");
}

TEST_F(Values, RowsOfTables) {
  expectPlays("rows.csv --row 1", "#00ff00", 1);  // the column of names fits no input: a note
  expectPlays("rows.csv --row 2", "#ff0000", 1);
  expectRefused("render a.composition -o x.png --values rows.csv --row 2", 1,
                "column 'Name' fits no input");
  expectRefused("render a.composition -o x.png --values rows.csv --row 3", 2,
                "row 3, column 'bar_color': 'Bar_Color' takes a colour");
  expectRefused("render a.composition -o x.png --values rows.csv --row 4", 2, "has 3 rows");
  expectRefused("render a.composition -o x.png --values rows.csv", 2, "has 3 rows");
  expectRefused("render a.composition -o x.png --values rows.csv --row 0", 2, "'0'");
  expectRefused("render a.composition -o x.png --row 1", 2, "--row is for");
  write("other.csv", "Colour\n#FF0000\n");
  expectRefused("render a.composition -o x.png --values other.csv", 2, "Bar_Color");
  write("rows.json", "[{\"Bar_Color\": \"#FF0000\"}, {\"Bar_Color\": \"#00FF00\"}]");
  expectPlays("rows.json --row 2", "#00ff00");
  expectRefused("render a.composition -o x.png --values rows.json", 2, "--row takes the number");
  write("one.tsv", "Bar_Color\n#00FF00\n");
  expectPlays("one.tsv", "#00ff00");
  expectDone("values a.composition set first rows.json --row 1");
  expectPlays("first", "#ff0000");
}

TEST_F(Values, PicturesOfSetsGoWithThePackage) {
  QImage photo(32, 18, QImage::Format_RGB32);
  photo.fill(Qt::green);
  ASSERT_TRUE(photo.save(at("photo.png")));
  QImage red = photo;
  red.fill(Qt::red);
  ASSERT_TRUE(red.save(at("red.png")));
  expectDone(
      "add a.composition ImageComponent title=Photo x=0 y=0 width=1920 height=1080 Fit=Stretch "
      "Image=@red.png fields=Image");
  write("ada.json", "{\"Photo_Image\": \"photo.png\"}");
  expectDone("values a.composition set ada ada.json");
  expectPlays("ada", "#00ff00");
  const QByteArray shown = call("values a.composition show ada").out;
  EXPECT_EQ(QJsonDocument::fromJson(shown).object()[q("Photo_Image")], q("photo.png"));
  ASSERT_TRUE(QFile::remove(at("photo.png")));
  ASSERT_TRUE(QFile::rename(at("a.composition"), at("b.composition")));
  expectDone("render b.composition -o out.png --size 16x9 --from 1 --values ada");
  EXPECT_EQ(colour(), q("#00ff00"));
}

TEST_F(Values, ThumbnailsShowTheSetThatIsChosen) {
  const auto thumbnail = [&] { return colour("a.composition/QuickLook/Thumbnail.jpg"); };
  EXPECT_EQ(QColor(thumbnail()).blue() > 240, true);
  expectDone("values a.composition set red red.json");
  expectDone("values a.composition thumbnail red");
  EXPECT_GT(QColor(thumbnail()).red(), 240) << "at once";
  EXPECT_EQ(call("values a.composition").out, "red  (thumbnail)\n");
  expectDone("thumbnail a.composition out.png --size 16x9");
  EXPECT_EQ(colour(), q("#ff0000"));
  expectDone("set a.composition . duration=4");
  EXPECT_GT(QColor(thumbnail()).red(), 240) << "by the next save, too";
  expectDone("values a.composition thumbnail");
  EXPECT_GT(QColor(thumbnail()).blue(), 240);
}

TEST_F(Values, ScriptsMakeDocumentsWithSets) {
  const Outcome made = support::batch(
      q("new b.composition --mode \"HD 1080p25\" --duration 3\n"
        "add Rectangle title=Bar x=0 y=0 width=1920 height=1080 Color=#0000FF fields=Color\n"
        "set . poster=1\n"
        "values set red red.json\n"
        "values thumbnail red\n"
        "values list\n"),
      folder.path());
  EXPECT_EQ(made.status, 0) << made.error.toStdString();
  EXPECT_TRUE(made.out.contains("red  (thumbnail)"));
  EXPECT_GT(QColor(colour("b.composition/QuickLook/Thumbnail.jpg")).red(), 240);
  // A script that fails writes nothing.
  const Outcome failed = support::batch(q("values a.composition set red red.json\n"
                                          "values a.composition remove none\n"),
                                        folder.path());
  EXPECT_EQ(failed.status, 2);
  EXPECT_FALSE(QFile::exists(at("a.composition/Values.json")));
}

TEST_F(Values, DamagedFilesAreTold) {
  expectDone("values a.composition set red red.json");
  write("a.composition/Values.json", "{\"version\": 1,");
  expectRefused("render a.composition -o x.png --values red", 3, "Values.json");
  expectRefused("render a.composition -o x.png", 1, "Values.json");
  expectRefused("values a.composition set red red.json", 1, "Values.json");
  EXPECT_EQ(bytesOf("a.composition/Values (damaged).json"), "{\"version\": 1,");
  expectPlays("red", "#ff0000");
}

}  // namespace
