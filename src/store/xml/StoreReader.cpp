#include "store/xml/StoreReader.h"

#include <algorithm>
#include <charconv>

#include "foundation/Base64.h"

namespace store::xml {

using foundation::Error;
using foundation::Result;

namespace {

constexpr qsizetype largestFile = qsizetype(512) << 20;
constexpr ObjectId largestNumber = ObjectId(1) << 62;

std::optional<ObjectId> objectNumber(std::string_view text) {
  ObjectId number = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end.ec != std::errc() || end.ptr != text.data() + text.size() || number == 0 ||
      number > largestNumber)
    return {};
  return number;
}

/// The encoding that the file's first line names, when it is another one.
QString foreignEncoding(QByteArrayView xml) {
  if (!xml.startsWith("<?xml")) return {};
  const QByteArray head = xml.first(std::max<qsizetype>(0, xml.indexOf("?>"))).toByteArray();
  qsizetype at = head.indexOf("encoding");
  if (at < 0) return {};
  const QByteArray name = head.mid(at + 8).replace('\'', '"').split('"').value(1);
  const bool isKnown = name.compare("utf-8", Qt::CaseInsensitive) == 0 ||
                       name.compare("us-ascii", Qt::CaseInsensitive) == 0;
  return isKnown ? QString() : QString::fromUtf8(name);
}

QByteArray spelledOut(const XmlScanner::Attribute& attribute) {
  const QByteArray raw(attribute.raw.data(), static_cast<qsizetype>(attribute.raw.size()));
  const char quote = raw.contains('"') ? '\'' : '"';
  return ' ' + QByteArray(attribute.name.data(), static_cast<qsizetype>(attribute.name.size())) +
         '=' + quote + raw + quote;
}

QString asText(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(std::min<size_t>(text.size(), 80)));
}

/// Line 0: the file as a whole.
Error problemAt(const QString& path, size_t line, const QString& reason) {
  return {QStringLiteral("The document's data cannot be read"), path,
          line == 0 ? reason : QStringLiteral("line %1: %2").arg(line).arg(reason)};
}

/// By key. The one that is there a second time, if any.
template <typename Part>
const Part* sortParts(std::vector<Part>& parts) {
  const auto byKey = [](const Part& a, const Part& b) { return a.key < b.key; };
  if (!std::is_sorted(parts.begin(), parts.end(), byKey))
    std::stable_sort(parts.begin(), parts.end(), byKey);
  const auto twice = std::adjacent_find(
      parts.begin(), parts.end(), [](const Part& a, const Part& b) { return a.key == b.key; });
  return twice == parts.end() ? nullptr : &*(twice + 1);
}

}  // namespace

std::optional<Error> sortStored(std::vector<StoredObject>& objects, const QString& path) {
  const auto byNumber = [](const StoredObject& a, const StoredObject& b) { return a.id < b.id; };
  if (!std::is_sorted(objects.begin(), objects.end(), byNumber))
    std::stable_sort(objects.begin(), objects.end(), byNumber);
  const auto twice =
      std::adjacent_find(objects.begin(), objects.end(),
                         [](const StoredObject& a, const StoredObject& b) { return a.id == b.id; });
  if (twice != objects.end())
    return problemAt(path, (twice + 1)->line,
                     QStringLiteral("there are two objects with the number %1 (see line %2)")
                         .arg(twice->id)
                         .arg(twice->line));
  const QString isTwice = QStringLiteral("\"%1\" is there twice in object %2");
  for (StoredObject& object : objects) {
    if (const StoredValue* value = sortParts(object.values))
      return problemAt(path, value->line, isTwice.arg(value->key).arg(object.id));
    if (const StoredRelation* relation = sortParts(object.relations))
      return problemAt(path, relation->line, isTwice.arg(relation->key).arg(object.id));
  }
  return {};
}

Result<StoreContents> StoreReader::read() {
  if (m_xml.size() > largestFile)
    return tl::unexpected(problemAt(m_path, 0, QStringLiteral("it is larger than 512 MiB")));
  if (const BytesProblem problem = problemWithBytes(m_xml); !problem.reason.isEmpty())
    return tl::unexpected(problemAt(m_path, lineAt(problem.position), problem.reason));
  if (const QString encoding = foreignEncoding(m_xml); !encoding.isEmpty())
    return tl::unexpected(
        problemAt(m_path, 1, QStringLiteral("it is %1 and not UTF-8").arg(encoding)));
  readRoot();
  if (m_scanner.failed())
    return tl::unexpected(problemAt(m_path, lineAt(m_scanner.position()), m_scanner.problem()));
  resolveBlocks();
  if (const auto problem = sortStored(m_contents.objects, m_path)) return tl::unexpected(*problem);
  m_contents.blocks = m_blocks.kept(m_keepsAll);
  return std::move(m_contents);
}

void StoreReader::readRoot() {
  if (!m_scanner.enterRoot()) return;
  if (m_scanner.name() != "store")
    return m_scanner.failAt(
        m_scanner.start(),
        QStringLiteral("it is no store: its root is <%1>").arg(asText(m_scanner.name())));
  for (const XmlScanner::Attribute& attribute : m_scanner.attributes()) {
    if (attribute.name == "version")
      readVersion(attribute.raw);
    else
      m_contents.attributes += spelledOut(attribute);
  }
  if (m_contents.version == 0)
    return m_scanner.failAt(m_scanner.start(), QStringLiteral("the store has no version number"));
  while (m_scanner.nextChild()) {
    if (m_scanner.name() == "object")
      readObject();
    else if (m_scanner.name() == "block")
      readBlock();
    else
      keepElement(m_contents.elements);
  }
  (void)m_scanner.atEnd();
}

