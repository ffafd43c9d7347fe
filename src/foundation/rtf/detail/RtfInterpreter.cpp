#include "foundation/rtf/detail/RtfInterpreter.h"

#include <QHash>
#include <utility>

#include "foundation/rtf/detail/RtfSymbols.h"

namespace foundation::detail {

using Type = RtfToken::Type;

namespace {

constexpr size_t maximumDepth = 1000;
constexpr size_t rootDepth = 2;  // the state outside of all groups is the first

bool isAscii(QByteArrayView bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; });
}

bool isUtf8Continuation(char c) {
  return (c & 0xC0) == 0x80;
}

}  // namespace

RtfInterpreter::RtfInterpreter(QByteArrayView bytes, QTextDocument& document)
    : m_tokenizer(bytes),
      m_document(document),
      m_builder(document),
      m_rawTextIsUtf8(bytes.isValidUtf8()) {}

void RtfInterpreter::run() {
  while (!m_isFinished && !m_builder.isFull()) {
    RtfToken token = m_tokenizer.next();
    if (token.type == Type::End) break;
    if (m_fallbackLeft == 0 || !isFallback(token)) handle(token);
  }
  if (!m_isFinished) finish();
}

bool RtfInterpreter::isFallback(RtfToken& token) {
  switch (token.type) {
    case Type::Text:
      return skipText(token);
    case Type::Byte:
    case Type::Binary:
      --m_fallbackLeft;
      return true;
    case Type::Symbol:
      if (token.character == '*') break;
      --m_fallbackLeft;
      return true;
    case Type::Word: {
      const QChar character = rtfCharacterOfWord(token.word);
      if (character.isNull() || character == QChar::ParagraphSeparator) break;
      --m_fallbackLeft;
      return true;
    }
    default:
      break;
  }
  m_fallbackLeft = 0;
  return false;
}

bool RtfInterpreter::skipText(RtfToken& token) {
  qsizetype length = 0;
  while (m_fallbackLeft > 0 && length < token.text.size()) {
    ++length;
    while (m_rawTextIsUtf8 && length < token.text.size() && isUtf8Continuation(token.text[length]))
      ++length;
    --m_fallbackLeft;
  }
  token.text = token.text.sliced(length);
  return token.text.isEmpty();
}

void RtfInterpreter::handle(const RtfToken& token) {
  if (token.type != Type::Text && token.type != Type::Byte) flushBytes();
  switch (token.type) {
    case Type::GroupBegin:
      return beginGroup();
    case Type::GroupEnd:
      return endGroup();
    case Type::Word:
      return handleWord(token);
    case Type::Symbol:
      return handleSymbol(token.character);
    case Type::Text:
      return handleText(token.text);
    case Type::Byte:
      m_isGroupStart = false;
      if (state().destination != Destination::Skipped) m_bytes += token.character;
      return;
    case Type::Binary:
    case Type::End:
      return;
  }
}

void RtfInterpreter::beginGroup() {
  m_isGroupStart = true;
  m_isIgnorable = false;
  if (m_states.size() < maximumDepth) {
    const State inherited = state();
    m_states.push_back(inherited);
  } else {
    ++m_deeperGroups;
  }
}

void RtfInterpreter::endGroup() {
  m_isGroupStart = false;
  m_isIgnorable = false;
  if (m_deeperGroups > 0) {
    --m_deeperGroups;
    return;
  }
  if (state().destination == Destination::FontTable) m_fonts.endFont();
  if (m_states.size() <= rootDepth) return finish();  // what follows is no part of the document
  m_states.pop_back();
}

