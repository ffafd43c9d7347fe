#pragma once

#include <vector>

#include "foundation/Result.h"
#include "foundation/archive/ArchiveGraph.h"
#include "foundation/archive/ArchiveValue.h"

namespace foundation::detail {

/// Understands the objects of a non-keyed archive.
class ArchiveGraphReading {
 public:
  explicit ArchiveGraphReading(const ArchiveGraph& graph);
  [[nodiscard]] Result<ArchiveValue> read();

 private:
  using Object = ArchiveGraph::Object;

  ArchiveValue value(const ArchiveGraph::Item& item);
  ArchiveValue objectValue(const Object& object);
  ArchiveValue image(const Object& object) const;
  ArchiveValue array(const Object& object);
  ArchiveValue dictionary(const Object& object);
  void fail(const char* reason);

  const ArchiveGraph& m_graph;
  std::vector<bool> m_open;  // objects on the path to the one at hand
  int m_budget;
  QString m_problem;
};

}  // namespace foundation::detail
