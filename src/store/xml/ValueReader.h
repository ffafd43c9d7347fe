#pragma once

#include "foundation/TextPool.h"
#include "store/xml/BlockTable.h"
#include "store/xml/XmlScanner.h"
#include "store/xml/XmlText.h"

namespace store::xml {

/// Reads the elements that stand for values.
class ValueReader {
 public:
  ValueReader(XmlScanner& scanner, BlockTable& blocks) : m_scanner(scanner), m_blocks(blocks) {}

  struct Value {
    foundation::PropertyValue value = {};
    bool isReadable = true;
    bool isWhole = true;       ///< nothing unknown stands in it
    bool namesBlocks = false;  ///< give it to BlockTable::resolve() when all blocks were read
  };
  /// The element that was entered last, up to its end.
  [[nodiscard]] Value read();
  /// What its attributes say its key is; none when they do not. Before read().
  [[nodiscard]] std::optional<QString> key();
  /// Decoded.
  [[nodiscard]] QString attributeText(std::string_view raw);
  [[nodiscard]] foundation::TextPool& pool() { return m_pool; }

 private:
  [[nodiscard]] Value scalar(std::string_view type);
  [[nodiscard]] Value string(bool isEscaped);
  [[nodiscard]] Value data(const std::optional<QString>& block);
  [[nodiscard]] Value array();
  [[nodiscard]] Value dictionary();
  /// The text of the current element without blanks around it.
  [[nodiscard]] std::string_view trimmedText(Value& value);

  XmlScanner& m_scanner;
  BlockTable& m_blocks;
  foundation::TextPool m_pool;
  std::string m_buffer;
};

}  // namespace store::xml
