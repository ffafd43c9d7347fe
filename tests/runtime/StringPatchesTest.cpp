#include "support/SinglePatch.h"

using support::GraphBuilder;
using support::outputOf;
using Dictionary = GraphBuilder::Dictionary;

namespace {

QString text(const QString& className, const Dictionary& inputs, const Dictionary& state = {}) {
  return outputOf(className, QStringLiteral("outputString"), inputs, state).toString();
}

Dictionary format(const QString& pattern) {
  return {{QStringLiteral("format"), pattern}};
}

}  // namespace

TEST(StringPatches, PrinterFillsPlacesAndTakesNumbersAsTheirShortestText) {
  GraphBuilder graph;
  const QString length =
      graph.node(QStringLiteral("QCStringLength"), {}, {{QStringLiteral("inputString"), u"four"}});
  const QString printer =
      graph.node(QStringLiteral("QCStringFormat:printer"), format(QStringLiteral("%@/100%% %@%")),
                 {{QStringLiteral("argument_2"), u"Größe"}});
  graph.connect(length, QStringLiteral("outputLength"), printer, QStringLiteral("argument_1"));
  graph.publishOutput(printer, QStringLiteral("outputString"), QStringLiteral("text"));
  const auto renderer = graph.renderer();
  static_cast<void>(renderer->renderAtTime(0, QSize(4, 4)));
  EXPECT_EQ(renderer->valueForOutputKey(QStringLiteral("text")).toString(),
            QStringLiteral("4/100% Größe%"));
}

TEST(StringPatches, ScannerSplitsAlongTheLiterals) {
  struct Case {
    const char16_t* format;
    const char16_t* text;
    QStringList found;
  };
  const Case cases[] = {
      {u"%@:%@", u"10:45", {QStringLiteral("10"), QStringLiteral("45")}},
      {u"<%@,%@>", u"<a,b,c>", {QStringLiteral("a"), QStringLiteral("b,c")}},
      {u"%@:%@", u"1045", {QString(), QString()}},
      {u"(%@)", u"(open", {QString()}},
      {u"ab%@b", u"ab", {QString()}},
  };
  for (const Case& c : cases)
    for (qsizetype i = 0; i < c.found.size(); ++i)
      EXPECT_EQ(
          outputOf(QStringLiteral("QCStringFormat:scanner"),
                   QStringLiteral("argument_%1").arg(i + 1),
                   {{QStringLiteral("inputString"), c.text}}, format(QString::fromUtf16(c.format)))
              .toString(),
          c.found[i]);
}

TEST(StringPatches, CaseReplaceRangeAndTimecode) {
  const auto cased = [](int mode) {
    return text(QStringLiteral("QCStringCase"),
                {{QStringLiteral("inputString"), u"the bBC at ÉCOLE"},
                 {QStringLiteral("inputMode"), mode}});
  };
  EXPECT_EQ(cased(0), QStringLiteral("The Bbc At École"));
  EXPECT_EQ(cased(1), QStringLiteral("THE BBC AT ÉCOLE"));
  EXPECT_EQ(cased(2), QStringLiteral("the bbc at école"));

  const auto replaced = [](bool sensitive) {
    return text(QStringLiteral("QCStringReplace"),
                {{QStringLiteral("inputSourceString"), u"a.A.a"},
                 {QStringLiteral("inputSearchString"), u"a"},
                 {QStringLiteral("inputReplaceString"), u"x"},
                 {QStringLiteral("inputCaseSensitive"), sensitive}});
  };
  EXPECT_EQ(replaced(true), QStringLiteral("x.A.x"));
  EXPECT_EQ(replaced(false), QStringLiteral("x.x.x"));

  EXPECT_EQ(text(QStringLiteral("QCStringRange"), {{QStringLiteral("inputString"), u"broadcast"},
                                                   {QStringLiteral("inputIndex"), 5},
                                                   {QStringLiteral("inputLength"), 100}}),
            QStringLiteral("cast"));
  EXPECT_EQ(text(QStringLiteral("QCStringMD5"), {{QStringLiteral("inputString"), u"abc"}}),
            QStringLiteral("900150983cd24fb0d6963f7d28e17f72"));
  EXPECT_EQ(text(QStringLiteral("QCStringTimecode"), {{QStringLiteral("inputTime"), 3661.1}}),
            QStringLiteral("01:01:01:03"));
}

