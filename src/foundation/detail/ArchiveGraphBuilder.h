#pragma once

#include "foundation/Result.h"
#include "foundation/archive/ArchiveGraph.h"
#include "foundation/archive/ArchiveValue.h"

namespace foundation::detail {

/// Builds the objects of a non-keyed archive from values.
class ArchiveGraphBuilder {
 public:
  [[nodiscard]] Result<ArchiveGraph> build(const ArchiveValue& value);

 private:
  ArchiveGraph::Item item(const ArchiveValue& value);
  ArchiveGraph::ObjectReference add(qsizetype classIndex, QList<ArchiveGraph::Group> groups);
  ArchiveGraph::Item number(const char* type, const ArchiveGraph::Item& value);
  ArchiveGraph::Item geometry(const char* type, QList<ArchiveGraph::Item> values);
  ArchiveGraph::Item array(const ArchiveArray& items);
  ArchiveGraph::Item dictionary(const ArchiveDictionary& entries);
  /// The class with its ancestors, the furthest last.
  qsizetype classNamed(const char* name, qint64 version, qsizetype parent);
  qsizetype objectClass() { return classNamed("NSObject", 0, -1); }

  ArchiveGraph m_graph;
  int m_depth = 0;
  QString m_problem;
};

}  // namespace foundation::detail
