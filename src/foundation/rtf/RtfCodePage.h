#pragma once

#include <iconv.h>

#include <QByteArrayView>
#include <QString>
#include <map>
#include <memory>

namespace foundation {

/// Turns the bytes of one code page into text. Bytes that the page does not have become U+FFFD.
class RtfCodePage {
 public:
  static constexpr int western = 1252;
  static constexpr int utf8 = 65001;
  static constexpr int symbol = 42;  ///< symbol fonts: glyphs by number, no letters

  /// Falls back to Western European (1252) for a number that the system does not know.
  explicit RtfCodePage(int number);
  ~RtfCodePage();
  RtfCodePage(const RtfCodePage&) = delete;
  RtfCodePage& operator=(const RtfCodePage&) = delete;

  [[nodiscard]] QString decode(QByteArrayView bytes) const;
  /// The code page of a font's character set; 0 for those that take the document's.
  [[nodiscard]] static int ofCharacterSet(int characterSet);

 private:
  [[nodiscard]] QString convert(QByteArrayView bytes) const;

  int m_number;
  iconv_t m_converter;
};

/// Code pages by number, each opened once.
class RtfCodePages {
 public:
  [[nodiscard]] const RtfCodePage& page(int number);

 private:
  std::map<int, std::unique_ptr<RtfCodePage>> m_pages;
};

}  // namespace foundation
