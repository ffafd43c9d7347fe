#include "foundation/rtf/RtfReader.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "RtfDialects.h"
#include "RtfTools.h"
#include "foundation/rtf/RtfWriter.h"

namespace foundation {

namespace {

/// The characters of a document with the given body.
std::string body(const QByteArray& rtf) {
  return textOf("{\\rtf1\\ansi " + rtf + "}");
}

std::string repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

}  // namespace

TEST(RtfReader, ReadsTheDialectOfTheOldPlatform) {
  EXPECT_EQ(describedRtf(cocoaRtf()),
            "center |b fg#fffb0207 24 Helvetica-Bold:Straße |"
            "fg#fffb0207 24 Helvetica:live \u20AC5\n"
            "center |fg#800000ff 24 Helvetica:half\n"
            "(24 Helvetica)\n"
            "right |i strike ul1 12 Inter:end\n");
}

TEST(RtfReader, ReadsTheDialectOfTheBigWordProcessor) {
  EXPECT_EQ(describedRtf(wordRtf()),
            "ltr justify length4=8 |b ul1 16 Arial:Head |16 Arial:\u201Cline\u201D\n"
            "ltr center |11 Calibri:x|super 11 Calibri:2|11 Calibri: site\n"
            "rtl right absolute |14 Arial:\u0645\u0631\u062D\u0628\u0627\n"
            "|12 Times New Roman:a\tb\t\n"
            "(12 Times New Roman)\n");
}

TEST(RtfReader, ReadsTheDialectOfTheFreeOffice) {
  EXPECT_EQ(describedRtf(officeRtf()),
            "ltr left |bg#ffffff00 12 Liberation Serif:marked|12 Liberation Serif: я\n"
            "ltr left length0=36 length1=10 length2=-18 |ul6 ulc#ffff0000 12 Liberation Serif:wave"
            "<br>more\n");
}

TEST(RtfReader, DecodesBytesByTheFontsCharacterSet) {
  const QByteArray fonts =
      "{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset238 B;}{\\f2\\fcharset204 C;}"
      "{\\f3\\fcharset128 \\'82\\'6c\\'82\\'72;}{\\f4\\fcharset77 E;}{\\f5\\fcharset2 Symbol;}"
      "{\\f6 F;}{\\f7\\fcharset178 G;}}";
  const auto in = [&](const QByteArray& text) {
    return textOf("{\\rtf1\\mac" + fonts + text + "}");
  };
  EXPECT_EQ(in("\\f0 \\'e4\\'80"), "ä€");
  EXPECT_EQ(in("\\f1 \\'b3\\'e8"), "łč");
  EXPECT_EQ(in("\\f2 \\'cf\\'f0\\'e8"), "При");
  EXPECT_EQ(in("\\f3 \\'93\\'fa\\'96{\\'7b}\\'83A"), "日\uFFFD{ア");
  EXPECT_EQ(in("\\f4 \\'8a"), "ä");
  EXPECT_EQ(in("\\f5 \\'b7\\'41"), "•\uF041");
  EXPECT_EQ(in("\\f6 \\'8a{\\f0 \\'8a}\\'8a"), "äŠä");
  EXPECT_EQ(in("\\f7 \\'e3"), "\u0645");
  EXPECT_EQ(describedRtf("{\\rtf1" + fonts + "\\f3 x}"), "|12 ＭＳ:x\n");
  EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg1251 \\'df \\'zz\\'4"), "Я zz");
  EXPECT_EQ(textOf("{\\rtf1\\ansi\\ansicpg99999 \\'e4}"), "ä");
}

TEST(RtfReader, PrefersUnicodeToItsFallback) {
  EXPECT_EQ(body("\\u233?t\\u233\\'e9 \\u8364 EUR"), "été €UR");
  EXPECT_EQ(body("\\uc0\\u228 a{\\uc3\\u246 oe-x}\\u252 u"), "äaöxüu");
  EXPECT_EQ(body("\\u-10179?\\u-8704?\\u128512?"), "😀😀");
  EXPECT_EQ(body("{\\b\\u-10179?}\\u-8704?"), "\uFFFD\uFFFD");
  EXPECT_EQ(body("\\uc2\\u8212\\emdash-x\\u8212{}ab"), "—x—ab");
  EXPECT_EQ(body("\\u65\\u66\\u67?\\par d"), "ABC\nd");
  EXPECT_EQ(body("\\uc4\\u65\\bin3 {}}\\'aa\\~zend"), "Aend");
  EXPECT_EQ(body("\\u-99999?\\u1114112?x"), "\uFFFD\uFFFDx");
}

TEST(RtfReader, TakesUnescapedUnicodeAsItIs) {
  EXPECT_EQ(textOf("{\\rtf1\\ansi Grüße 😀\\u233é!}"), "Grüße 😀é!");
  EXPECT_EQ(textOf("{\\rtf1\\ansi Gr\xFC\xDF}"), "Grüß");
}

TEST(RtfReader, KnowsSpecialCharacters) {
  EXPECT_EQ(body("a\\~b\\_c\\-d\\emdash\\endash \\bullet \\lquote\\rquote\\ldblquote\\rdblquote "),
            "a\u00A0b\u2011c\u00ADd—–•‘’“”");
  EXPECT_EQ(body("\\\\ \\{\\} a\\tab b\\line c\\\nd\\\r\ne\\'0d\\'0af"),
            "\\ {} a\tb\u2028c\nd\ne\nf");
  EXPECT_EQ(body("one\ntwo\r\nthree\t\\u0?\\u65535?\\u65532?\\'01!"), "onetwothree\t!");
}

TEST(RtfReader, LeavesOutWhatIsNoText) {
  EXPECT_EQ(body("{\\stylesheet{\\s0 Normal;}}{\\info{\\title T}{\\author A}}{\\header h}{\\*\\gen "
                 "g;{x}}a{\\pict\\pngblip 89504e47{\\bin4 }}}}}}b{\\v hidden}d"
                 "{\\deleted no}{\\v0 e}"),
            "abde");
  EXPECT_EQ(body("{\\field{\\*\\fldinst{HYPERLINK \"x\"}}{\\fldrslt link}}{\\object{\\result r}}"),
            "link");
  EXPECT_EQ(body("\\info stray"), "stray");  // hides nothing outside of a group
}

TEST(RtfReader, KeepsUnderlinesAndResets) {
  EXPECT_EQ(
      describedRtf("{\\rtf1\\deff3{\\fonttbl\\f3 Plain;\\f4 Other;}{\\colortbl;\\red255;;}"
                   "\\f4\\fs30\\b\\cf1\\ul a\\cf2 -\\plain b\\uld c\\uldash0 d\\b e\\b0 f\\cf7 g}"),
      "|b ul1 fg#ffff0000 15 Other:a|b ul1 15 Other:-|12 Plain:b|ul3 12 Plain:c|12 Plain:d|"
      "b 12 Plain:e|12 Plain:fg\n");
  EXPECT_EQ(describedRtf("{\\rtf1{\\colortbl\\red1\\green2\\blue3;;}\\fs99999999 a\\fs-1\\cf0 b}"),
            "|fg#ff010203 10000:a|fg#ff010203 0.5:b\n");
}

TEST(RtfReader, ParagraphsKeepWhatHoldsAtTheirEnd) {
  EXPECT_EQ(describedRtf("{\\rtf1{\\qc a}\\qr\\par\\pard b{\\qj c}\\qc\\par{\\pard\\qj d}}"),
            "right |12:a\ncenter |12:bc\njustify |12:d\n");
  EXPECT_EQ(describedRtf("{\\rtf1\\ql\\fs40\\par\\b}"), "left (20)\nleft (b 20)\n");
}

TEST(RtfReader, TakesOtherTextsAsPlain) {
  EXPECT_EQ(textOf("Grüße {\\b}\r\nzwei\n"), "Grüße {\\b}\nzwei\n");
  EXPECT_EQ(textOf("Gr\xFC\xDF"), "Grüß");
  EXPECT_EQ(textOf(QByteArray("a\0b\x1b", 4)), "ab");
  EXPECT_TRUE(RtfReader::read({})->isEmpty());
  EXPECT_EQ(textOf("\xEF\xBB\xBF\n {\\rtf1 x}}} y"), "x");
}

TEST(RtfReader, EveryPrefixGivesABeginningOfTheText) {
  for (const QByteArray& rtf : {cocoaRtf(), wordRtf(), officeRtf()}) {
    const std::string whole = textOf(rtf);
    size_t longest = 0;
    for (qsizetype length = 6; length <= rtf.size(); ++length) {
      const std::string part = textOf(rtf.left(length));
      // The last character may be another: what says which may be cut.
      const size_t same = part.size() < 3 ? 0 : part.size() - 3;
      ASSERT_EQ(part.substr(0, same), whole.substr(0, same))
          << rtf.left(length).right(40).constData() << "\n";
      ASSERT_GE(part.size() + 3, longest);
      longest = qMax(longest, part.size());
    }
    EXPECT_EQ(longest, whole.size());
  }
}

TEST(RtfReader, ChangedBytesDoNoHarm) {
  quint32 random = 7;
  const auto next = [&](qsizetype limit) {
    random = random * 1664525 + 1013904223;
    return static_cast<qsizetype>((random >> 8) % static_cast<quint32>(limit));
  };
  const QByteArray signs("{}\\*;'u-0\xE9");
  for (int round = 0; round < 2000; ++round) {
    QByteArray rtf = round % 2 ? wordRtf() : cocoaRtf();
    for (int change = 0; change < 8; ++change) rtf[next(rtf.size())] = signs[next(signs.size())];
    const QByteArray written = RtfWriter::write(*RtfReader::read(rtf));
    ASSERT_EQ(RtfWriter::write(*RtfReader::read(written)).toStdString(), written.toStdString());
  }
}

TEST(RtfReader, LimitsWhatItTakes) {
  QElapsedTimer timer;
  timer.start();
  const QByteArray deep = QByteArray("{").repeated(300'000);
  EXPECT_EQ(textOf("{\\rtf1 a" + deep + "b" + QByteArray("}").repeated(300'000) + "c}"), "abc");
  EXPECT_EQ(RtfReader::read("{\\rtf1" + QByteArray("\\par").repeated(300'000))->blockCount(),
            100'000);
  EXPECT_EQ(textOf("{\\rtf1 " + QByteArray("{\\b x}y").repeated(50'000) + "}"),
            repeated("xy", 50'000));
  EXPECT_EQ(RtfReader::read(QByteArray("x").repeated(6'000'000))->characterCount(), 4'000'001);
  EXPECT_EQ(body("{\\fonttbl" + QByteArray("\\f1 n").repeated(100'000) + ";}a"), "a");
  EXPECT_EQ(body("\\bin2147483647 x"), "");
  EXPECT_EQ(body("\\b99999999999999999999 a\\u-99999999999999999999?b"), "a\uFFFDb");
  EXPECT_LT(timer.elapsed(), 20'000);  // texts must not be laid out while they are read
}

}  // namespace foundation
