#pragma once

#include <variant>

#include "foundation/Result.h"
#include "foundation/archive/ArchiveGraph.h"

namespace foundation::detail {

/// Decodes the bytes of a non-keyed archive. Work is bounded by the number of bytes, nesting by a
/// fixed depth.
class TypedStreamReader {
 public:
  explicit TypedStreamReader(const QByteArray& bytes) : m_bytes(bytes) {}
  [[nodiscard]] Result<ArchiveGraph> read();

 private:
  using Label =
      std::variant<ArchiveGraph::ObjectReference, ArchiveGraph::ClassReference, QByteArray>;

  void header();
  ArchiveGraph::Group group();
  void values(QByteArrayView types, QList<ArchiveGraph::Item>& items, int depth);
  void value(QByteArrayView type, QList<ArchiveGraph::Item>& items, int depth);
  void arrayValue(QByteArrayView type, QList<ArchiveGraph::Item>& items, int depth);
  ArchiveGraph::Item object();
  ArchiveGraph::Item classChain();
  ArchiveGraph::Item cString();
  ArchiveGraph::Item sharedString();
  ArchiveGraph::Item countedBytes();
  const Label* label(quint8 first);

  quint8 byte();
  quint8 peek() const;
  QByteArray bytes(qint64 count);
  quint64 fixedWidth(int width);
  qint64 integer();
  qint64 integerFrom(quint8 first);
  double real(bool isDouble);
  void fail(const char* reason);
  bool failed() const { return !m_problem.isEmpty(); }

  const QByteArray& m_bytes;
  qsizetype m_at = 0;
  ArchiveGraph m_graph;
  QList<QByteArray> m_strings;
  QList<Label> m_labels;
  int m_depth = 0;
  qint64 m_budget = 0;
  QString m_problem;
};

}  // namespace foundation::detail
