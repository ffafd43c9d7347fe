#pragma once

#include <QByteArrayView>
#include <QLatin1String>
#include <optional>

namespace foundation {

/// One piece of an RTF text. Views point into the bytes that were given to the tokenizer.
struct RtfToken {
  enum class Type {
    End,
    GroupBegin,
    GroupEnd,
    Word,    ///< `\word` with an optional number; an escaped line end is the word "par"
    Symbol,  ///< a backslash and one character that is no letter
    Text,    ///< bytes without escapes or line ends
    Byte,    ///< `\'hh`
    Binary   ///< the bytes that `\bin` announces
  };
  Type type = Type::End;
  QLatin1String word;
  std::optional<int> parameter;
  QByteArrayView text;    ///< of Text and Binary
  char character = '\0';  ///< of Symbol and Byte
};

/// Cuts RTF into tokens. Every byte sequence can be cut; each call but the last moves on.
class RtfTokenizer {
 public:
  explicit RtfTokenizer(QByteArrayView bytes) : m_bytes(bytes) {}
  [[nodiscard]] RtfToken next();

 private:
  [[nodiscard]] bool atEnd() const { return m_position >= m_bytes.size(); }
  [[nodiscard]] char current() const { return m_bytes[m_position]; }
  [[nodiscard]] std::optional<RtfToken> escape();
  [[nodiscard]] RtfToken word();
  [[nodiscard]] std::optional<int> parameter();
  [[nodiscard]] std::optional<RtfToken> hexByte();
  [[nodiscard]] RtfToken binary(int length);
  [[nodiscard]] RtfToken text();

  QByteArrayView m_bytes;
  qsizetype m_position = 0;
};

}  // namespace foundation
