#include "runtime/Structure.h"

#include "runtime/StructureMember.h"

namespace runtime {

namespace {
const Value emptyValue;
}

Structure::Structure() {
  static const auto none = std::make_shared<const Members>();
  m_members = none;
}

Structure::Structure(Members members)
    : m_members(std::make_shared<const Members>(std::move(members))) {}

Structure Structure::fromValues(std::vector<Value> values) {
  Members members;
  members.reserve(values.size());
  for (Value& value : values) members.push_back({QString(), std::move(value)});
  return Structure(std::move(members));
}

qsizetype Structure::size() const {
  return static_cast<qsizetype>(m_members->size());
}

bool Structure::isKeyed() const {
  return !isEmpty() && !m_members->front().key.isEmpty();
}

const Structure::Members& Structure::members() const {
  return *m_members;
}

const Value& Structure::at(qsizetype index) const {
  return index >= 0 && index < size() ? (*m_members)[static_cast<size_t>(index)].value : emptyValue;
}

const Value& Structure::value(const QString& key) const {
  for (const StructureMember& member : *m_members)
    if (member.key == key) return member.value;
  return emptyValue;
}

bool operator==(const Structure& a, const Structure& b) {
  return a.m_members == b.m_members || *a.m_members == *b.m_members;
}

}  // namespace runtime
