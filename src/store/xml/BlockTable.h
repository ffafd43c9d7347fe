#pragma once

#include <QHash>
#include <QMap>
#include <QSet>

#include "foundation/PropertyValue.h"

namespace store::xml {

/// The data that a store file keeps in elements of their own, by name. Values may speak of them
/// before they were read; all places that name one share its bytes.
class BlockTable {
 public:
  /// False when there is one of that name with other bytes.
  [[nodiscard]] bool add(const QByteArray& name, const QByteArray& bytes);
  /// The bytes, or what stands for them until resolve().
  [[nodiscard]] QByteArray reference(const QByteArray& name);
  [[nodiscard]] bool has(const QByteArray& name) const { return m_bytes.contains(name); }
  /// Puts the bytes in. The name of a block that is missing, else nothing.
  [[nodiscard]] QByteArray resolve(foundation::PropertyValue& value) const;

  /// Those that no value speaks of; with `all`, those too.
  [[nodiscard]] QMap<QByteArray, QByteArray> kept(bool all) const;

 private:
  QHash<QByteArray, QByteArray> m_bytes;
  QHash<QByteArray, QByteArray> m_standIns;  // by name
  QHash<const char*, QByteArray> m_names;    // by the stand-in's own storage
  QSet<QByteArray> m_used;
};

}  // namespace store::xml