TEST(StringPatches, TruncatePutsTheTokenWhereSomethingWent) {
  const auto truncated = [](int direction, int mode, int most) {
    return text(QStringLiteral("QCStringTruncate"),
                {{QStringLiteral("inputString"), u"one two three four"},
                 {QStringLiteral("inputDirection"), direction},
                 {QStringLiteral("inputMode"), mode},
                 {QStringLiteral("inputMax"), most},
                 {QStringLiteral("inputToken"), u"…"}});
  };
  EXPECT_EQ(truncated(0, 0, 4), QStringLiteral("…four"));
  EXPECT_EQ(truncated(1, 0, 5), QStringLiteral("one…ur"));
  EXPECT_EQ(truncated(2, 0, 3), QStringLiteral("one…"));
  EXPECT_EQ(truncated(2, 0, 18), QStringLiteral("one two three four"));
  EXPECT_EQ(truncated(0, 1, 2), QStringLiteral("…three four"));
  EXPECT_EQ(truncated(1, 1, 2), QStringLiteral("one…four"));
  EXPECT_EQ(truncated(2, 1, 0), QStringLiteral("…"));
}

TEST(StringPatches, CompareTellsTheOrder) {
  const auto compared = [](const char16_t* a, const char16_t* b) {
    return outputOf(QStringLiteral("QCStringCompare"), QStringLiteral("outputResult"),
                    {{QStringLiteral("inputString1"), a}, {QStringLiteral("inputString2"), b}})
        .toIndex();
  };
  EXPECT_EQ(compared(u"a", u"a"), 0U);
  EXPECT_EQ(compared(u"a", u"b"), 1U);
  EXPECT_EQ(compared(u"b", u"a"), 2U);
}

TEST(StringPatches, ComponentsKeepEmptyPartsAndTheWholeWithoutSeparator) {
  const auto components = [](const char16_t* separator) {
    const auto list =
        outputOf(QStringLiteral("QCStringComponents"), QStringLiteral("outputComponents"),
                 {{QStringLiteral("inputString"), u"a,,b"},
                  {QStringLiteral("inputSeparator"), separator}})
            .toStructure();
    QStringList parts;
    for (qsizetype i = 0; i < list.size(); ++i) parts.append(list.at(i).toString());
    return parts;
  };
  EXPECT_EQ(components(u","), QStringList({QStringLiteral("a"), QString(), QStringLiteral("b")}));
  EXPECT_EQ(components(u""), QStringList(QStringLiteral("a,,b")));
}

TEST(StringPatches, TextsThatWouldGrowWithoutEndAreCut) {
  // Forty printers in a row, each doubling the text.
  GraphBuilder graph;
  QString last;
  for (int i = 0; i < 40; ++i) {
    const QString node =
        graph.node(QStringLiteral("QCStringFormat:printer"), format(QStringLiteral("%@%@")),
                   {{QStringLiteral("argument_1"), u"x"}, {QStringLiteral("argument_2"), u"x"}});
    for (const char* argument : {"argument_1", "argument_2"})
      if (i > 0)
        graph.connect(last, QStringLiteral("outputString"), node, QString::fromLatin1(argument));
    last = node;
  }
  graph.publishOutput(last, QStringLiteral("outputString"), QStringLiteral("text"));
  const auto renderer = graph.renderer();
  static_cast<void>(renderer->renderAtTime(0, QSize(4, 4)));
  EXPECT_EQ(renderer->valueForOutputKey(QStringLiteral("text")).toString().size(), 16'000'000);
}

namespace {

/// What a formatter's pattern makes of one value.
struct Formatted {
  const char16_t* pattern;
  double value;
  const char16_t* expected;
};

template <size_t Count>
void expectFormatted(const char* formatter, const char* input, const Formatted (&cases)[Count],
                     Dictionary state = {}) {
  for (const Formatted& c : cases) {
    state.insert(QStringLiteral("format"), QString::fromUtf16(c.pattern));
    EXPECT_EQ(text(QString::fromLatin1(formatter), {{QString::fromLatin1(input), c.value}}, state),
              QString::fromUtf16(c.expected))
        << QString::fromUtf16(c.pattern).toStdString();
  }
}

}  // namespace

