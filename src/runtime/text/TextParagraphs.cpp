#include "runtime/text/TextParagraphs.h"

#include <QChar>
#include <algorithm>
#include <iterator>

namespace runtime {

namespace {

struct Range {
  char32_t first;
  char32_t last;
};

// Characters that are shown as pictures unless a selector asks for text.
constexpr Range pictures[] = {
    {0x231A, 0x231B},   {0x23E9, 0x23EC},   {0x23F0, 0x23F0},   {0x23F3, 0x23F3},
    {0x25FD, 0x25FE},   {0x2614, 0x2615},   {0x2648, 0x2653},   {0x267F, 0x267F},
    {0x2693, 0x2693},   {0x26A1, 0x26A1},   {0x26AA, 0x26AB},   {0x26BD, 0x26BE},
    {0x26C4, 0x26C5},   {0x26CE, 0x26CE},   {0x26D4, 0x26D4},   {0x26EA, 0x26EA},
    {0x26F2, 0x26F3},   {0x26F5, 0x26F5},   {0x26FA, 0x26FA},   {0x26FD, 0x26FD},
    {0x2705, 0x2705},   {0x270A, 0x270B},   {0x2728, 0x2728},   {0x274C, 0x274C},
    {0x274E, 0x274E},   {0x2753, 0x2755},   {0x2757, 0x2757},   {0x2795, 0x2797},
    {0x27B0, 0x27B0},   {0x27BF, 0x27BF},   {0x2B1B, 0x2B1C},   {0x2B50, 0x2B50},
    {0x2B55, 0x2B55},   {0x1F004, 0x1F004}, {0x1F0CF, 0x1F0CF}, {0x1F18E, 0x1F18E},
    {0x1F191, 0x1F19A}, {0x1F1E6, 0x1F1FF}, {0x1F201, 0x1F201}, {0x1F21A, 0x1F21A},
    {0x1F22F, 0x1F22F}, {0x1F232, 0x1F236}, {0x1F238, 0x1F23A}, {0x1F250, 0x1F251},
    {0x1F300, 0x1F320}, {0x1F32D, 0x1F335}, {0x1F337, 0x1F37C}, {0x1F37E, 0x1F393},
    {0x1F3A0, 0x1F3CA}, {0x1F3CF, 0x1F3D3}, {0x1F3E0, 0x1F3F0}, {0x1F3F4, 0x1F3F4},
    {0x1F3F8, 0x1F43E}, {0x1F440, 0x1F440}, {0x1F442, 0x1F4FC}, {0x1F4FF, 0x1F53D},
    {0x1F54B, 0x1F54E}, {0x1F550, 0x1F567}, {0x1F57A, 0x1F57A}, {0x1F595, 0x1F596},
    {0x1F5A4, 0x1F5A4}, {0x1F5FB, 0x1F64F}, {0x1F680, 0x1F6C5}, {0x1F6CC, 0x1F6CC},
    {0x1F6D0, 0x1F6D2}, {0x1F6D5, 0x1F6D7}, {0x1F6DC, 0x1F6DF}, {0x1F6EB, 0x1F6EC},
    {0x1F6F4, 0x1F6FC}, {0x1F7E0, 0x1F7EB}, {0x1F7F0, 0x1F7F0}, {0x1F90C, 0x1F93A},
    {0x1F93C, 0x1F945}, {0x1F947, 0x1F9FF}, {0x1FA70, 0x1FAFF}};

constexpr char32_t textSelector = 0xFE0E;
constexpr char32_t pictureSelector = 0xFE0F;
constexpr char32_t joiner = 0x200D;
constexpr char32_t keycap = 0x20E3;

bool isPicture(char32_t c) {
  const Range* next = std::upper_bound(std::begin(pictures), std::end(pictures), c,
                                       [](char32_t v, const Range& r) { return v < r.first; });
  return next != std::begin(pictures) && c <= std::prev(next)->last;
}
bool isSkinTone(char32_t c) {
  return c >= 0x1F3FB && c <= 0x1F3FF;
}
bool isFlagLetter(char32_t c) {
  return c >= 0x1F1E6 && c <= 0x1F1FF;
}
bool isTag(char32_t c) {
  return c >= 0xE0020 && c <= 0xE007F;
}
bool isSelector(char32_t c) {
  return c == textSelector || c == pictureSelector;
}
bool isKeycapBase(char32_t c) {
  return (c >= U'0' && c <= U'9') || c == U'#' || c == U'*';
}

/// Reads one paragraph's code points and writes what layout takes.
class ParagraphReader {
 public:
  explicit ParagraphReader(QStringView source) : m_points(source.toUcs4()) {}

  [[nodiscard]] TextParagraph read() {
    while (m_at < m_points.size()) {
      if (startsEmoji())
        takeEmoji();
      else
        take();
    }
    return std::move(m_result);
  }

 private:
  [[nodiscard]] char32_t point(qsizetype offset = 0) const {
    const qsizetype i = m_at + offset;
    return i < m_points.size() ? m_points[i] : 0;
  }

  [[nodiscard]] bool startsEmoji() const {
    const char32_t c = point();
    const char32_t next = point(1);
    if (isKeycapBase(c)) return next == keycap || (isSelector(next) && point(2) == keycap);
    if (c < 0xA9) return false;
    return isPicture(c) ? next != textSelector : next == pictureSelector || isSkinTone(next);
  }

  /// Copies one code point, except those that only steer or that no font draws.
  void take() {
    const char32_t c = point();
    ++m_at;
    const bool control = (c < 0x20 && c != U'\t') || (c >= 0x7F && c < 0xA0) || c == 0xFFFC;
    if (control || isSelector(c)) return;
    m_result.text += QString::fromUcs4(&c, 1);
  }

  void takeEmoji() {
    const qsizetype start = m_result.text.size();
    const bool flag = isFlagLetter(point());
    take();
    if (flag && isFlagLetter(point())) take();
    while (continues()) {
      const bool joins = point() == joiner;
      take();
      if (joins && point() != 0) take();
    }
    QList<TextSpan>& spans = m_result.emoji;
    const qsizetype length = m_result.text.size() - start;
    if (!spans.isEmpty() && spans.last().start + spans.last().length == start)
      spans.last().length += length;
    else
      spans.append({start, length});
  }

  [[nodiscard]] bool continues() const {
    const char32_t c = point();
    return isSelector(c) || c == joiner || c == keycap || isSkinTone(c) || isTag(c);
  }

  QList<uint> m_points;
  qsizetype m_at = 0;
  TextParagraph m_result;
};

bool isBreak(QChar c) {
  const char16_t u = c.unicode();
  return (u >= 0x0A && u <= 0x0D) || u == 0x85 || u == 0x2028 || u == 0x2029;
}

}  // namespace

QList<TextParagraph> textParagraphs(const QString& text) {
  QList<TextParagraph> paragraphs;
  qsizetype start = 0;
  for (qsizetype i = 0; i <= text.size(); ++i) {
    if (i < text.size() && !isBreak(text[i])) continue;
    paragraphs.append(ParagraphReader(QStringView(text).mid(start, i - start)).read());
    const bool pair = text.mid(i, 2) == QLatin1String("\r\n");
    if (pair) ++i;
    start = i + 1;
  }
  return paragraphs;
}

bool isRightToLeftText(const QString& text, bool otherwise) {
  for (const char32_t c : text.toUcs4()) {
    const QChar::Direction direction = QChar::direction(c);
    if (direction == QChar::DirL) return false;
    if (direction == QChar::DirR || direction == QChar::DirAL) return true;
  }
  return otherwise;
}

}  // namespace runtime
