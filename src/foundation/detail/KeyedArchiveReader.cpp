#include "foundation/detail/KeyedArchiveReader.h"

#include <QRegularExpression>

namespace foundation::detail {

namespace {

constexpr int kMaxDepth = 200;
constexpr int kMaxValues = 1'000'000;

bool isOneOf(const QString& name, std::initializer_list<const char*> names) {
  return std::any_of(names.begin(), names.end(),
                     [&name](const char* one) { return name == QLatin1String(one); });
}

/// The numbers of texts such as "0.5 1 0 1" and "{{0, 1}, {2, 3}}".
QList<double> numbers(const QString& text) {
  static const QRegularExpression separators(QStringLiteral("[{},\\s\\x00]+"));
  QList<double> out;
  for (const QString& part : text.left(500).split(separators, Qt::SkipEmptyParts))
    out.append(part.toDouble());
  return out;
}

QList<double> components(const PropertyValue& stored) {
  return numbers(QString::fromLatin1(stored.toData()));
}

ArchiveValue grey(const QList<double>& c) {
  return Color{c[0], c[0], c[0], c.size() > 1 ? c[1] : 1};
}

// Alpha is left out when it is 1. Nil when the colour is of a kind that has no components.
ArchiveValue color(const PropertyDictionary& fields) {
  const QList<double> rgb = components(fields.value(u"NSRGB"));
  if (rgb.size() >= 3) return Color{rgb[0], rgb[1], rgb[2], rgb.size() > 3 ? rgb[3] : 1};
  const QList<double> white = components(fields.value(u"NSWhite"));
  if (!white.isEmpty()) return grey(white);
  const QList<double> ink = components(fields.value(u"NSCMYK"));
  if (ink.size() < 4) return {};
  const double light = 1 - ink[3];
  return Color{(1 - ink[0]) * light, (1 - ink[1]) * light, (1 - ink[2]) * light,
               ink.size() > 4 ? ink[4] : 1};
}

// Points, sizes and rectangles are texts under a key of their own.
ArchiveValue geometry(const ArchiveValue& pointText, const ArchiveValue& sizeText,
                      const ArchiveValue& rectText) {
  const QList<double> point = numbers(pointText.toString());
  if (point.size() == 2) return QPointF(point[0], point[1]);
  const QList<double> size = numbers(sizeText.toString());
  if (size.size() == 2) return QSizeF(size[0], size[1]);
  const QList<double> rect = numbers(rectText.toString());
  if (rect.size() == 4) return QRectF(rect[0], rect[1], rect[2], rect[3]);
  return {};
}

}  // namespace

KeyedArchiveReader::KeyedArchiveReader(const PropertyDictionary& archive)
    : m_archive(archive),
      m_objects(archive.value(u"$objects").array()),
      m_open(static_cast<size_t>(m_objects.size())),
      m_budget(kMaxValues) {}

Result<ArchiveValue> KeyedArchiveReader::read(const QString& fileName) {
  const PropertyDictionary& top = m_archive.value(u"$top").dictionary();
  ArchiveValue out;
  if (m_objects.isEmpty() || top.isEmpty()) {
    fail(QStringLiteral("not a keyed archive"));
  } else {
    out = value(top.contains(u"root") ? top.value(u"root") : top.begin()->second);
  }
  if (m_problem.isEmpty()) return out;
  return failure(QStringLiteral("The archive cannot be read"), fileName, m_problem);
}

void KeyedArchiveReader::fail(const QString& reason) {
  if (m_problem.isEmpty()) m_problem = reason;
}

bool KeyedArchiveReader::enter() {
  if (--m_budget < 0) fail(QStringLiteral("shared objects expand beyond all bounds"));
  if (m_depth >= kMaxDepth) fail(QStringLiteral("nested too deeply"));
  return m_problem.isEmpty();
}

ArchiveValue KeyedArchiveReader::value(const PropertyValue& stored) {
  if (!enter()) return {};
  ++m_depth;
  ArchiveValue out;
  switch (stored.type()) {
    case PropertyValue::Type::Boolean:
      out = stored.toBool();
      break;
    case PropertyValue::Type::Integer:
      out = stored.toInteger();
      break;
    case PropertyValue::Type::Real:
      out = stored.toDouble();
      break;
    case PropertyValue::Type::String:
      out = stored.toString();
      break;
    case PropertyValue::Type::Data:
      out = stored.toData();
      break;
    case PropertyValue::Type::Uid:
      out = referenced(stored.toUid().index);
      break;
    case PropertyValue::Type::Array:
      out = array(stored);
      break;
    case PropertyValue::Type::Dictionary:
      out = instance(stored.dictionary());
      break;
    default:
      break;
  }
  --m_depth;
  return out;
}

ArchiveValue KeyedArchiveReader::referenced(quint64 index) {
  if (index >= static_cast<quint64>(m_objects.size())) {
    fail(QStringLiteral("object %1 is missing").arg(index));
    return {};
  }
  const auto slot = static_cast<size_t>(index);
  if (m_open[slot]) {
    fail(QStringLiteral("object %1 contains itself").arg(index));
    return {};
  }
  const PropertyValue& stored = m_objects[static_cast<qsizetype>(index)];
  if (stored.isString() && stored.toString() == QLatin1String("$null")) return {};
  m_open[slot] = true;
  ArchiveValue out = value(stored);
  m_open[slot] = false;
  return out;
}

QString KeyedArchiveReader::className(const PropertyDictionary& fields) const {
  const PropertyValue& reference = fields.value(u"$class");
  const quint64 index = reference.toUid().index;
  if (index >= static_cast<quint64>(m_objects.size())) return {};
  return m_objects[static_cast<qsizetype>(index)].dictionary().value(u"$classname").toString();
}

ArchiveValue KeyedArchiveReader::instance(const PropertyDictionary& fields) {
  if (!fields.contains(u"$class")) return plainDictionary(fields);
  const QString name = className(fields);
  if (isOneOf(name, {"NSString", "NSMutableString"})) return value(fields.value(u"NS.string"));
  if (isOneOf(name, {"NSData", "NSMutableData"})) return value(fields.value(u"NS.data"));
  if (isOneOf(name, {"NSArray", "NSMutableArray", "NSSet", "NSMutableSet"}))
    return array(fields.value(u"NS.objects"));
  if (isOneOf(name, {"NSDictionary", "NSMutableDictionary"})) return dictionary(fields);
  ArchiveValue out;
  if (name == QLatin1String("NSColor")) out = color(fields);
  if (name == QLatin1String("NSImage")) out = image(fields);
  if (name == QLatin1String("NSValue"))
    out = geometry(value(fields.value(u"NS.pointval")), value(fields.value(u"NS.sizeval")),
                   value(fields.value(u"NS.rectval")));
  return out.isNil() ? object(name, fields) : out;
}

ArchiveArray KeyedArchiveReader::array(const PropertyValue& stored) {
  ArchiveArray out;
  for (const PropertyValue& item : stored.array()) {
    if (!m_problem.isEmpty()) break;
    out.append(value(item));
  }
  return out;
}

ArchiveDictionary KeyedArchiveReader::plainDictionary(const PropertyDictionary& fields) {
  QList<ArchiveDictionary::Entry> out;
  for (const auto& [key, stored] : fields) {
    if (!m_problem.isEmpty()) break;
    if (key != QLatin1String("$class")) out.append(ArchiveDictionary::Entry(key, value(stored)));
  }
  return ArchiveDictionary(std::move(out));
}

ArchiveValue KeyedArchiveReader::object(const QString& className,
                                        const PropertyDictionary& fields) {
  return ArchiveObject{className, plainDictionary(fields)};
}

ArchiveValue KeyedArchiveReader::dictionary(const PropertyDictionary& fields) {
  const PropertyArray& keys = fields.value(u"NS.keys").array();
  const PropertyArray& items = fields.value(u"NS.objects").array();
  QList<ArchiveDictionary::Entry> out;
  for (qsizetype i = 0; i < qMin(keys.size(), items.size()) && m_problem.isEmpty(); ++i) {
    const ArchiveValue key = value(keys[i]);
    ArchiveValue item = value(items[i]);
    if (const QString* text = key.as<QString>())
      out.append(ArchiveDictionary::Entry(*text, std::move(item)));
  }
  return ArchiveDictionary(std::move(out));
}

// A list of pairs of a number and a bitmap; the first bitmap with a picture file counts.
ArchiveValue KeyedArchiveReader::image(const PropertyDictionary& fields) {
  const ArchiveValue representations = value(fields.value(u"NSReps"));
  for (const ArchiveValue& pair : representations.array())
    for (const ArchiveValue& part : pair.array()) {
      const auto* bitmap = part.as<ArchiveObject>();
      if (!bitmap) continue;
      const auto* file = bitmap->fields.value(u"NSTIFFRepresentation").as<QByteArray>();
      if (file) return ArchiveImage{*file};
    }
  return {};
}

}  // namespace foundation::detail
