#include "runtime/patches/XmlStructure.h"

#include <QXmlStreamReader>

#include "runtime/StructureMember.h"
#include "runtime/Value.h"

namespace runtime::patches {

namespace {

constexpr int maximumDepth = 100;
constexpr int maximumElements = 200'000;

class Reader {
 public:
  explicit Reader(QIODevice& device) : m_xml(&device) {}

  foundation::Result<Structure> read(const QString& fileName) {
    Value root;
    if (m_xml.readNextStartElement()) root = element(0);
    while (!m_xml.atEnd()) m_xml.readNext();  // what follows the root must be well-formed too
    if (m_xml.hasError() || root.isEmpty())
      return foundation::failure(
          QStringLiteral("is not readable XML"), fileName,
          QStringLiteral("line %1: %2").arg(m_xml.lineNumber()).arg(m_xml.errorString()));
    if (root.as<Structure>()) return root.toStructure();
    return Structure(Structure::Members{{QStringLiteral("text"), std::move(root)}});
  }

 private:
  struct Child {
    QString name;
    std::vector<Value> values;
  };

  Value element(int depth) {
    if (depth > maximumDepth || ++m_elements > maximumElements) {
      m_xml.raiseError(QStringLiteral("too many or too deeply nested elements"));
      return {};
    }
    std::vector<Child> children;
    QHash<QString, size_t> places;
    const auto add = [&](const QString& name, Value value) {
      const auto place = places.constFind(name);
      if (place != places.constEnd()) {
        children[*place].values.push_back(std::move(value));
        return;
      }
      places.insert(name, children.size());
      children.push_back({name, {std::move(value)}});
    };
    for (const QXmlStreamAttribute& attribute : m_xml.attributes())
      add(attribute.name().toString(), attribute.value().toString());
    QString text;
    while (!m_xml.atEnd() && m_xml.readNext() != QXmlStreamReader::EndElement) {
      if (m_xml.isCharacters()) text += m_xml.text();
      if (!m_xml.isStartElement()) continue;
      const QString name = m_xml.name().toString();
      add(name, element(depth + 1));
    }
    text = text.trimmed();
    if (children.empty()) return text;
    if (!text.isEmpty()) add(QStringLiteral("text"), text);
    if (children.size() == 1 && children.front().values.size() > 1)
      return Structure::fromValues(std::move(children.front().values));
    Structure::Members members;
    for (Child& child : children)
      members.push_back({child.name, child.values.size() == 1
                                         ? std::move(child.values.front())
                                         : Value(Structure::fromValues(std::move(child.values)))});
    return Structure(std::move(members));
  }

  QXmlStreamReader m_xml;
  int m_elements = 0;
};

}  // namespace

foundation::Result<Structure> structureFromXml(QIODevice& device, const QString& fileName) {
  return Reader(device).read(fileName);
}

}  // namespace runtime::patches
