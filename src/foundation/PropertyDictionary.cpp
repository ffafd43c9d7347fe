#include <algorithm>

#include "foundation/PropertyValue.h"

namespace foundation {

namespace {

struct KeyOrder {
  bool operator()(const PropertyDictionary::Entry& a, QStringView b) const { return a.first < b; }
};

bool ascending(const PropertyDictionary::Entry& a, const PropertyDictionary::Entry& b) {
  return a.first < b.first;
}

// Keeps the last of each run of equal keys.
void dropEarlierDuplicates(QList<PropertyDictionary::Entry>& entries) {
  qsizetype kept = 0;
  for (qsizetype i = 0; i < entries.size(); ++i) {
    const bool repeats = i + 1 < entries.size() && entries[i].first == entries[i + 1].first;
    if (repeats) continue;
    if (kept != i) entries[kept] = std::move(entries[i]);
    ++kept;
  }
  entries.erase(entries.begin() + kept, entries.end());
}

}  // namespace

PropertyDictionary::PropertyDictionary(std::initializer_list<Entry> entries)
    : PropertyDictionary(fromEntries(QList<Entry>(entries))) {}

PropertyDictionary PropertyDictionary::fromEntries(QList<Entry> entries) {
  const auto outOfOrder = [](const Entry& a, const Entry& b) { return !(a.first < b.first); };
  if (std::adjacent_find(entries.cbegin(), entries.cend(), outOfOrder) != entries.cend()) {
    std::stable_sort(entries.begin(), entries.end(), ascending);
    dropEarlierDuplicates(entries);
  }
  PropertyDictionary out;
  out.m_entries = std::move(entries);
  return out;
}

const PropertyValue& PropertyDictionary::value(QStringView key) const {
  static const PropertyValue null;
  const auto at = std::lower_bound(m_entries.cbegin(), m_entries.cend(), key, KeyOrder());
  return at != m_entries.cend() && at->first == key ? at->second : null;
}

bool PropertyDictionary::contains(QStringView key) const {
  const auto at = std::lower_bound(m_entries.cbegin(), m_entries.cend(), key, KeyOrder());
  return at != m_entries.cend() && at->first == key;
}

PropertyValue& PropertyDictionary::edit(const QString& key) {
  auto at = std::lower_bound(m_entries.begin(), m_entries.end(), QStringView(key), KeyOrder());
  if (at == m_entries.end() || at->first != key)
    at = m_entries.insert(at, Entry(key, PropertyValue()));
  return at->second;
}

void PropertyDictionary::insert(const QString& key, PropertyValue value) {
  edit(key) = std::move(value);
}

PropertyValue PropertyDictionary::take(QStringView key) {
  const auto at = std::lower_bound(m_entries.cbegin(), m_entries.cend(), key, KeyOrder());
  if (at == m_entries.cend() || at->first != key) return {};
  const qsizetype index = at - m_entries.cbegin();
  PropertyValue out = std::move(m_entries[index].second);
  m_entries.removeAt(index);
  return out;
}

bool PropertyDictionary::remove(QStringView key) {
  if (!contains(key)) return false;
  take(key);
  return true;
}

QStringList PropertyDictionary::keys() const {
  QStringList out;
  out.reserve(m_entries.size());
  for (const Entry& entry : m_entries) out.append(entry.first);
  return out;
}

bool operator==(const PropertyDictionary& a, const PropertyDictionary& b) {
  return a.m_entries == b.m_entries;
}

}  // namespace foundation
