#include "foundation/detail/TypedStreamWriter.h"

#include <bit>
#include <cmath>
#include <limits>

#include "foundation/detail/TypeDescription.h"
#include "foundation/detail/TypedStreamFormat.h"

namespace foundation::detail {

namespace {

constexpr int kMaxDepth = 200;

template <typename T>
bool fits(qint64 value) {
  return value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
}

// Whole numbers but negative zero, which an integer cannot tell from zero.
bool isStoredAsInteger(double value) {
  return std::abs(value) <= 2147483647.0 && value == std::trunc(value) &&
         !(value == 0 && std::signbit(value));
}

}  // namespace

Result<QByteArray> TypedStreamWriter::write() {
  const char* name = m_graph.bigEndian ? kBigEndianName : kLittleEndianName;
  byte(kStreamVersion);
  byte(static_cast<int>(qstrlen(name)));
  m_out += name;
  integer(m_graph.systemVersion);
  for (const ArchiveGraph::Group& one : m_graph.root) group(one);
  if (m_problem.isEmpty()) return std::move(m_out);
  return failure(QStringLiteral("The archive cannot be written"), {}, m_problem);
}

void TypedStreamWriter::fail(const char* reason) {
  if (m_problem.isEmpty()) m_problem = QString::fromLatin1(reason);
}

void TypedStreamWriter::fixedWidth(quint64 value, int width) {
  for (int i = 0; i < width; ++i) {
    const int shift = 8 * (m_graph.bigEndian ? width - 1 - i : i);
    byte(static_cast<int>(value >> shift & 0xFF));
  }
}

void TypedStreamWriter::integer(qint64 value) {
  if (value >= kFirstLabel && value <= 127) return byte(static_cast<int>(value));
  if (fits<qint16>(value)) {
    byte(kInt16Mark);
    return fixedWidth(static_cast<quint64>(value), 2);
  }
  if (!fits<qint32>(value)) return fail("an integer of more than 32 bits");
  byte(kInt32Mark);
  fixedWidth(static_cast<quint64>(value), 4);
}

void TypedStreamWriter::real(double value, bool isDouble) {
  if (isStoredAsInteger(value)) return integer(static_cast<qint64>(value));
  byte(kRealMark);
  if (isDouble) return fixedWidth(std::bit_cast<quint64>(value), 8);
  fixedWidth(std::bit_cast<quint32>(static_cast<float>(value)), 4);
}

void TypedStreamWriter::group(const ArchiveGraph::Group& group) {
  if (!m_problem.isEmpty()) return;
  sharedString(group.types);
  qsizetype next = 0;
  values(group.types, group.items, next, 0);
  if (next != group.items.size()) fail("values that do not match their type");
}

void TypedStreamWriter::values(QByteArrayView types, const QList<ArchiveGraph::Item>& items,
                               qsizetype& next, int depth) {
  if (depth > 32) return fail("a type that is nested too deeply");
  while (m_problem.isEmpty() && !types.isEmpty()) {
    const qsizetype length = firstTypeLength(types);
    if (length == 0) return fail("a damaged type description");
    value(types.first(length), items, next, depth);
    types = types.sliced(length);
  }
}

void TypedStreamWriter::value(QByteArrayView type, const QList<ArchiveGraph::Item>& items,
                              qsizetype& next, int depth) {
  if (type.front() == '{') return values(structureMembers(type), items, next, depth + 1);
  const bool isArray = type.front() == '[';
  const ArrayType array = isArray ? parseArrayType(type) : ArrayType();
  if (isArray && array.count < 0) return fail("a damaged type description");
  if (isArray && !array.isBytes()) {
    const qint64 room = items.size() - next;
    for (qint64 i = 0; i < array.count && m_problem.isEmpty(); ++i) {
      if (i > room) return fail("values that do not match their type");
      values(array.element, items, next, depth + 1);
    }
    return;
  }
  if (next >= items.size()) return fail("values that do not match their type");
  const ArchiveGraph::Item& item = items[next++];
  if (!isArray) return scalar(type.front(), item);
  const auto* bytes = std::get_if<QByteArray>(&item);
  if (!bytes || bytes->size() != array.count) return fail("values that do not match their type");
  m_out += *bytes;
}

void TypedStreamWriter::scalar(char type, const ArchiveGraph::Item& item) {
  const qint64* number = std::get_if<qint64>(&item);
  const double* decimal = std::get_if<double>(&item);
  switch (type) {
    case '@':
      return object(item);
    case '#':
      return classChain(item);
    case '*':
      return cString(item);
    case '%':
    case ':':
      return sharedString(item);
    case '+':
      return countedBytes(item);
    case 'c':
    case 'C':
    case 'B':
      if (!number || !(fits<qint8>(*number) || fits<quint8>(*number)))
        return fail("values that do not match their type");
      return byte(static_cast<int>(*number & 0xFF));
    case 'f':
    case 'd':
      return decimal ? real(*decimal, type == 'd') : fail("values that do not match their type");
    default:
      return number ? integer(*number) : fail("values that do not match their type");
  }
}

void TypedStreamWriter::countedBytes(const ArchiveGraph::Item& item) {
  const auto* text = std::get_if<QByteArray>(&item);
  if (!text) return byte(kNilMark);
  integer(text->size());
  m_out += *text;
}

void TypedStreamWriter::sharedString(const ArchiveGraph::Item& item) {
  const auto* text = std::get_if<QByteArray>(&item);
  if (!text) return byte(kNilMark);
  const auto known = m_strings.constFind(*text);
  if (known != m_strings.constEnd()) return reference(*known);
  m_strings.insert(*text, m_strings.size());
  byte(kNewMark);
  integer(text->size());
  m_out += *text;
}

void TypedStreamWriter::cString(const ArchiveGraph::Item& item) {
  const auto* text = std::get_if<QByteArray>(&item);
  if (!text) return byte(kNilMark);
  const auto known = m_cStrings.constFind(*text);
  if (known != m_cStrings.constEnd()) return reference(*known);
  m_cStrings.insert(*text, m_labels++);
  byte(kNewMark);
  sharedString(item);
}

void TypedStreamWriter::classChain(const ArchiveGraph::Item& item) {
  const auto* first = std::get_if<ArchiveGraph::ClassReference>(&item);
  qsizetype index = first ? first->index : -1;
  while (index >= 0) {
    if (index >= m_graph.classes.size()) return fail("a class that is missing");
    const auto known = m_classes.constFind(index);
    if (known != m_classes.constEnd()) return reference(*known);
    m_classes.insert(index, m_labels++);
    byte(kNewMark);
    sharedString(m_graph.classes[index].name);
    integer(m_graph.classes[index].version);
    index = m_graph.classes[index].parent;
  }
  byte(kNilMark);
}

void TypedStreamWriter::object(const ArchiveGraph::Item& item) {
  const auto* target = std::get_if<ArchiveGraph::ObjectReference>(&item);
  if (!target) return byte(kNilMark);
  if (target->index < 0 || target->index >= m_graph.objects.size())
    return fail("an object that is missing");
  const auto known = m_objects.constFind(target->index);
  if (known != m_objects.constEnd()) return reference(*known);
  if (++m_depth > kMaxDepth) return fail("nested too deeply");
  m_objects.insert(target->index, m_labels++);
  const ArchiveGraph::Object& object = m_graph.objects[target->index];
  byte(kNewMark);
  classChain(ArchiveGraph::ClassReference{object.classIndex});
  for (const ArchiveGraph::Group& one : object.groups) group(one);
  byte(kEndMark);
  --m_depth;
}

}  // namespace foundation::detail
