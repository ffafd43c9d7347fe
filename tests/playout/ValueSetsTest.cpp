#include "playout/ValueSets.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonDocument>

namespace playout {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

QString s(const char* text) {
  return QString::fromUtf8(text);
}

ValueSet set(const char* name, const char* value = "x") {
  return {s(name), {{QStringLiteral("Key"), s(value)}}};
}

ValueSets sets(std::initializer_list<ValueSet> list) {
  ValueSets made;
  for (const ValueSet& one : list) EXPECT_TRUE(made.add(one));
  return made;
}

std::vector<std::string> contents(const ValueSets& sets) {
  std::vector<std::string> all;
  for (const ValueSet& one : sets.list())
    all.push_back((one.name + u'=' + one.values[QStringLiteral("Key")].toString()).toStdString());
  return all;
}

TEST(ValueSets, NamesAreUniqueAndThumbnailsFollowThem) {
  ValueSets made = sets({set("Home"), set("Home/Away"), set("Größe „Ä“")});
  EXPECT_FALSE(made.add(set("Home")));
  ASSERT_TRUE(made.put(set("Home", "new")));
  EXPECT_THAT(contents(made), ElementsAre("Home=new", "Home/Away=x", "Größe „Ä“=x"));
  EXPECT_FALSE(made.setThumbnailName(s("None")));
  ASSERT_TRUE(made.setThumbnailName(s("Home/Away")));
  EXPECT_FALSE(made.rename(s("Home/Away"), s("Home")));
  ASSERT_TRUE(made.rename(s("Home/Away"), s("Final")));
  EXPECT_EQ(made.thumbnailSet(), made.named(s("Final")));
  EXPECT_EQ(made.freeName(s("Final")), s("Final 2"));
  const QString longest(ValueSets::longestName, u'x');
  ASSERT_TRUE(made.add({longest, {}}));
  EXPECT_TRUE(ValueSets::checkName(made.freeName(longest)));
  EXPECT_FALSE(made.remove(s("Home/Away")));
  EXPECT_TRUE(made.remove(s("Final")));
  EXPECT_TRUE(made.thumbnailName().isEmpty());
  for (const char* name : {"", "  ", "two\nlines", " a", "a ", "a\tb", "./a", "a\u2028b", "\x7f"}) {
    EXPECT_FALSE(made.add(set(name))) << name;
    EXPECT_FALSE(made.rename(s("Home"), s(name))) << name;
  }
  EXPECT_FALSE(made.add({longest + u'x', {}}));
}

TEST(ValueSets, ComeBackFromTheirFile) {
  ValueSets made = sets({set("B", "line\nend"), set("A \"q\" / \\")});
  ASSERT_TRUE(made.put({s("B"),
                        {{s("n"), 1.5},
                         {s("yes"), true},
                         {s("list"), QJsonDocument::fromJson("[1, {\"a\": null}]").array()}}}));
  ASSERT_TRUE(made.setThumbnailName(s("B")));
  const auto read = ValueSets::fromJson(made.toJson(), s("Values.json"));
  ASSERT_TRUE(read) << read.error().text().toStdString();
  EXPECT_EQ(*read, made);
  EXPECT_EQ(*ValueSets::fromJson(ValueSets().toJson(), QString()), ValueSets());
}

TEST(ValueSets, DamagedFilesSayWhatIsWrong) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "illegal value"},
      {"{\"version\": 1, \"sets\": [", "byte "},
      {"[]", "holds no sets"},
      {"{\"sets\": []}", "holds no sets"},
      {"{\"version\": 1, \"sets\": {}}", "holds no sets"},
      {"{\"version\": 2, \"sets\": []}", "later version"},
      {"{\"version\": 1, \"sets\": [{\"name\": \"a\"}]}", "set 1"},
      {"{\"version\": 1, \"sets\": [{\"name\": \"a\", \"values\": {}}, 5]}", "set 2"},
      {"{\"version\": 1, \"sets\": [{\"name\": \"a\\nb\", \"values\": {}}]}", "line ends"},
      {"{\"version\": 1, \"sets\": [{\"name\": \"a\", \"values\": {}}, "
       "{\"name\": \"a\", \"values\": {}}]}",
       "two sets"},
      {"{\"version\": 1, \"sets\": [], \"thumbnail\": \"a\"}", "'a'"},
      {"{\"version\": 1, \"sets\": [], \"thumbnail\": 1}", "thumbnail"}};
  for (const auto& [text, complaint] : cases) {
    const auto read = ValueSets::fromJson(text, s("/x/Values.json"));
    ASSERT_FALSE(read) << text;
    EXPECT_THAT(read.error().text().toStdString(), HasSubstr(complaint)) << text;
    EXPECT_EQ(read.error().file, s("/x/Values.json"));
  }
}

TEST(ValueSets, ChangesOfTwoComeTogether) {
  const ValueSets before = sets({set("A"), set("B"), set("C"), set("D")});
  ValueSets mine = before;
  ASSERT_TRUE(mine.put(set("A", "mine")));
  mine.remove(s("C"));
  ASSERT_TRUE(mine.add(set("M")));
  ValueSets theirs = before;
  ASSERT_TRUE(theirs.put(set("B", "theirs")));
  theirs.remove(s("D"));
  ASSERT_TRUE(theirs.add(set("T")));
  ASSERT_TRUE(theirs.setThumbnailName(s("B")));
  const ValueSets both = ValueSets::merged(before, mine, theirs);
  EXPECT_THAT(contents(both), ElementsAre("A=mine", "B=theirs", "M=x", "T=x"));
  EXPECT_EQ(both.thumbnailName(), s("B"));
  EXPECT_EQ(ValueSets::merged(before, before, theirs), theirs);
  EXPECT_EQ(ValueSets::merged(before, mine, before), mine);

  // What both changed is there twice; what one removed and the other changed stays.
  ASSERT_TRUE(theirs.put(set("A", "theirs")));
  ASSERT_TRUE(theirs.put(set("C", "theirs")));
  ASSERT_TRUE(mine.put(set("D", "mine")));
  EXPECT_THAT(contents(ValueSets::merged(before, mine, theirs)),
              ElementsAre("A=mine", "B=theirs", "D=mine", "M=x", "A 2=theirs", "C=theirs", "T=x"));
  ASSERT_TRUE(mine.setThumbnailName(s("A")));
  EXPECT_EQ(ValueSets::merged(before, mine, theirs).thumbnailName(), s("A"));
}

}  // namespace

}  // namespace playout