void StoreReader::readVersion(std::string_view raw) {
  const auto end = std::from_chars(raw.data(), raw.data() + raw.size(), m_contents.version);
  if (end.ec != std::errc() || end.ptr != raw.data() + raw.size() || m_contents.version < 1)
    m_scanner.failAt(m_scanner.start(),
                     QStringLiteral("\"%1\" is no version number").arg(asText(raw)));
}

void StoreReader::readObject() {
  StoredObject& object = m_contents.objects.emplace_back();
  object.line = lineAt(m_scanner.start());
  readObjectHead(object);
  object.values.reserve(8);
  while (m_scanner.nextChild()) {
    if (m_scanner.name() == "relation")
      readRelation(object);
    else
      readValue(object);
  }
}

void StoreReader::readObjectHead(StoredObject& object) {
  for (const XmlScanner::Attribute& attribute : m_scanner.attributes()) {
    if (attribute.name == "id")
      object.id = objectNumber(attribute.raw).value_or(0);
    else if (attribute.name == "entity")
      object.entity = m_values.attributeText(attribute.raw);
    else
      object.attributes += spelledOut(attribute);
  }
  if (object.id == 0)
    m_scanner.failAt(m_scanner.start(), QStringLiteral("an object has no number (\"id\")"));
  if (object.entity.isEmpty())
    m_scanner.failAt(m_scanner.start(), QStringLiteral("an object has no \"entity\""));
}

void StoreReader::readRelation(StoredObject& object) {
  const size_t begin = m_scanner.start();
  StoredRelation relation{{}, 0, {}, lineAt(begin)};
  bool isWhole = true;
  for (const XmlScanner::Attribute& attribute : m_scanner.attributes()) {
    if (attribute.name == "key")
      relation.key = m_values.attributeText(attribute.raw);
    else if (attribute.name == "to")
      relation.to = objectNumber(attribute.raw).value_or(0);
    else
      isWhole = false;
  }
  bool hasElements = false;
  const std::string_view text = m_scanner.readText(hasElements);
  isWhole = isWhole && !hasElements && text.find_first_not_of(" \t\r\n") == std::string_view::npos;
  const bool isRelation = !relation.key.isEmpty() && relation.to != 0;
  if (!isRelation || !isWhole) m_keepsAll = true;
  if (!isWhole) relation.element = slice(begin);
  if (isRelation)
    object.relations.push_back(std::move(relation));
  else
    object.elements.append(slice(begin));
}

void StoreReader::readValue(StoredObject& object) {
  const size_t begin = m_scanner.start();
  const std::optional<QString> key = m_values.key();
  ValueReader::Value read = m_values.read();
  if (m_scanner.failed()) return;
  if (!key) {
    object.elements.append(slice(begin));
    m_keepsAll = true;
    return;
  }
  StoredValue stored{*key, std::move(read.value), read.isReadable, read.isWhole, {}, lineAt(begin)};
  const bool isPlain = read.isReadable && read.isWhole;
  if (!isPlain) m_keepsAll = true;
  if (!isPlain || read.namesBlocks) stored.element = slice(begin);
  if (read.namesBlocks) m_waiting.push_back({m_contents.objects.size() - 1, object.values.size()});
  object.values.push_back(std::move(stored));
}

void StoreReader::readBlock() {
  const size_t begin = m_scanner.start();
  std::optional<QString> name;
  bool isWhole = true;
  for (const XmlScanner::Attribute& attribute : m_scanner.attributes()) {
    if (attribute.name == "name")
      name = m_values.attributeText(attribute.raw);
    else
      isWhole = false;
  }
  bool hasElements = false;
  const auto bytes = foundation::bytesFromBase64(m_scanner.readText(hasElements));
  if (m_scanner.failed()) return;
  if (!name || hasElements || !bytes || !isWhole) {
    m_contents.elements.append(slice(begin));
    m_keepsAll = true;
  } else if (!m_blocks.add(name->toUtf8(), *bytes)) {
    m_scanner.failAt(begin, QStringLiteral("there are two different blocks \"%1\"").arg(*name));
  }
}

void StoreReader::keepElement(QList<QByteArray>& elements) {
  const size_t begin = m_scanner.start();
  m_scanner.skip();
  elements.append(slice(begin));
  m_keepsAll = true;
}

void StoreReader::resolveBlocks() {
  for (const Waiting& waiting : m_waiting) {
    StoredValue& stored = m_contents.objects[waiting.object].values[waiting.value];
    stored.isReadable = stored.isReadable && m_blocks.resolve(stored.value).isEmpty();
    if (stored.isReadable && stored.isWhole) stored.element.clear();
  }
}

QByteArray StoreReader::slice(size_t begin) const {
  return m_xml.mid(static_cast<qsizetype>(begin),
                   static_cast<qsizetype>(m_scanner.position() - begin));
}

size_t StoreReader::lineAt(size_t position) {
  if (position < m_linePosition) {
    m_linePosition = 0;
    m_line = 1;
  }
  position = std::min(position, static_cast<size_t>(m_xml.size()));
  const char* from = m_xml.constData() + m_linePosition;
  m_line += static_cast<size_t>(std::count(from, m_xml.constData() + position, '\n'));
  m_linePosition = position;
  return m_line;
}

}  // namespace store::xml
