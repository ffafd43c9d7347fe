#pragma once

#include <QHash>
#include <QMap>

#include "store/StoredObject.h"

namespace store::xml {

/// Writes a store file piece by piece. Data that does not fit into one line becomes a block of its
/// own behind the objects, named by its contents, so that equal data is written once.
class StoreWriter {
 public:
  /// Bytes that fit into one line.
  static constexpr qsizetype lineBytes = 57;

  /// Blocks that the file is to have in any case.
  StoreWriter(int version, const QByteArray& attributes, QMap<QByteArray, QByteArray> blocks);

  void beginObject(const QString& entity, ObjectId id, const QByteArray& attributes);
  void relation(const QString& key, ObjectId to);
  void value(const QString& key, const foundation::PropertyValue& value);
  /// As it was, or as it stands in the file that it came from.
  void stored(const StoredRelation& relation);
  void stored(const StoredValue& value);
  void elements(const QList<QByteArray>& elements);
  void endObject();
  void object(const StoredObject& object);
  /// With elements that are no objects.
  [[nodiscard]] QByteArray finish(const QList<QByteArray>& others);

 private:
  void keyedValue(const QByteArray& key, const foundation::PropertyValue& value);
  void line(const char* type, const QByteArray& attributes, const QByteArray& content);
  void string(const QByteArray& key, const QString& text);
  void data(const QByteArray& key, const QByteArray& bytes);
  void array(const QByteArray& key, const foundation::PropertyArray& items);
  void dictionary(const QByteArray& key, const foundation::PropertyDictionary& entries);
  void indent() { m_out.append(2 * m_depth, ' '); }
  [[nodiscard]] QByteArray blockName(const QByteArray& bytes);
  [[nodiscard]] QByteArray keyAttribute(const QString& key);

  QByteArray m_out;
  int m_depth = 1;
  QMap<QByteArray, QByteArray> m_blocks;            // by name
  QHash<const char*, QByteArray> m_namesByStorage;  // of what m_blocks holds
  QHash<QString, QByteArray> m_keyAttributes;
};

}  // namespace store::xml
