#pragma once

#include <vector>

#include "foundation/rtf/RtfCodePage.h"
#include "foundation/rtf/RtfTokenizer.h"
#include "foundation/rtf/detail/RtfCharacterStyle.h"
#include "foundation/rtf/detail/RtfColorTable.h"
#include "foundation/rtf/detail/RtfDocumentBuilder.h"
#include "foundation/rtf/detail/RtfFontTable.h"
#include "foundation/rtf/detail/RtfParagraphStyle.h"

namespace foundation::detail {

/// Carries out the tokens of one RTF text.
class RtfInterpreter {
 public:
  /// Bytes and document must live as long as the interpreter; the document is empty.
  RtfInterpreter(QByteArrayView bytes, QTextDocument& document);
  void run();

 private:
  /// What the text of a group is for.
  enum class Destination { Body, FontTable, ColorTable, ExpandedColorTable, Skipped };
  /// What a group's end brings back.
  struct State {
    Destination destination = Destination::Body;
    RtfCharacterStyle character;
    RtfParagraphStyle paragraph;
    int fallbackLength = 1;  ///< characters that follow `\u` for readers that do not know it
  };

  [[nodiscard]] static std::optional<Destination> destinationOfWord(QLatin1String word);
  /// Leaves out what stands in for a Unicode character; true when nothing of the token is left.
  [[nodiscard]] bool isFallback(RtfToken& token);
  [[nodiscard]] bool skipText(RtfToken& token);
  void handle(const RtfToken& token);
  void beginGroup();
  void endGroup();
  void handleWord(const RtfToken& token);
  [[nodiscard]] bool enterDestination(QLatin1String word, bool isFirst, bool isIgnorable);
  void handleBodyWord(const RtfToken& token);
  void handleDocumentWord(QLatin1String word, std::optional<int> parameter);
  void handleSymbol(char symbol);
  void handleText(QByteArrayView text);
  void appendUnicode(int number);
  void flushBytes();
  void append(const QString& text);
  void finish();

  [[nodiscard]] State& state() { return m_states.back(); }
  [[nodiscard]] int codePage() const;
  [[nodiscard]] RtfFontTable::Font currentFont(const RtfCharacterStyle& style) const;
  [[nodiscard]] const QTextCharFormat& format();
  [[nodiscard]] QTextCharFormat makeFormat(const RtfCharacterStyle& style) const;

  RtfTokenizer m_tokenizer;
  QTextDocument& m_document;
  RtfDocumentBuilder m_builder;
  RtfCodePages m_codePages;
  RtfFontTable m_fonts;
  RtfColorTable m_colors;
  std::vector<State> m_states{State()};
  qint64 m_deeperGroups = 0;  ///< open groups beyond the depth that is followed
  QByteArray m_bytes;         ///< not decoded yet: characters may be cut into several tokens
  int m_documentPage = RtfCodePage::western;
  int m_defaultFont = 0;
  int m_fallbackLeft = 0;
  bool m_rawTextIsUtf8;
  bool m_isIgnorable = false;
  bool m_isGroupStart = false;
  bool m_isFinished = false;
  std::optional<RtfCharacterStyle> m_formatStyle;  ///< what m_format was made of
  QTextCharFormat m_format;
};

}  // namespace foundation::detail
