#include "foundation/rtf/detail/RtfDocumentBuilder.h"

#include <QTextBlock>

#include "foundation/rtf/detail/RtfText.h"

namespace foundation::detail {

namespace {

bool isParagraphEnd(QChar c) {
  return c == u'\n' || c == u'\r' || c == QChar::ParagraphSeparator;
}

}  // namespace

RtfDocumentBuilder::RtfDocumentBuilder(QTextDocument& document) : m_cursor(&document) {
  m_cursor.beginEditBlock();  // else the text is laid out for every piece
}

void RtfDocumentBuilder::append(QStringView text, const QTextCharFormat& format) {
  if (isFull() || text.isEmpty()) return;
  if (!m_pending.isEmpty() && format != m_pendingFormat) flush();
  m_pendingFormat = format;
  m_pending += text.left(maximumCharacters - m_characters);
  m_characters += text.size();
}

void RtfDocumentBuilder::appendParagraphs(QStringView text, const QTextCharFormat& format,
                                          const QTextBlockFormat& block) {
  qsizetype start = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (!isParagraphEnd(text[i])) continue;
    append(text.sliced(start, i - start), format);
    endParagraph(block, format);
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    start = i + 1;
  }
  append(text.sliced(start), format);
  if (start < text.size()) m_blockOfText = block;
}

void RtfDocumentBuilder::flush() {
  const QString text = plainRtfText(m_pending);
  m_pending.clear();
  if (!text.isEmpty()) m_cursor.insertText(text, m_pendingFormat);
}

void RtfDocumentBuilder::formatParagraph(const QTextBlockFormat& block,
                                         const QTextCharFormat& end) {
  flush();
  m_cursor.setBlockFormat(block);
  const bool isEmpty = m_cursor.block().length() <= 1;
  m_cursor.setBlockCharFormat(isEmpty ? end : QTextCharFormat());
}

void RtfDocumentBuilder::endParagraph(const QTextBlockFormat& block, const QTextCharFormat& end) {
  if (isFull()) return;
  formatParagraph(block, end);
  m_cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
  ++m_paragraphs;
  m_blockOfText.reset();
}

void RtfDocumentBuilder::finish(const QTextBlockFormat& block, const QTextCharFormat& end) {
  formatParagraph(m_blockOfText.value_or(block), end);
  m_cursor.endEditBlock();
}

}  // namespace foundation::detail
