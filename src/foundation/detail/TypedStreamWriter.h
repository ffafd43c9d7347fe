#pragma once

#include <QHash>

#include "foundation/Result.h"
#include "foundation/archive/ArchiveGraph.h"

namespace foundation::detail {

/// Encodes a graph; labels follow from the order of first appearance.
class TypedStreamWriter {
 public:
  explicit TypedStreamWriter(const ArchiveGraph& graph) : m_graph(graph) {}
  [[nodiscard]] Result<QByteArray> write();

 private:
  void group(const ArchiveGraph::Group& group);
  void values(QByteArrayView types, const QList<ArchiveGraph::Item>& items, qsizetype& next,
              int depth);
  void value(QByteArrayView type, const QList<ArchiveGraph::Item>& items, qsizetype& next,
             int depth);
  void scalar(char type, const ArchiveGraph::Item& item);
  void object(const ArchiveGraph::Item& item);
  void classChain(const ArchiveGraph::Item& item);
  void cString(const ArchiveGraph::Item& item);
  void sharedString(const ArchiveGraph::Item& item);
  void countedBytes(const ArchiveGraph::Item& item);
  void byte(int value) { m_out.append(static_cast<char>(value)); }
  void fixedWidth(quint64 value, int width);
  void integer(qint64 value);
  void real(double value, bool isDouble);
  void reference(qint64 label) { integer(label - 110); }
  void fail(const char* reason);

  const ArchiveGraph& m_graph;
  QByteArray m_out;
  QHash<QByteArray, qint64> m_strings;
  QHash<QByteArray, qint64> m_cStrings;
  QHash<qsizetype, qint64> m_objects;
  QHash<qsizetype, qint64> m_classes;
  qint64 m_labels = 0;  // objects, classes and C strings share one count
  int m_depth = 0;
  QString m_problem;
};

}  // namespace foundation::detail
