#include "foundation/detail/TypedStreamReader.h"

#include <bit>

#include "foundation/detail/TypeDescription.h"
#include "foundation/detail/TypedStreamFormat.h"

namespace foundation::detail {

namespace {
constexpr int kMaxDepth = 200;
constexpr int kMaxTypeDepth = 32;
}  // namespace

Result<ArchiveGraph> TypedStreamReader::read() {
  m_budget = 4 * m_bytes.size() + 100;
  header();
  while (!failed() && m_at < m_bytes.size()) m_graph.root.append(group());
  if (!failed() && m_graph.root.isEmpty()) fail("the archive is empty");
  if (!failed()) return std::move(m_graph);
  return failure(QStringLiteral("The archive cannot be read"), {}, m_problem);
}

void TypedStreamReader::fail(const char* reason) {
  if (!failed())
    m_problem = QStringLiteral("byte %1: %2").arg(m_at).arg(QString::fromLatin1(reason));
}

void TypedStreamReader::header() {
  if (byte() != kStreamVersion) return fail("not a non-keyed archive");
  const QByteArray name = bytes(byte());
  if (name != kLittleEndianName && name != kBigEndianName) return fail("not a non-keyed archive");
  m_graph.bigEndian = name == kBigEndianName;
  m_graph.systemVersion = integer();
}

quint8 TypedStreamReader::peek() const {
  return m_at < m_bytes.size() ? static_cast<quint8>(m_bytes[m_at]) : 0;
}

quint8 TypedStreamReader::byte() {
  if (m_at >= m_bytes.size()) fail("the archive is cut short");
  return failed() ? 0 : static_cast<quint8>(m_bytes[m_at++]);
}

QByteArray TypedStreamReader::bytes(qint64 count) {
  if (count < 0 || count > m_bytes.size() - m_at) fail("a length reaches beyond the archive");
  if (failed()) return {};
  m_at += count;
  return m_bytes.mid(m_at - count, count);
}

quint64 TypedStreamReader::fixedWidth(int width) {
  const QByteArray raw = bytes(width);
  quint64 value = 0;
  for (qsizetype i = 0; i < raw.size(); ++i) {
    const qsizetype from = m_graph.bigEndian ? i : raw.size() - 1 - i;
    value = value << 8 | static_cast<quint8>(raw[from]);
  }
  return value;
}

qint64 TypedStreamReader::integer() {
  return integerFrom(byte());
}

qint64 TypedStreamReader::integerFrom(quint8 first) {
  if (first == kInt16Mark) return static_cast<qint16>(fixedWidth(2));
  if (first == kInt32Mark) return static_cast<qint32>(fixedWidth(4));
  const auto value = static_cast<qint8>(first);
  if (value < kFirstLabel) fail("a mark where a number should stand");
  return value;
}

// Whole numbers are stored as integers.
double TypedStreamReader::real(bool isDouble) {
  const quint8 first = byte();
  if (first != kRealMark) return static_cast<double>(integerFrom(first));
  if (isDouble) return std::bit_cast<double>(fixedWidth(8));
  return static_cast<double>(std::bit_cast<float>(static_cast<quint32>(fixedWidth(4))));
}

ArchiveGraph::Group TypedStreamReader::group() {
  ArchiveGraph::Group out;
  const ArchiveGraph::Item types = sharedString();
  if (const auto* text = std::get_if<QByteArray>(&types)) {
    out.types = *text;
  } else {
    fail("a group without a type");
  }
  if (!failed()) values(out.types, out.items, 0);
  return out;
}

void TypedStreamReader::values(QByteArrayView types, QList<ArchiveGraph::Item>& items, int depth) {
  if (depth > kMaxTypeDepth) return fail("a type that is nested too deeply");
  while (!failed() && !types.isEmpty()) {
    const qsizetype length = firstTypeLength(types);
    if (length == 0) return fail("a damaged type description");
    value(types.first(length), items, depth);
    types = types.sliced(length);
  }
}

void TypedStreamReader::value(QByteArrayView type, QList<ArchiveGraph::Item>& items, int depth) {
  if (--m_budget < 0) return fail("more values than the archive can hold");
  switch (type.front()) {
    case '@':
      return items.append(object());
    case '#':
      return items.append(classChain());
    case '*':
      return items.append(cString());
    case '%':
    case ':':
      return items.append(sharedString());
    case '+':
      return items.append(countedBytes());
    case 'c':
      return items.append(static_cast<qint64>(static_cast<qint8>(byte())));
    case 'C':
    case 'B':
      return items.append(static_cast<qint64>(byte()));
    case 'f':
      return items.append(real(false));
    case 'd':
      return items.append(real(true));
    case '[':
      return arrayValue(type, items, depth);
    case '{':
      return values(structureMembers(type), items, depth + 1);
    case 's':
    case 'S':
    case 'i':
    case 'I':
    case 'l':
    case 'L':
    case 'q':
    case 'Q':
      return items.append(integer());
    default:
      return fail("a value of unknown type");
  }
}

void TypedStreamReader::arrayValue(QByteArrayView type, QList<ArchiveGraph::Item>& items,
                                   int depth) {
  const ArrayType array = parseArrayType(type);
  if (array.count < 0) return fail("a damaged type description");
  if (array.isBytes()) return items.append(bytes(array.count));
  for (qint64 i = 0; i < array.count && !failed(); ++i) values(array.element, items, depth + 1);
}

ArchiveGraph::Item TypedStreamReader::countedBytes() {
  if (peek() != kNilMark) return bytes(integer());
  byte();
  return ArchiveGraph::Nil();
}

ArchiveGraph::Item TypedStreamReader::sharedString() {
  const quint8 first = byte();
  if (failed() || first == kNilMark) return ArchiveGraph::Nil();
  if (first == kNewMark) {
    m_strings.append(bytes(integer()));
    return m_strings.last();
  }
  const qint64 index = integerFrom(first) - kFirstLabel;
  if (index >= 0 && index < m_strings.size()) return m_strings[index];
  fail("a reference to a string that is missing");
  return ArchiveGraph::Nil();
}

const TypedStreamReader::Label* TypedStreamReader::label(quint8 first) {
  const qint64 index = integerFrom(first) - kFirstLabel;
  if (failed()) return nullptr;
  if (index >= 0 && index < m_labels.size()) return &m_labels.at(index);
  fail("a reference to an object that is missing");
  return nullptr;
}

ArchiveGraph::Item TypedStreamReader::cString() {
  const quint8 first = byte();
  if (failed() || first == kNilMark) return ArchiveGraph::Nil();
  if (first != kNewMark) {
    const Label* known = label(first);
    const QByteArray* text = known ? std::get_if<QByteArray>(known) : nullptr;
    if (text) return *text;
    fail("a reference that does not lead to a string");
    return ArchiveGraph::Nil();
  }
  const qsizetype index = m_labels.size();
  m_labels.append(QByteArray());
  const ArchiveGraph::Item text = sharedString();
  if (const auto* known = std::get_if<QByteArray>(&text)) m_labels[index] = *known;
  return text;
}

// From the class itself up to its furthest ancestor.
ArchiveGraph::Item TypedStreamReader::classChain() {
  ArchiveGraph::Item out = ArchiveGraph::Nil();
  qsizetype child = -1;
  while (!failed()) {
    const quint8 first = byte();
    if (first == kNilMark) break;
    qsizetype index = m_graph.classes.size();
    if (first != kNewMark) {
      const Label* known = label(first);
      const auto* reference = known ? std::get_if<ArchiveGraph::ClassReference>(known) : nullptr;
      if (!reference) {
        fail("a reference that does not lead to a class");
        break;
      }
      index = reference->index;
    } else {
      const ArchiveGraph::Item name = sharedString();
      const auto* text = std::get_if<QByteArray>(&name);
      if (!text) fail("a class without a name");
      m_graph.classes.append({text ? *text : QByteArray(), integer(), -1});
      m_labels.append(ArchiveGraph::ClassReference{index});
    }
    if (child < 0) out = ArchiveGraph::ClassReference{index};
    if (child >= 0) m_graph.classes[child].parent = index;
    if (first != kNewMark) break;
    child = index;
  }
  return out;
}

ArchiveGraph::Item TypedStreamReader::object() {
  const quint8 first = byte();
  if (failed() || first == kNilMark) return ArchiveGraph::Nil();
  if (first != kNewMark) {
    const Label* known = label(first);
    const auto* reference = known ? std::get_if<ArchiveGraph::ObjectReference>(known) : nullptr;
    if (reference) return *reference;
    fail("a reference that does not lead to an object");
    return ArchiveGraph::Nil();
  }
  if (++m_depth > kMaxDepth) fail("nested too deeply");
  const ArchiveGraph::ObjectReference self{m_graph.objects.size()};
  m_graph.objects.append(ArchiveGraph::Object());
  m_labels.append(self);
  const ArchiveGraph::Item kind = classChain();
  if (const auto* reference = std::get_if<ArchiveGraph::ClassReference>(&kind))
    m_graph.objects[self.index].classIndex = reference->index;
  else
    fail("an object without a class");
  while (!failed() && peek() != kEndMark) {
    ArchiveGraph::Group one = group();
    m_graph.objects[self.index].groups.append(std::move(one));
  }
  byte();
  --m_depth;
  return self;
}

}  // namespace foundation::detail
