#include "runtime/StructureMember.h"
#include "support/SinglePatch.h"

using foundation::PropertyArray;
using foundation::PropertyValue;
using support::GraphBuilder;
using support::outputOf;
using Dictionary = GraphBuilder::Dictionary;

namespace {

const PropertyArray list = {u"a", u"b", u"c", u"d"};
const Dictionary keyed = {{QStringLiteral("X"), 1.5}, {QStringLiteral("Y"), u"two"}};

Dictionary input(const PropertyValue& structure) {
  return {{QStringLiteral("inputStructure"), structure}};
}

QString joined(const runtime::Value& structure) {
  QStringList parts;
  for (const runtime::StructureMember& member : structure.toStructure().members())
    parts.append(member.key + member.value.toString());
  return parts.join(QLatin1Char(' '));
}

}  // namespace

TEST(StructurePatches, MembersByIndexKeyAndKeyAtIndex) {
  const auto member = [](const char* identifier, const PropertyValue& structure, const char* port,
                         const PropertyValue& choice) {
    Dictionary inputs = input(structure);
    inputs.insert(QString::fromLatin1(port), choice);
    return outputOf(QStringLiteral("QCStructureMember") + QString::fromLatin1(identifier),
                    QStringLiteral("outputMember"), inputs);
  };
  EXPECT_EQ(member(":index", list, "inputIndex", 2).toString(), QStringLiteral("c"));
  EXPECT_EQ(member("", list, "inputIndex", 0).toString(), QStringLiteral("a"));
  EXPECT_TRUE(member(":index", list, "inputIndex", 4).isEmpty());
  EXPECT_TRUE(member(":index", PropertyValue(), "inputIndex", 0).isEmpty());
  EXPECT_EQ(member(":key", keyed, "inputKey", u"X").toNumber(), 1.5);
  EXPECT_TRUE(member(":key", keyed, "inputKey", u"Z").isEmpty());
  EXPECT_EQ(member(":keyAtIndex", keyed, "inputIndex", 1).toString(), QStringLiteral("Y"));
  EXPECT_TRUE(member(":keyAtIndex", keyed, "inputIndex", 2).isEmpty());
}

TEST(StructurePatches, CountRangeAndReverse) {
  EXPECT_EQ(outputOf(QStringLiteral("QCStructureCount"), QStringLiteral("outputCount"), input(list))
                .toIndex(),
            4U);
  const auto range = [](qint64 index, qint64 length) {
    Dictionary inputs = input(list);
    inputs.insert(QStringLiteral("inputIndex"), index);
    inputs.insert(QStringLiteral("inputLength"), length);
    return joined(
        outputOf(QStringLiteral("QCStructureRange"), QStringLiteral("outputStructure"), inputs));
  };
  EXPECT_EQ(range(1, 2), QStringLiteral("b c"));
  EXPECT_EQ(range(3, std::numeric_limits<qint64>::max()), QStringLiteral("d"));
  EXPECT_EQ(range(9, 1), QString());
  EXPECT_EQ(joined(outputOf(QStringLiteral("QCStructureReverse"), QStringLiteral("outputStructure"),
                            input(keyed))),
            QStringLiteral("Ytwo X1.5"));
}

TEST(StructurePatches, SortOrdersByKeyOrByTheMembersAndIsStable) {
  const auto row = [](const PropertyValue& rank, const char16_t* name) {
    return Dictionary{{QStringLiteral("n"), name}, {QStringLiteral("r"), rank}};
  };
  const auto sorted = [](const PropertyArray& members, const char16_t* key) {
    Dictionary inputs = input(members);
    inputs.insert(QStringLiteral("inputSortingKey"), key);
    return outputOf(QStringLiteral("QCStructureSort"), QStringLiteral("outputStructure"), inputs);
  };
  const auto names = [](const runtime::Value& rows) {
    QString text;
    for (const runtime::StructureMember& member : rows.toStructure().members())
      text += member.value.toStructure().value(QStringLiteral("n")).toString();
    return text;
  };
  const PropertyArray rows = {row(10, u"a"), row(9.5, u"b"), row(u"x", u"c"), row(10, u"d"),
                              row(std::numeric_limits<double>::quiet_NaN(), u"e")};
  EXPECT_EQ(names(sorted(rows, u"r")), QStringLiteral("ebadc"));
  EXPECT_EQ(names(sorted(rows, u"-r")), QStringLiteral("cadbe"));
  EXPECT_EQ(names(sorted(rows, u"missing")), QStringLiteral("abcde"));
  EXPECT_EQ(joined(sorted({u"b", 10, 9, u"a"}, u"")), QStringLiteral("9 10 a b"));
}
