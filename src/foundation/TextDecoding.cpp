#include "foundation/TextDecoding.h"

#include <QStringConverter>
#include <array>

namespace foundation {

namespace {

/// What bytes 0x80 to 0x9f are in Windows-1252; all others are as in Latin-1.
constexpr std::array<char16_t, 32> windows1252{
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};

QString fromWindows1252(const QByteArray& bytes) {
  QString text = QString::fromLatin1(bytes);
  for (QChar& character : text)
    if (character >= u'\x80' && character <= u'\x9f')
      character = windows1252[character.unicode() - 0x80U];
  return text;
}

}  // namespace

QString decodedText(const QByteArray& bytes) {
  const auto marked = QStringConverter::encodingForData(bytes);
  QStringDecoder decoder(marked.value_or(QStringConverter::Utf8));
  QString text = decoder.decode(bytes);
  return !marked && decoder.hasError() ? fromWindows1252(bytes) : text;
}

}  // namespace foundation
