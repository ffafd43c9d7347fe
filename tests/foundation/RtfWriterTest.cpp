#include "foundation/rtf/RtfWriter.h"

#include <gtest/gtest.h>

#include <QTextBlock>
#include <QTextCursor>
#include <random>

#include "RtfTools.h"
#include "foundation/rtf/RtfReader.h"

namespace foundation {

namespace {

/// Documents of random styles that RTF can hold in full; the same for the same seed.
class RandomText {
 public:
  explicit RandomText(quint32 seed) : m_random(seed) {}

  [[nodiscard]] std::unique_ptr<QTextDocument> document() {
    auto document = std::make_unique<QTextDocument>();
    QTextCursor cursor(document.get());
    const int paragraphs = upTo(5) + 1;
    for (int i = 0; i < paragraphs; ++i) {
      if (i > 0) cursor.insertBlock();
      cursor.setBlockFormat(paragraphFormat());
      cursor.setBlockCharFormat(characterFormat());
      for (int run = upTo(4); run > 0; --run) cursor.insertText(text(), characterFormat());
    }
    if (document->isEmpty()) cursor.insertText(QStringLiteral("x"), characterFormat());
    return document;
  }

 private:
  int upTo(int limit) { return static_cast<int>(m_random() % static_cast<quint32>(limit)); }
  bool chance() { return upTo(4) == 0; }
  template <typename T, size_t size>
  T anyOf(const T (&values)[size]) {
    return values[upTo(static_cast<int>(size))];
  }

  QString text() {
    static const QString pieces[] = {QStringLiteral("word"),
                                     QStringLiteral(" "),
                                     QStringLiteral("\t"),
                                     QStringLiteral("\\{b};"),
                                     QStringLiteral("Grüße"),
                                     QStringLiteral("مرحبا"),
                                     QStringLiteral("😀👩‍👩‍👧🏳️‍🌈"),
                                     QStringLiteral("日本"),
                                     QStringLiteral("\u2028"),
                                     QStringLiteral("\u00A0\u2011\u00AD—"),
                                     QStringLiteral("-1 0?'41")};
    QString text;
    for (int i = upTo(6) + 1; i > 0; --i) text += anyOf(pieces);
    return text;
  }

  QColor color() { return QColor(upTo(256), upTo(256), upTo(256), chance() ? upTo(256) : 255); }

  QTextCharFormat characterFormat() {
    using Format = QTextCharFormat;
    Format format;
    format.setFontFamilies({anyOf(
        {QStringLiteral("Inter"), QStringLiteral("Noto Sans \u65E5"), QStringLiteral("{A\\b}")})});
    format.setFontPointSize((upTo(200) + 1) / 2.0);
    if (chance()) format.setFontWeight(QFont::Bold);
    if (chance()) format.setFontItalic(true);
    if (chance()) format.setFontStrikeOut(true);
    if (chance()) format.setForeground(color());
    if (chance()) format.setBackground(color());
    if (chance()) format.setUnderlineColor(color());
    if (chance()) format.setFontCapitalization(anyOf({QFont::AllUppercase, QFont::SmallCaps}));
    if (chance())
      format.setVerticalAlignment(anyOf({Format::AlignSuperScript, Format::AlignSubScript}));
    if (chance())
      format.setUnderlineStyle(
          anyOf({Format::SingleUnderline, Format::DashUnderline, Format::DotLine,
                 Format::DashDotLine, Format::DashDotDotLine, Format::WaveUnderline}));
    return format;
  }

  QTextBlockFormat paragraphFormat() {
    QTextBlockFormat format;
    if (chance()) format.setLayoutDirection(anyOf({Qt::LeftToRight, Qt::RightToLeft}));
    const Qt::Alignment side = anyOf({Qt::AlignLeft, Qt::AlignRight});
    if (chance())
      format.setAlignment(anyOf({Qt::AlignHCenter, Qt::AlignJustify}));
    else if (chance())
      format.setAlignment(format.layoutDirection() == Qt::RightToLeft ? side | Qt::AlignAbsolute
                                                                      : side);
    if (chance()) format.setLeftMargin(upTo(100) / 4.0);
    if (chance()) format.setTextIndent(upTo(100) - 50);
    if (chance()) format.setBottomMargin(upTo(100));
    return format;
  }

