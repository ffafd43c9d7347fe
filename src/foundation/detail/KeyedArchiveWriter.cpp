#include "foundation/detail/KeyedArchiveWriter.h"

#include <QLocale>

namespace foundation::detail {

namespace {

using Uid = PropertyValue::Uid;

constexpr int kMaxDepth = 190;  // what the reader accepts, less what objects add

QString number(double value) {
  return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString pair(double a, double b) {
  return QStringLiteral("{%1, %2}").arg(number(a), number(b));
}

}  // namespace

Result<PropertyValue> KeyedArchiveWriter::write(const ArchiveValue& value) {
  m_objects.append(QStringLiteral("$null"));
  const Uid root = add(value);
  if (!m_problem.isEmpty())
    return failure(QStringLiteral("The archive cannot be written"), {}, m_problem);
  return PropertyValue(PropertyDictionary{
      {QStringLiteral("$archiver"), PropertyValue(u"NSKeyedArchiver")},
      {QStringLiteral("$objects"), PropertyValue(m_objects)},
      {QStringLiteral("$top"),
       PropertyValue(PropertyDictionary{{QStringLiteral("root"), PropertyValue(root)}})},
      {QStringLiteral("$version"), PropertyValue(100000)}});
}

Uid KeyedArchiveWriter::append(const PropertyValue& stored) {
  m_objects.append(stored);
  return {static_cast<quint64>(m_objects.size() - 1)};
}

Uid KeyedArchiveWriter::add(const ArchiveValue& value) {
  if (m_depth >= kMaxDepth) m_problem = QStringLiteral("nested too deeply");
  if (value.isNil() || !m_problem.isEmpty()) return {0};
  ++m_depth;
  Uid out;
  if (const auto* v = value.as<bool>()) out = append(*v);
  if (const auto* v = value.as<qint64>()) out = append(*v);
  if (const auto* v = value.as<double>()) out = append(*v);
  if (const auto* v = value.as<QString>()) out = addString(*v);
  if (const auto* v = value.as<QByteArray>()) out = append(*v);
  if (const auto* v = value.as<QPointF>())
    out = addGeometry(1, QStringLiteral("NS.pointval"), pair(v->x(), v->y()));
  if (const auto* v = value.as<QSizeF>())
    out = addGeometry(2, QStringLiteral("NS.sizeval"), pair(v->width(), v->height()));
  if (const auto* v = value.as<QRectF>())
    out = addGeometry(
        3, QStringLiteral("NS.rectval"),
        QStringLiteral("{%1, %2}").arg(pair(v->x(), v->y()), pair(v->width(), v->height())));
  if (const auto* v = value.as<Color>()) out = addColor(*v);
  if (const auto* v = value.as<ArchiveImage>()) out = addImage(*v);
  if (const auto* v = value.as<ArchiveArray>()) out = addArray(*v);
  if (const auto* v = value.as<ArchiveDictionary>()) out = addDictionary(*v);
  if (const auto* v = value.as<ArchiveObject>()) out = addGeneric(*v);
  --m_depth;
  return out;
}

Uid KeyedArchiveWriter::addString(const QString& text) {
  const auto known = m_strings.constFind(text);
  if (known != m_strings.constEnd()) return {*known};
  // This text stands for "no object", so it needs an object around it.
  const Uid out = text == QLatin1String("$null")
                      ? addObject({QStringLiteral("NSString")},
                                  {{QStringLiteral("NS.string"), PropertyValue(text)}})
                      : append(text);
  m_strings.insert(text, out.index);
  return out;
}

Uid KeyedArchiveWriter::addObject(const QStringList& classNames, PropertyDictionary fields) {
  fields.insert(QStringLiteral("$class"), classNamed(classNames));
  return append(fields);
}

Uid KeyedArchiveWriter::classNamed(const QStringList& names) {
  const auto known = m_classes.constFind(names.first());
  if (known != m_classes.constEnd()) return {*known};
  PropertyArray chain;
  for (const QString& name : names) chain.append(name);
  if (names.last() != QLatin1String("NSObject")) chain.append(QStringLiteral("NSObject"));
  const Uid out = append(PropertyDictionary{{QStringLiteral("$classes"), PropertyValue(chain)},
                                            {QStringLiteral("$classname"), names.first()}});
  m_classes.insert(names.first(), out.index);
  return out;
}

Uid KeyedArchiveWriter::addArray(const ArchiveArray& items) {
  PropertyArray references;
  for (const ArchiveValue& item : items) references.append(add(item));
  return addObject({QStringLiteral("NSArray")},
                   {{QStringLiteral("NS.objects"), PropertyValue(references)}});
}

Uid KeyedArchiveWriter::addDictionary(const ArchiveDictionary& dictionary) {
  PropertyArray keys;
  PropertyArray references;
  for (const auto& [key, item] : dictionary.entries()) {
    keys.append(addString(key));
    references.append(add(item));
  }
  return addObject({QStringLiteral("NSDictionary")},
                   {{QStringLiteral("NS.keys"), PropertyValue(keys)},
                    {QStringLiteral("NS.objects"), PropertyValue(references)}});
}

Uid KeyedArchiveWriter::addGeometry(int kind, const QString& key, const QString& text) {
  return addObject({QStringLiteral("NSValue")},
                   {{QStringLiteral("NS.special"), kind}, {key, PropertyValue(addString(text))}});
}

Uid KeyedArchiveWriter::addColor(const Color& color) {
  QString parts = number(color.red) + u' ' + number(color.green) + u' ' + number(color.blue);
  if (color.alpha != 1) parts += u' ' + number(color.alpha);
  return addObject({QStringLiteral("NSColor")},
                   {{QStringLiteral("NSColorSpace"), 1},
                    {QStringLiteral("NSRGB"), PropertyValue(parts.toLatin1() + '\0')}});
}

Uid KeyedArchiveWriter::addImage(const ArchiveImage& image) {
  const Uid bitmap =
      addObject({QStringLiteral("NSBitmapImageRep"), QStringLiteral("NSImageRep")},
                {{QStringLiteral("NSTIFFRepresentation"), PropertyValue(append(image.file))}});
  const auto array = [this](const PropertyArray& items) {
    return addObject({QStringLiteral("NSArray")},
                     {{QStringLiteral("NS.objects"), PropertyValue(items)}});
  };
  const Uid representation = array({append(0), bitmap});
  return addObject({QStringLiteral("NSImage")},
                   {{QStringLiteral("NSReps"), PropertyValue(array({representation}))}});
}

Uid KeyedArchiveWriter::addGeneric(const ArchiveObject& object) {
  PropertyDictionary fields;
  for (const auto& [key, item] : object.fields.entries()) {
    if (key == QLatin1String("$class")) m_problem = QStringLiteral("a field named $class");
    fields.insert(key, add(item));
  }
  return addObject({object.className}, fields);
}

}  // namespace foundation::detail