TEST(StringPatches, NumberFormatterFollowsPatternsAndStyles) {
  const Formatted cases[] = {
      {u"000.00000", 3.14159265, u"003.14159"},
      {u"000.00000", -1, u"-001.00000"},
      {u"#,##0.00", 1234567.891, u"1,234,567.89"},
      {u"#,##0.00", 12, u"12.00"},
      {u"#,##,##0", 12345678, u"1,23,45,678"},
      {u"0.##", 2, u"2"},
      {u"0.0#", 2.001, u"2.0"},
      {u"#.##", 0.5, u".5"},
      {u"#", 0, u"0"},
      {u"0%", 0.256, u"26%"},
      {u"0.00;(0.00)", -5.5, u"(5.50)"},
      {u"¤0.00", 3, u"$3.00"},
      {u"0 'o''clock'", 7, u"7 o'clock"},
      {u"'#'0", 7, u"#7"},
      {u"0.00E0", 12345, u"1.23E4"},
      {u"0.##E+00", 0.00012, u"1.2E-04"},
      {u"0.0E0", 9.99, u"1.0E1"},
      {u"0", std::numeric_limits<double>::quiet_NaN(), u"NaN"},
      {u"points", 7, u"points7"},
  };
  expectFormatted("QCNumberFormatter", "inputNumber", cases);
  const char* const byStyle[] = {
      "-1234",     "-1,234.5",  "-$1,234.50",
      "-123,450%", "-1.2345E3", "minus one thousand two hundred thirty-four point five"};
  for (int style = 0; style < 6; ++style)
    EXPECT_EQ(text(QStringLiteral("QCNumberFormatter"), {{QStringLiteral("inputNumber"), -1234.5}},
                   {{QStringLiteral("style"), style}}),
              QString::fromLatin1(byStyle[style]));
}

TEST(StringPatches, DateFormatterFollowsPatternsStylesAndZones) {
  constexpr double time = 352566367.89;  // 2012-03-04 15:06:07.89
  const Dictionary when = {{QStringLiteral("inputTime"), time}};
  const Formatted cases[] = {
      {u"HH:mm:ss", time, u"15:06:07"},
      {u"h:mm a", time, u"3:06 PM"},
      {u"EEEE d MMMM yyyy", time, u"Sunday 4 March 2012"},
      {u"EEE, MMM dd yy", time, u"Sun, Mar 04 12"},
      {u"hh 'o''clock' a, z", time, u"03 o'clock PM, UTC"},
      {u"SSS|S|D|w|Q", time, u"890|8|64|10|1"},
      {u"''yy '", time, u"'12 "},
      {u"Z "
       u"XX"
       u"X",
       time, u"+0000 +00:00"},
  };
  expectFormatted("QCDateFormatter", "inputTime", cases, {{QStringLiteral("zoneName"), u"UTC"}});
  EXPECT_EQ(text(QStringLiteral("QCDateFormatter"), when,
                 {{QStringLiteral("zoneName"), u"America/New_York"},
                  {QStringLiteral("dateStyle"), 2},
                  {QStringLiteral("timeStyle"), u"Medium"}}),
            QStringLiteral("Mar 4, 2012 10:06:07 AM"));
  EXPECT_EQ(
      text(QStringLiteral("QCDateFormatter"), when,
           {{QStringLiteral("zoneName"), u"GMT+02:00"}, {QStringLiteral("format"), u"HH:mm Z"}}),
      QStringLiteral("17:06 +0200"));
}

TEST(StringPatches, DateFormatterSurvivesTimesOutOfReach) {
  for (const double time : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN(),
                            std::numeric_limits<double>::infinity()})
    EXPECT_FALSE(text(QStringLiteral("QCDateFormatter"), {{QStringLiteral("inputTime"), time}},
                      format(QStringLiteral("yyyyyyyyyyyyyyyyyyyyyyyyyyyyyy-MM-dd zzzz")))
                     .isEmpty());
}
