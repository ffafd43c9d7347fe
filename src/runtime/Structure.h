#pragma once

#include <QString>
#include <memory>
#include <vector>

namespace runtime {

class Value;
struct StructureMember;

/// An ordered, immutable collection of values, each with an index and, in keyed structures, a
/// unique key. Copies share their members.
class Structure {
 public:
  using Members = std::vector<StructureMember>;

  Structure();
  explicit Structure(Members members);
  /// Members without keys.
  [[nodiscard]] static Structure fromValues(std::vector<Value> values);

  [[nodiscard]] qsizetype size() const;
  [[nodiscard]] bool isEmpty() const { return size() == 0; }
  /// True when the members carry keys.
  [[nodiscard]] bool isKeyed() const;
  [[nodiscard]] const Members& members() const;
  /// The member, or an empty value when the index or key is not there.
  [[nodiscard]] const Value& at(qsizetype index) const;
  [[nodiscard]] const Value& value(const QString& key) const;

  friend bool operator==(const Structure& a, const Structure& b);

 private:
  std::shared_ptr<const Members> m_members;
};

}  // namespace runtime