void RtfInterpreter::handleWord(const RtfToken& token) {
  const bool isIgnorable = std::exchange(m_isIgnorable, false);
  const bool isFirst = std::exchange(m_isGroupStart, false);
  if (enterDestination(token.word, isFirst, isIgnorable)) return;
  if (token.word == QLatin1String("u")) return appendUnicode(token.parameter.value_or(0));
  if (token.word == QLatin1String("uc")) {
    state().fallbackLength = qBound(0, token.parameter.value_or(1), 1000);
    return;
  }
  switch (state().destination) {
    case Destination::Body:
      return handleBodyWord(token);
    case Destination::FontTable:
      return m_fonts.applyWord(token.word, token.parameter);
    case Destination::ColorTable:
      return m_colors.applyWord(token.word, token.parameter);
    case Destination::ExpandedColorTable:
      return m_colors.applyExpandedWord(token.word, token.parameter);
    case Destination::Skipped:
      return;
  }
}

/// True when the word has said what the group is for.
bool RtfInterpreter::enterDestination(QLatin1String word, bool isFirst, bool isIgnorable) {
  if (state().destination == Destination::Skipped) return false;
  const std::optional<Destination> destination = destinationOfWord(word);
  if (!destination && !isIgnorable) return false;
  // A stray word in the outermost group must not hide the whole text.
  if (!isFirst && m_states.size() <= rootDepth) return destination.has_value();
  state().destination = destination.value_or(Destination::Skipped);
  m_formatStyle.reset();  // its tables may change
  return true;
}

void RtfInterpreter::handleBodyWord(const RtfToken& token) {
  State& current = state();
  if (const QChar character = rtfCharacterOfWord(token.word); !character.isNull())
    append(character);
  else if (!current.character.apply(token.word, token.parameter) &&
           !current.paragraph.apply(token.word, token.parameter))
    handleDocumentWord(token.word, token.parameter);
}

void RtfInterpreter::handleDocumentWord(QLatin1String word, std::optional<int> parameter) {
  if (word == QLatin1String("mac"))
    m_documentPage = 10000;
  else if (word == QLatin1String("pc"))
    m_documentPage = 437;
  else if (word == QLatin1String("pca"))
    m_documentPage = 850;
  else if (word == QLatin1String("ansicpg") && parameter.value_or(0) > 0)
    m_documentPage = *parameter;
  else if (word == QLatin1String("deff"))
    m_defaultFont = parameter.value_or(0);
}

void RtfInterpreter::handleSymbol(char symbol) {
  if (symbol == '*') {
    m_isIgnorable = true;
    return;
  }
  m_isGroupStart = false;
  if (const QChar character = rtfCharacterOfSymbol(symbol); !character.isNull()) append(character);
}

void RtfInterpreter::handleText(QByteArrayView text) {
  m_isGroupStart = false;
  if (state().destination == Destination::Skipped) return;
  if (!m_rawTextIsUtf8 || isAscii(text)) {
    m_bytes += text;
    return;
  }
  flushBytes();
  append(QString::fromUtf8(text));
}

/// Numbers beyond 32767 are usually written negative, as 16 bits with a sign.
void RtfInterpreter::appendUnicode(int number) {
  m_fallbackLeft = state().fallbackLength;
  if (number < 0) number += 0x10000;
  if (number < 0 || number > static_cast<int>(QChar::LastValidCodePoint))
    append(QChar(QChar::ReplacementCharacter));
  else if (number > 0xFFFF)
    append(QString::fromUcs4(reinterpret_cast<const char32_t*>(&number), 1));
  else
    append(QChar(number));
}

void RtfInterpreter::flushBytes() {
  if (m_bytes.isEmpty()) return;
  const QString text = m_codePages.page(codePage()).decode(m_bytes);
  m_bytes.clear();
  append(text);
}

void RtfInterpreter::append(const QString& text) {
  switch (state().destination) {
    case Destination::Body:
      if (state().character.isVisible())
        m_builder.appendParagraphs(text, format(), state().paragraph.blockFormat());
      return;
    case Destination::FontTable:
      return m_fonts.appendName(text);
    case Destination::ColorTable:
      for (qsizetype count = text.count(u';'); count > 0; --count) m_colors.endColor();
      return;
    case Destination::ExpandedColorTable:
      for (qsizetype count = text.count(u';'); count > 0; --count) m_colors.endExpandedColor();
      return;
    case Destination::Skipped:
      return;
  }
}

