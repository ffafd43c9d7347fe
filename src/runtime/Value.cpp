#include "runtime/Value.h"

#include <QBuffer>
#include <charconv>
#include <cmath>

#include "runtime/StructureMember.h"

namespace runtime {

using foundation::Color;
using foundation::PropertyValue;

Value::Value(Image v) {
  if (!v.isNull()) m_data = std::move(v);
}
Value::Value(Structure v) : m_data(std::move(v)) {}
Value::Value(std::shared_ptr<const Mesh> v) {
  if (v) m_data = std::move(v);
}

Value Value::zero(PortType type) {
  switch (type) {
    case PortType::Number:
      return 0.0;
    case PortType::Index:
      return index(0);
    case PortType::Boolean:
      return false;
    case PortType::String:
      return QString();
    case PortType::Color:
      return Color::white();
    default:
      return {};
  }
}

PortType Value::type() const {
  static constexpr PortType types[] = {PortType::Virtual, PortType::Number,    PortType::Index,
                                       PortType::Boolean, PortType::String,    PortType::Color,
                                       PortType::Image,   PortType::Structure, PortType::Mesh};
  return types[m_data.index()];
}

double Value::toNumber() const {
  if (const auto* v = as<double>()) return *v;
  if (const auto* v = as<Index>()) return static_cast<double>(v->value);
  if (const auto* v = as<bool>()) return *v ? 1 : 0;
  if (const auto* v = as<QString>()) return leadingNumber(*v);
  if (const auto* v = as<Color>()) return 0.299 * v->red + 0.587 * v->green + 0.114 * v->blue;
  return 0;
}

quint64 Value::toIndex() const {
  if (const auto* v = as<Index>()) return v->value;
  if (as<QString>() && toBoolean() && toNumber() == 0) return 1;
  const double n = toNumber();
  if (!(n > 0)) return 0;  // also NaN
  return n >= 9007199254740992.0 ? quint64(9007199254740992) : static_cast<quint64>(n);
}

bool Value::toBoolean() const {
  if (const auto* v = as<bool>()) return *v;
  if (const auto* v = as<QString>())
    return leadingNumber(*v) != 0 || v->compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 ||
           v->compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0;
  switch (type()) {
    case PortType::Image:
    case PortType::Structure:
    case PortType::Mesh:
      return true;
    case PortType::Virtual:
      return false;
    default:
      return toNumber() != 0;
  }
}

QString Value::toString() const {
  if (const auto* v = as<QString>()) return *v;
  if (const auto* v = as<bool>()) return *v ? QStringLiteral("1") : QStringLiteral("0");
  if (const auto* v = as<Index>()) return QString::number(v->value);
  if (const auto* v = as<double>()) return numberText(*v);
  if (const auto* v = as<Color>())
    return QStringLiteral("(%1, %2, %3, %4)")
        .arg(numberText(v->red), numberText(v->green), numberText(v->blue), numberText(v->alpha));
  if (const auto* v = as<Structure>()) {
    QStringList parts;
    for (const StructureMember& member : v->members()) parts += member.value.toString();
    return QStringLiteral("(%1)").arg(parts.join(QStringLiteral(", ")));
  }
  return {};
}

Color Value::toColor() const {
  if (const auto* v = as<Color>()) return *v;
  switch (type()) {
    case PortType::Number:
    case PortType::Index:
    case PortType::Boolean: {
      const double grey = toNumber();
      return {grey, grey, grey, 1};
    }
    default:
      return {};
  }
}

Image Value::toImage() const {
  const auto* v = as<Image>();
  return v ? *v : Image();
}

Structure Value::toStructure() const {
  const auto* v = as<Structure>();
  return v ? *v : Structure();
}

std::shared_ptr<const Mesh> Value::toMesh() const {
  const auto* v = as<std::shared_ptr<const Mesh>>();
  return v ? *v : nullptr;
}

Value Value::converted(PortType to) const {
  if (to == PortType::Virtual || type() == to) return *this;
  switch (to) {
    case PortType::Number:
      return toNumber();
    case PortType::Index:
      return index(toIndex());
    case PortType::Boolean:
      return toBoolean();
    case PortType::String:
      return toString();
    case PortType::Color:
      return toColor();
    default:
      return {};  // an image or a structure cannot be made from anything else
  }
}

bool operator==(const Value& a, const Value& b) {
  if (const auto* x = a.as<double>())
    if (const auto* y = b.as<double>()) return *x == *y || (std::isnan(*x) && std::isnan(*y));
  return a.m_data == b.m_data;
}

QString numberText(double value) {
  if (std::isnan(value)) return QStringLiteral("nan");
  if (std::isinf(value)) return value > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
  if (value == 0) return QStringLiteral("0");
  char buffer[64];
  const double size = std::abs(value);
  const auto format =
      size >= 1e-7 && size < 1e15 ? std::chars_format::fixed : std::chars_format::general;
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format);
  return QString::fromLatin1(buffer, end.ptr - buffer);
}

double leadingNumber(QStringView text) {
  const QByteArray bytes = text.trimmed().left(64).toLatin1();
  const char* first = bytes.constData();
  const char* last = first + bytes.size();
  if (first != last && *first == '+') ++first;
  double value = 0;
  const auto end = std::from_chars(first, last, value);
  return end.ec == std::errc() && std::isfinite(value) ? value : 0;
}