  std::mt19937 m_random;
};

}  // namespace

TEST(RtfWriter, WritesTheSameBytesForTheSameText) {
  QTextDocument document;
  document.setDefaultFont(QFont(QStringLiteral("Inter"), 30));
  QTextCursor cursor(&document);
  QTextCharFormat red;
  red.setForeground(QColor(255, 0, 0));
  red.setFontWeight(QFont::Black);
  QTextCharFormat faint;
  faint.setBackground(QColor(0, 0, 255, 51));
  faint.setFontFamilies({QStringLiteral("Größe;")});
  cursor.insertText(QStringLiteral("{a}\t"), red);
  cursor.insertText(QStringLiteral("é😀"), faint);
  QTextBlockFormat centered;
  centered.setAlignment(Qt::AlignHCenter);
  cursor.insertBlock(centered, {});
  EXPECT_EQ(RtfWriter::write(document).toStdString(),
            "{\\rtf1\\ansi\\ansicpg1252"
            "{\\fonttbl{\\f1\\fnil\\fcharset0 Inter;}"
            "{\\f2\\fnil\\fcharset0 Gr\\u246\\'3f\\u223\\'3fe;}}\n"
            "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}\n"
            "{\\*\\expandedcolortbl;\\cssrgb\\c100000\\c0\\c0\\c100000;"
            "\\cssrgb\\c0\\c0\\c100000\\c20000;}\n"
            "\\pard\\plain{\\f1\\fs60\\b\\cf1 \\{a\\}\\tab }"
            "{\\f2\\fs60\\cb2\\chcbpat2 \\u233\\'3f\\u-10179\\'3f\\u-8704\\'3f}\\par\n"
            "\\pard\\plain\\qc\\f1\\fs60}");
}

TEST(RtfWriter, WritesNothingForAnEmptyText) {
  EXPECT_EQ(RtfWriter::write(QTextDocument()), QByteArray());
  EXPECT_EQ(describedRtf({}), described(QTextDocument()));
}

TEST(RtfWriter, LeavesOutWhatOnlyEditorsShow) {
  QTextDocument document;
  QTextCursor cursor(&document);
  QTextCharFormat marked;
  marked.setUnderlineStyle(QTextCharFormat::SpellCheckUnderline);
  cursor.insertText(QStringLiteral("a"), marked);
  cursor.insertImage(QStringLiteral("none.png"));
  cursor.insertText(QStringLiteral("b"), {});
  const QByteArray rtf = RtfWriter::write(document);
  EXPECT_FALSE(rtf.contains("\\ul"));
  EXPECT_EQ(textOf(rtf), "ab");
}

TEST(RtfWriter, SidesOfRightToLeftTextsStayWhereTheyAre) {
  QTextDocument document;
  QTextBlockFormat format;
  format.setLayoutDirection(Qt::RightToLeft);
  format.setAlignment(Qt::AlignLeft);  // where such a text begins: at the right
  QTextCursor(&document).insertBlock(format);
  EXPECT_TRUE(RtfWriter::write(document).contains("\\rtlpar\\qr"));
}

TEST(RtfWriter, WhatIsReadAgainIsTheSame) {
  for (quint32 seed = 0; seed < 400; ++seed) {
    const std::unique_ptr<QTextDocument> document = RandomText(seed).document();
    const QByteArray rtf = RtfWriter::write(*document);
    const auto isAscii = [](char c) { return (c >= ' ' && c < 0x7F) || c == '\n'; };
    ASSERT_TRUE(std::all_of(rtf.begin(), rtf.end(), isAscii));
    ASSERT_EQ(describedRtf(rtf), described(*document)) << "seed " << seed << ": " << rtf.data();
  }
}

}  // namespace foundation
