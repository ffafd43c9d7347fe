#include "store/xml/BlockTable.h"

namespace store::xml {

using foundation::PropertyValue;

bool BlockTable::add(const QByteArray& name, const QByteArray& bytes) {
  const auto found = m_bytes.constFind(name);
  if (found != m_bytes.cend()) return *found == bytes;
  m_bytes.insert(name, bytes);
  return true;
}

QByteArray BlockTable::reference(const QByteArray& name) {
  m_used.insert(name);
  if (const auto found = m_bytes.constFind(name); found != m_bytes.cend()) return *found;
  QByteArray& standIn = m_standIns[name];
  if (standIn.isEmpty()) {
    standIn = "block " + name;  // storage of its own, by which it is recognised
    m_names.insert(standIn.constData(), name);
  }
  return standIn;
}

QByteArray BlockTable::resolve(PropertyValue& value) const {
  QByteArray missing;
  if (value.isData()) {
    const auto name = m_names.constFind(value.toData().constData());
    if (name == m_names.cend()) return {};
    const auto bytes = m_bytes.constFind(*name);
    if (bytes == m_bytes.cend()) return *name;
    value = *bytes;
  } else if (value.isArray()) {
    for (PropertyValue& item : value.editArray())
      if (missing.isEmpty()) missing = resolve(item);
  } else if (value.isDictionary()) {
    for (const QString& key : value.dictionary().keys())
      if (missing.isEmpty()) missing = resolve(value.editDictionary().edit(key));
  }
  return missing;
}

QMap<QByteArray, QByteArray> BlockTable::kept(bool all) const {
  QMap<QByteArray, QByteArray> blocks;
  for (auto it = m_bytes.cbegin(); it != m_bytes.cend(); ++it)
    if (all || !m_used.contains(it.key())) blocks.insert(it.key(), it.value());
  return blocks;
}

}  // namespace store::xml