QString portTypeName(PortType type) {
  switch (type) {
    case PortType::Number:
      return QStringLiteral("QCPortTypeNumber");
    case PortType::Index:
      return QStringLiteral("QCPortTypeIndex");
    case PortType::Boolean:
      return QStringLiteral("QCPortTypeBoolean");
    case PortType::String:
      return QStringLiteral("QCPortTypeString");
    case PortType::Color:
      return QStringLiteral("QCPortTypeColor");
    case PortType::Image:
      return QStringLiteral("QCPortTypeImage");
    case PortType::Structure:
      return QStringLiteral("QCPortTypeStructure");
    default:
      return {};
  }
}

QString portTypeWord(PortType type) {
  switch (type) {
    case PortType::Number:
      return QStringLiteral("a number");
    case PortType::Index:
      return QStringLiteral("an index");
    case PortType::Boolean:
      return QStringLiteral("a boolean");
    case PortType::String:
      return QStringLiteral("a string");
    case PortType::Color:
      return QStringLiteral("a colour");
    case PortType::Image:
      return QStringLiteral("an image");
    case PortType::Structure:
      return QStringLiteral("a structure");
    case PortType::Mesh:
      return QStringLiteral("a mesh");
    case PortType::Interaction:
      return QStringLiteral("an interaction");
    case PortType::Virtual:
      return QStringLiteral("anything");
  }
  return {};
}

bool isConvertible(PortType from, PortType to) {
  using T = PortType;
  if (from == to || from == T::Virtual || to == T::Virtual || to == T::Boolean) return true;
  const auto isObject = [](T type) {
    return type == T::Image || type == T::Structure || type == T::Mesh || type == T::Interaction;
  };
  if (isObject(to)) return false;
  if (isObject(from)) return from == T::Structure && to == T::String;
  return from != T::String || to != T::Color;
}

PortType portTypeForClass(const QString& portClass) {
  static const std::pair<QLatin1String, PortType> classes[] = {
      {QLatin1String("QCNumberPort"), PortType::Number},
      {QLatin1String("QCIndexPort"), PortType::Index},
      {QLatin1String("QCBooleanPort"), PortType::Boolean},
      {QLatin1String("QCStringPort"), PortType::String},
      {QLatin1String("QCColorPort"), PortType::Color},
      {QLatin1String("QCImagePort"), PortType::Image},
      {QLatin1String("QCGLImagePort"), PortType::Image},
      {QLatin1String("QCStructurePort"), PortType::Structure},
      {QLatin1String("QCMeshPort"), PortType::Mesh},
      {QLatin1String("QCInteractionPort"), PortType::Interaction}};
  for (const auto& [name, type] : classes)
    if (portClass == name) return type;
  return PortType::Virtual;
}

namespace {

Color storedColor(const foundation::PropertyDictionary& d) {
  return {d.value(u"red").toDouble(), d.value(u"green").toDouble(), d.value(u"blue").toDouble(),
          d.value(u"alpha").toDouble(1)};
}

Value freeValue(const PropertyValue& stored, int depth);

Value storedStructure(const PropertyValue& stored, int depth) {
  Structure::Members members;
  if (depth > 64) return {};
  for (const PropertyValue& entry : stored.array())
    members.push_back({QString(), freeValue(entry, depth + 1)});
  for (const auto& [key, entry] : stored.dictionary())
    members.push_back({key, freeValue(entry, depth + 1)});
  return Structure(std::move(members));
}

/// For ports without a type of their own: the stored value decides.
Value freeValue(const PropertyValue& stored, int depth) {
  switch (stored.type()) {
    case PropertyValue::Type::Boolean:
      return stored.toBool();
    case PropertyValue::Type::Integer:
    case PropertyValue::Type::Real:
      return stored.toDouble();
    case PropertyValue::Type::String:
      return stored.toString();
    case PropertyValue::Type::Data:
      return Image::fromQImage(QImage::fromData(stored.toData()));
    case PropertyValue::Type::Array:
    case PropertyValue::Type::Dictionary:
      return storedStructure(stored, depth);
    default:
      return {};
  }
}

}  // namespace

Value Value::fromProperty(const PropertyValue& stored, PortType type) {
  switch (type) {
    case PortType::Color:
      return stored.isDictionary() ? Value(storedColor(stored.dictionary()))
                                   : freeValue(stored, 0).converted(type);
    case PortType::Index:
      return index(stored.toInteger() > 0 ? static_cast<quint64>(stored.toInteger()) : 0);
    default:
      return freeValue(stored, 0).converted(type);
  }
}

PropertyValue Value::toProperty() const {
  if (const auto* v = as<double>()) return *v;
  if (const auto* v = as<Index>()) return static_cast<qint64>(v->value);
  if (const auto* v = as<bool>()) return *v;
  if (const auto* v = as<QString>()) return *v;
  if (const auto* v = as<Color>())
    return foundation::PropertyDictionary{{QStringLiteral("red"), v->red},
                                          {QStringLiteral("green"), v->green},
                                          {QStringLiteral("blue"), v->blue},
                                          {QStringLiteral("alpha"), v->alpha}};
  if (const auto* v = as<Image>()) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    v->bitmap().save(&buffer, "PNG");
    return bytes;
  }
  if (const auto* v = as<Structure>()) {
    foundation::PropertyArray list;
    foundation::PropertyDictionary keyed;
    for (const StructureMember& member : v->members()) {
      if (v->isKeyed())
        keyed.insert(member.key, member.value.toProperty());
      else
        list.append(member.value.toProperty());
    }
    return v->isKeyed() ? PropertyValue(keyed) : PropertyValue(list);
  }
  return {};
}

}  // namespace runtime
