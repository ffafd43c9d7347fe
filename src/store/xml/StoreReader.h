#pragma once

#include "foundation/Result.h"
#include "store/StoredObject.h"
#include "store/xml/ValueReader.h"

namespace store::xml {

/// What a store file says, before it means anything.
struct StoreContents {
  int version = 0;
  std::vector<StoredObject> objects = {};    ///< by ascending number
  QByteArray attributes = {};                ///< further XML attributes of the root
  QList<QByteArray> elements = {};           ///< elements that are no objects and no blocks
  QMap<QByteArray, QByteArray> blocks = {};  ///< to be written whether used or not
};

/// Puts objects in the order of their numbers and their parts in the order of their keys. An error
/// when a number or a key is there twice.
[[nodiscard]] std::optional<foundation::Error> sortStored(std::vector<StoredObject>& objects,
                                                          const QString& path);

/// Reads the elements of one store file. Errors name the path, the line and the reason.
class StoreReader {
 public:
  StoreReader(const QByteArray& xml, const QString& path) : m_xml(xml), m_path(path) {}

  [[nodiscard]] foundation::Result<StoreContents> read();

 private:
  void readRoot();
  void readVersion(std::string_view raw);
  void readObject();
  void readObjectHead(StoredObject& object);
  void readRelation(StoredObject& object);
  void readValue(StoredObject& object);
  void readBlock();
  void keepElement(QList<QByteArray>& elements);
  void resolveBlocks();

  /// An element of the file, from its start to what was read.
  [[nodiscard]] QByteArray slice(size_t begin) const;
  [[nodiscard]] size_t lineAt(size_t position);

  const QByteArray& m_xml;
  const QString& m_path;
  XmlScanner m_scanner{m_xml};
  BlockTable m_blocks;
  ValueReader m_values{m_scanner, m_blocks};
  StoreContents m_contents;
  struct Waiting {
    size_t object;
    size_t value;
  };
  std::vector<Waiting> m_waiting;  // values that name blocks
  bool m_keepsAll = false;         // there are things that may speak of blocks in their own way
  size_t m_linePosition = 0;
  size_t m_line = 1;
};

}  // namespace store::xml