void RtfInterpreter::finish() {
  flushBytes();
  m_isFinished = true;
  m_builder.finish(state().paragraph.blockFormat(), format());
  QFont font = m_document.defaultFont();
  const RtfCharacterStyle plain;
  if (const QString name = currentFont(plain).name; !name.isEmpty()) font.setFamilies({name});
  font.setPointSizeF(plain.halfPoints / 2.0);
  m_document.setDefaultFont(font);
}

int RtfInterpreter::codePage() const {
  const State& current = m_states.back();
  const std::optional<int> page = current.destination == Destination::FontTable
                                      ? m_fonts.currentCodePage()
                                      : currentFont(current.character).codePage;
  return page.value_or(m_documentPage);
}

RtfFontTable::Font RtfInterpreter::currentFont(const RtfCharacterStyle& style) const {
  return m_fonts.font(style.font == RtfCharacterStyle::documentFont ? m_defaultFont : style.font);
}

const QTextCharFormat& RtfInterpreter::format() {
  const RtfCharacterStyle& style = state().character;
  if (m_formatStyle != style) {
    m_format = makeFormat(style);
    m_formatStyle = style;
  }
  return m_format;
}

QTextCharFormat RtfInterpreter::makeFormat(const RtfCharacterStyle& style) const {
  QTextCharFormat format;
  if (const QString name = currentFont(style).name; !name.isEmpty()) format.setFontFamilies({name});
  format.setFontPointSize(style.halfPoints / 2.0);
  if (style.bold) format.setFontWeight(QFont::Bold);
  if (style.italic) format.setFontItalic(true);
  if (style.strike) format.setFontStrikeOut(true);
  if (style.underline != QTextCharFormat::NoUnderline) format.setUnderlineStyle(style.underline);
  if (style.vertical != QTextCharFormat::AlignNormal) format.setVerticalAlignment(style.vertical);
  if (style.capitals != QFont::MixedCase) format.setFontCapitalization(style.capitals);
  if (const QColor color = m_colors.color(style.foreground); color.isValid())
    format.setForeground(color);
  if (const QColor color = m_colors.color(style.background); color.isValid())
    format.setBackground(color);
  if (const QColor color = m_colors.color(style.underlineColor); color.isValid())
    format.setUnderlineColor(color);
  return format;
}

std::optional<RtfInterpreter::Destination> RtfInterpreter::destinationOfWord(QLatin1String word) {
  static const QHash<QLatin1String, Destination> table = [] {
    QHash<QLatin1String, Destination> words{
        {QLatin1String("fonttbl"), Destination::FontTable},
        {QLatin1String("colortbl"), Destination::ColorTable},
        {QLatin1String("expandedcolortbl"), Destination::ExpandedColorTable}};
    for (const char* word :
         {"stylesheet", "info",         "header",    "headerl",    "headerr",
          "headerf",    "footer",       "footerl",   "footerr",    "footerf",
          "footnote",   "ftnsep",       "ftnsepc",   "ftncn",      "aftnsep",
          "aftnsepc",   "aftncn",       "pict",      "nonshppict", "object",
          "objdata",    "fldinst",      "xe",        "rxe",        "tc",
          "tcn",        "txe",          "private",   "filetbl",    "listtable",
          "revtbl",     "annotation",   "atnid",     "panose",     "falt",
          "fontemb",    "fontfile",     "pntxta",    "pntxtb",     "template",
          "do",         "bkmkstart",    "bkmkend",   "themedata",  "colorschememapping",
          "datastore",  "latentstyles", "generator", "NeXTGraphic"})
      words.insert(QLatin1String(word), Destination::Skipped);
    return words;
  }();
  const auto found = table.constFind(word);
  return found == table.cend() ? std::nullopt : std::optional(*found);
}

}  // namespace foundation::detail
