#include "foundation/rtf/RtfCodePage.h"

#include <array>
#include <cerrno>
#include <utility>

namespace foundation {

namespace {

const iconv_t noConverter = reinterpret_cast<iconv_t>(-1);

iconv_t openConverter(const char* name) {
  const char* target = QSysInfo::ByteOrder == QSysInfo::LittleEndian ? "UTF-16LE" : "UTF-16BE";
  return iconv_open(target, name);
}

const char* platformName(int number) {
  switch (number) {
    case 10000:
      return "MACINTOSH";
    case 10001:
      return "SHIFT_JIS";
    case 10007:
    case 10017:
      return "MAC-CYRILLIC";
    case 10029:
      return "MAC-CENTRALEUROPE";
    case 1361:
      return "JOHAB";
    default:
      return nullptr;
  }
}

iconv_t converterFor(int number) {
  if (number == RtfCodePage::utf8 || number == RtfCodePage::symbol) return noConverter;
  if (const char* name = platformName(number))
    if (const iconv_t converter = openConverter(name); converter != noConverter) return converter;
  const QByteArray name = QByteArrayLiteral("CP") + QByteArray::number(number);
  const iconv_t converter = openConverter(name.constData());
  return converter == noConverter ? openConverter("CP1252") : converter;
}

bool isAscii(QByteArrayView bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; });
}

/// Symbol fonts have their glyphs in the private range; the bullet is meant as a bullet.
QString decodeSymbols(QByteArrayView bytes) {
  QString text;
  for (const char c : bytes) {
    const auto byte = static_cast<uchar>(c);
    if (byte == 0xB7)
      text += QChar(0x2022);
    else
      text += byte < 0x20 ? QChar(byte) : QChar(0xF000 + byte);
  }
  return text;
}

}  // namespace

RtfCodePage::RtfCodePage(int number) : m_number(number), m_converter(converterFor(number)) {}

RtfCodePage::~RtfCodePage() {
  if (m_converter != noConverter) iconv_close(m_converter);
}

QString RtfCodePage::decode(QByteArrayView bytes) const {
  if (m_number == symbol) return decodeSymbols(bytes);
  if (m_number == utf8) return QString::fromUtf8(bytes);
  if (isAscii(bytes) || m_converter == noConverter) return QString::fromLatin1(bytes);
  return convert(bytes);
}

QString RtfCodePage::convert(QByteArrayView bytes) const {
  // A byte gives at most two characters in the pages there are; one more for what is pending.
  QString text(bytes.size() * 2 + 2, Qt::Uninitialized);
  auto* in = const_cast<char*>(bytes.data());  // iconv only reads
  auto inLeft = static_cast<size_t>(bytes.size());
  auto* out = reinterpret_cast<char*>(text.data());
  auto outLeft = static_cast<size_t>(text.size()) * sizeof(QChar);
  const auto put = [&](QChar c) {
    if (outLeft < sizeof(QChar)) return;
    memcpy(out, &c, sizeof(QChar));
    out += sizeof(QChar);
    outLeft -= sizeof(QChar);
  };
  iconv(m_converter, nullptr, nullptr, nullptr, nullptr);
  while (inLeft > 0) {
    if (iconv(m_converter, &in, &inLeft, &out, &outLeft) != static_cast<size_t>(-1)) break;
    if (errno != EILSEQ && errno != EINVAL) break;
    put(QChar::ReplacementCharacter);
    ++in;
    --inLeft;
  }
  iconv(m_converter, nullptr, nullptr, &out, &outLeft);
  text.truncate(text.size() - static_cast<qsizetype>(outLeft / sizeof(QChar)));
  return text;
}

int RtfCodePage::ofCharacterSet(int characterSet) {
  static constexpr std::array<std::pair<int, int>, 21> pages{
      {{0, western}, {2, symbol}, {77, 10000}, {78, 10001}, {128, 932},  {129, 949},  {130, 1361},
       {134, 936},   {136, 950},  {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256},
       {186, 1257},  {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850},  {89, 10007}}};
  for (const auto& [set, page] : pages)
    if (set == characterSet) return page;
  return 0;
}

const RtfCodePage& RtfCodePages::page(int number) {
  std::unique_ptr<RtfCodePage>& page = m_pages[number];
  if (!page) page = std::make_unique<RtfCodePage>(number);
  return *page;
}

}  // namespace foundation
