#include "playout/ValueTable.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QFile>
#include <QStringConverter>
#include <QTemporaryDir>

namespace playout {

namespace {

using runtime::PortAttributes;
using runtime::PortType;
using testing::ElementsAre;
using testing::HasSubstr;

QString s(const char* text) {
  return QString::fromUtf8(text);
}

foundation::Result<ValueTable> read(const QByteArray& bytes, const char* name = "rows.csv") {
  return ValueTable::fromBytes(bytes, s(name));
}

PortAttributes port(const char* key, PortType type, const char* label = "") {
  PortAttributes made;
  made.key = s(key);
  made.type = type;
  made.label = s(label);
  return made;
}

const std::vector<PortAttributes>& inputs() {
  static const std::vector<PortAttributes> made = [] {
    std::vector<PortAttributes> ports{port("Title_Text", PortType::String, "Text"),
                                      port("Sub_Text", PortType::String, "Text"),
                                      port("Score", PortType::Number, "Points"),
                                      port("Side", PortType::Index),
                                      port("Live", PortType::Boolean),
                                      port("Tint", PortType::Color, "Colour"),
                                      port("Photo", PortType::Image),
                                      port("Mesh", PortType::Mesh)};
    ports[2].maximum = 1000;
    ports[3].menu = QStringList{s("Home"), s("Away"), s("1,5")};
    return ports;
  }();
  return made;
}

QString cells(const ValueTable& table, qsizetype row) {
  QStringList texts;
  for (qsizetype i = 0; i < table.columns().size(); ++i) texts += table.cellText(row, i);
  return texts.join(u'|');
}

TEST(ValueTable, AnySpreadsheetsTextIsRead) {
  const QString text = s("Name;Größe\r\n\"A;\"\"B\"\"\";\"two\nlines\"\r\n\r\nÄ – €;5\r\n");
  const QByteArray utf8 = text.toUtf8();
  const auto utf16 = [&](QStringConverter::Encoding encoding) {
    return QByteArray(QStringEncoder(encoding, QStringConverter::Flag::WriteBom).encode(text));
  };
  QByteArray windows = text.toLatin1();
  windows.replace("\xc4 ? ?", "\xc4 \x96 \x80");
  for (const QByteArray& bytes : {utf8, "\xef\xbb\xbf" + utf8, utf16(QStringConverter::Utf16LE),
                                  utf16(QStringConverter::Utf16BE), windows, "sep=;\r\n" + utf8}) {
    const auto table = read(bytes);
    ASSERT_TRUE(table) << table.error().text().toStdString();
    EXPECT_EQ(table->columns(), QStringList({s("Name"), s("Größe")}));
    ASSERT_EQ(table->rowCount(), 2) << "the empty line is none";
    EXPECT_EQ(cells(*table, 0), s("A;\"B\"|two\nlines"));
    EXPECT_EQ(cells(*table, 1), s("Ä – €|5"));
  }
  EXPECT_EQ(cells(*read("a,b\tc\n1,2\t3", "rows.tsv"), 0), s("1,2|3"));
  EXPECT_EQ(cells(*read("a\tb\n1,5\t3", "rows.txt"), 0), s("1,5|3"));
}

TEST(ValueTable, RowsMayBeShorterAndLongerThanTheirHead) {
  const auto table = read("Score,\n1\n2,b,c\n");
  ASSERT_TRUE(table);
  EXPECT_EQ(table->columns(), QStringList({s("Score"), s("Column 2"), s("Column 3")}));
  EXPECT_TRUE(table->cell(0, 1).isUndefined());
  EXPECT_EQ(cells(*table, 1), s("2|b|c"));
  EXPECT_TRUE(table->cell(2, 0).isUndefined());
  EXPECT_TRUE(table->cell(0, -1).isUndefined());
  EXPECT_EQ(table->assign(7, table->fit(inputs())).values.size(), 0u);
}

TEST(ValueTable, JsonRowsAreObjects) {
  const auto table = read(
      "[{\"Score\": 2, \"Live\": true}, {\"Title_Text\": \"x\", \"Score\": "
      "\"3\", \"Live\": null}]",
      "rows.JSON");
  ASSERT_TRUE(table) << table.error().text().toStdString();
  EXPECT_EQ(table->columns(), QStringList({s("Live"), s("Score"), s("Title_Text")}));
  EXPECT_EQ(cells(*table, 0), s("true|2|"));
  const auto fit = table->fit(inputs());
  EXPECT_EQ(table->assign(0, fit).json, QJsonObject({{s("Live"), true}, {s("Score"), 2}}));
  EXPECT_EQ(table->assign(1, fit).json, QJsonObject({{s("Title_Text"), s("x")}, {s("Score"), 3}}));
  EXPECT_EQ(read("{\"Score\": 2}", "one.json")->rowCount(), 1);
}

TEST(ValueTable, FilesThatHoldNoTableSayWhy) {
  const QByteArray wide = 'a' + QByteArray(ValueTable::mostColumns, ',') + "\n1\n";
  const std::tuple<QByteArray, const char*, const char*> cases[] = {
      {"", "a.csv", "no table"},
      {" \n\n", "a.csv", "no table"},
      {"a,b\n", "a.csv", "no row"},
      {"a,b\n1,\"2\n3,4\n", "a.csv", "not closed (line 2)"},
      {QByteArray("a\0b\n1", 5), "a.csv", "not a text"},
      {wide, "a.csv", "10000 columns"},
      {"[", "a.json", "byte 1"},
      {"[]", "a.json", "no row"},
      {"[{}, 5]", "a.json", "row 2"},
      {"5", "a.json", "illegal"},
      {QByteArray(100'000, '['), "a.json", "nested"},
      {QByteArray(ValueTable::largestFile + 1, 'x'), "a.csv", "too large"}};
  for (const auto& [bytes, name, complaint] : cases) {
    const auto table = read(bytes, name);
    ASSERT_FALSE(table) << complaint;
    EXPECT_THAT(table.error().text().toStdString(), HasSubstr(complaint));
    EXPECT_EQ(table.error().file, s(name));
  }
  EXPECT_FALSE(ValueTable::fromFile(s("/nowhere/a.csv")));
  EXPECT_FALSE(ValueTable::fromFile(QDir::tempPath()));
}

TEST(ValueTable, ColumnsFillInputsByKeyElseByLabel) {
  const auto table = read("POINTS,score,text,title_text,Score ,nothing,mesh,Colour\n");
  ASSERT_FALSE(table);
  const auto full =
      read("POINTS,score,text,title_text,Score ,nothing,mesh,Colour\n1,2,3,4,5,6,7,8\n");
  ASSERT_TRUE(full);
  const auto fit = full->fit(inputs());
  std::vector<std::string> keys;
  for (const auto& input : fit.inputs) keys.push_back(input ? input->key.toStdString() : "-");
  EXPECT_THAT(keys, ElementsAre("-", "Score", "-", "Title_Text", "-", "-", "-", "Tint"));
  QStringList sentences;
  for (const auto& unused : fit.unused) sentences += unused.sentence();
  EXPECT_EQ(sentences,
            QStringList({s("column 'POINTS' is not used: column 'score' fills the same input"),
                         s("column 'text' is not used: it could mean Title_Text, Sub_Text"),
                         s("column 'Score' is not used: column 'score' fills the same input"),
                         s("column 'nothing' fits no input"), s("column 'mesh' fits no input")}));
  EXPECT_TRUE(full->fit({}).isNone());
}

TEST(ValueTable, CellsBecomeValues) {
  QTemporaryDir folder;
  QImage photo(2, 2, QImage::Format_RGB32);
  photo.fill(Qt::red);
  ASSERT_TRUE(photo.save(folder.filePath(s("photo.png"))));
  QFile file(folder.filePath(s("rows.csv")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(
      "Title_Text;Score;Side;Live;Tint;Photo\n"
      " 1,50 ; -0,5;Away;Yes; #FF0000 ;photo.png\n"
      ";;;;;\n"
      "x;;;;;\n"
      "x;1.234,5;1,5;maybe;red;none.png\n");
  file.close();
  const auto table = ValueTable::fromFile(file.fileName());
  ASSERT_TRUE(table) << table.error().text().toStdString();
  const auto fit = table->fit(inputs());
  const auto first = table->assign(0, fit);
  EXPECT_TRUE(first.wrong.empty());
  EXPECT_EQ(first.json, QJsonObject({{s("Title_Text"), s(" 1,50 ")},
                                     {s("Score"), -0.5},
                                     {s("Side"), s("Away")},
                                     {s("Live"), true},
                                     {s("Tint"), s("#FF0000")},
                                     {s("Photo"), folder.filePath(s("photo.png"))}}));
  ASSERT_EQ(first.values.size(), 6u);
  EXPECT_EQ(first.values[5].value.toImage().size(), QSizeF(2, 2));
  // Nothing in a cell empties texts and pictures and leaves others as they are.
  EXPECT_EQ(table->assign(1, fit).json,
            QJsonObject({{s("Title_Text"), s("x")}, {s("Photo"), QString()}}));

  const auto last = table->assign(2, fit);
  EXPECT_EQ(last.json, QJsonObject({{s("Title_Text"), s("x")}, {s("Side"), s("1,5")}}));
  std::vector<std::string> complaints;
  for (const auto& wrong : last.wrong)
    complaints.push_back(wrong.failure.error.message.toStdString());
  ASSERT_EQ(complaints.size(), 4u);
  EXPECT_EQ(complaints[0],
            "row 3, column 'Score': 'Score' takes a number up to 1000, not '1234.5'");
  EXPECT_THAT(complaints[1], HasSubstr("column 'Live': 'Live' takes true or false, not 'maybe'"));
  EXPECT_EQ(last.wrong[3].failure.kind, ValueFailure::Kind::Unreadable);
  EXPECT_EQ(last.wrong[3].failure.error.file, file.fileName());
}

TEST(ValueTable, RowsHaveTitles) {
  const auto named = read("No,Text,NAME\n1,a,Ada\n2,b,\n3,,\n,,\"two\nlines\"\n");
  ASSERT_TRUE(named);
  QStringList titles;
  for (qsizetype i = 0; i < named->rowCount(); ++i) titles += named->title(i);
  EXPECT_EQ(titles, QStringList({s("Ada"), s("b"), s("3"), s("two lines")}));
  EXPECT_EQ(read("{\"a\": [1]}", "x.json")->title(0), s("Row 1"));
}

TEST(ValueTable, AHundredThousandRowsTakeNoTime) {
  QByteArray bytes("Title_Text,Sub_Text,Score,Side,Live,Tint\n");
  for (int i = 0; i < 100'000; ++i)
    bytes += "\"Row \"\"" + QByteArray::number(i) + "\"\"\",some words,12.5,Home,yes,#FF0000\n";
  QElapsedTimer timer;
  timer.start();
  const auto table = read(bytes);
  ASSERT_TRUE(table);
  EXPECT_EQ(table->rowCount(), 100'000);
  EXPECT_EQ(table->title(99'999), s("Row \"99999\""));
  EXPECT_LT(timer.elapsed(), 1000);
  QByteArray unclosed = bytes;
  unclosed.append("\"");
  timer.start();
  EXPECT_FALSE(read(unclosed));
  EXPECT_LT(timer.elapsed(), 1000);
}

}  // namespace

}  // namespace playout
