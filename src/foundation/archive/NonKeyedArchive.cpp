#include "foundation/archive/NonKeyedArchive.h"

#include "foundation/detail/ArchiveGraphBuilder.h"
#include "foundation/detail/ArchiveGraphReading.h"
#include "foundation/detail/TypedStreamReader.h"
#include "foundation/detail/TypedStreamWriter.h"

namespace foundation {

Result<ArchiveGraph> NonKeyedArchive::decode(const QByteArray& bytes) {
  return detail::TypedStreamReader(bytes).read();
}

Result<QByteArray> NonKeyedArchive::encode(const ArchiveGraph& graph) {
  return detail::TypedStreamWriter(graph).write();
}

Result<ArchiveValue> NonKeyedArchive::read(const QByteArray& bytes) {
  return decode(bytes).and_then(
      [](const ArchiveGraph& graph) { return detail::ArchiveGraphReading(graph).read(); });
}

Result<QByteArray> NonKeyedArchive::write(const ArchiveValue& value) {
  return detail::ArchiveGraphBuilder().build(value).and_then(
      [](const ArchiveGraph& graph) { return encode(graph); });
}

}  // namespace foundation
