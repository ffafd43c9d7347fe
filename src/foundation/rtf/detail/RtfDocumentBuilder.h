#pragma once

#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <optional>

namespace foundation::detail {

/// Fills an empty document from its start. Neighbouring texts of one format become one run.
class RtfDocumentBuilder {
 public:
  /// The document stays the caller's and must live as long as the builder.
  explicit RtfDocumentBuilder(QTextDocument& document);

  /// Control characters and what Qt keeps for its own use are left out; halves of surrogate pairs
  /// become U+FFFD, unless the other half follows in the same format.
  void append(QStringView text, const QTextCharFormat& format);
  /// The same for a text of several paragraphs, which end with any of the usual line ends.
  void appendParagraphs(QStringView text, const QTextCharFormat& format,
                        const QTextBlockFormat& block);
  /// The format of the paragraph's end counts where the paragraph is empty.
  void endParagraph(const QTextBlockFormat& block, const QTextCharFormat& end);
  /// To be called once, after everything else. The last paragraph ends with the document: if it has
  /// text, the paragraph format at that text counts, else the given one.
  void finish(const QTextBlockFormat& block, const QTextCharFormat& end);

  /// Nothing more will be taken: the document is as large as documents may be.
  [[nodiscard]] bool isFull() const {
    return m_characters >= maximumCharacters || m_paragraphs >= maximumParagraphs;
  }

 private:
  static constexpr qsizetype maximumCharacters = 4'000'000;
  static constexpr qsizetype maximumParagraphs = 100'000;

  void flush();
  void formatParagraph(const QTextBlockFormat& block, const QTextCharFormat& end);

  QTextCursor m_cursor;
  QString m_pending;
  QTextCharFormat m_pendingFormat;
  std::optional<QTextBlockFormat> m_blockOfText;
  qsizetype m_characters = 0;
  qsizetype m_paragraphs = 1;
};

}  // namespace foundation::detail
