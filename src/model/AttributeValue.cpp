#include "model/AttributeValue.h"

#include <QLocale>

#include "model/RichFontValue.h"
#include "quartz/QuartzComposition.h"

namespace model {

using foundation::Color;
using foundation::PropertyValue;

AttributeValue::AttributeValue(QImage value)
    : m_data(std::move(value).convertToFormat(QImage::Format_ARGB32)) {}

AttributeValue AttributeValue::fromRuntime(const runtime::Value& value) {
  switch (value.isEmpty() ? runtime::PortType::Virtual : value.type()) {
    case runtime::PortType::Number:
      return value.toNumber();
    case runtime::PortType::Index:
      return static_cast<qint64>(value.toIndex());
    case runtime::PortType::Boolean:
      return value.toBoolean();
    case runtime::PortType::String:
      return value.toString();
    case runtime::PortType::Color:
      return value.toColor();
    case runtime::PortType::Image:
      return value.toImage().isNull() ? AttributeValue() : value.toImage().bitmap();
    default:
      return {};
  }
}

double AttributeValue::toNumber() const {
  if (const auto* number = as<double>()) return *number;
  if (const auto* index = as<qint64>()) return static_cast<double>(*index);
  if (const auto* flag = as<bool>()) return *flag ? 1 : 0;
  return 0;
}

QString AttributeValue::toString() const {
  const auto* text = as<QString>();
  return text ? *text : QString();
}

QImage AttributeValue::toImage() const {
  const auto* image = as<QImage>();
  return image ? *image : QImage();
}

QString AttributeValue::description() const {
  if (const auto* flag = as<bool>())
    return *flag ? QStringLiteral("true") : QStringLiteral("false");
  if (const auto* index = as<qint64>()) return QString::number(*index);
  if (const auto* number = as<double>())
    return QString::number(*number, 'g', QLocale::FloatingPointShortest);
  if (const auto* text = as<QString>()) return *text;
  if (const auto* color = as<Color>()) {
    const QColor shown = color->toQColor();
    return QStringLiteral("#%1").arg(
        (quint64{shown.rgb() & 0xffffffU} << 8U | static_cast<quint64>(shown.alpha())), 8, 16,
        QLatin1Char('0'));
  }
  if (const auto* image = as<QImage>())
    return QStringLiteral("image %1 x %2").arg(image->width()).arg(image->height());
  const auto describe = [](const FontValue& font) {
    return QStringLiteral("%1 %2 pt").arg(font.name).arg(font.size);
  };
  if (const auto* font = as<FontValue>()) return describe(*font);
  if (const auto* rich = as<std::shared_ptr<const RichFontValue>>(); rich && *rich)
    return describe((*rich)->font());
  return QStringLiteral("nothing");
}

PropertyValue AttributeValue::quartzValue() const {
  using quartz::QuartzComposition;
  if (const auto* flag = as<bool>()) return *flag;
  if (const auto* index = as<qint64>()) return *index;
  if (const auto* number = as<double>()) return *number;
  if (const auto* text = as<QString>()) return *text;
  if (const auto* color = as<Color>()) return QuartzComposition::quartzValueForObject(*color);
  if (const auto* image = as<QImage>(); image && !image->isNull())
    return QuartzComposition::quartzValueForObject(*image);
  return {};
}

runtime::Value AttributeValue::runtimeValue() const {
  if (const auto* flag = as<bool>()) return *flag;
  if (const auto* index = as<qint64>())
    return runtime::Value::index(static_cast<quint64>(std::max<qint64>(*index, 0)));
  if (const auto* number = as<double>()) return *number;
  if (const auto* text = as<QString>()) return *text;
  if (const auto* color = as<Color>()) return *color;
  if (const auto* image = as<QImage>(); image && !image->isNull())
    return runtime::Image::fromQImage(*image);
  return {};
}

bool operator==(const AttributeValue& a, const AttributeValue& b) {
  using RichFont = std::shared_ptr<const RichFontValue>;
  const auto* first = a.as<RichFont>();
  const auto* second = b.as<RichFont>();
  if (first && second && *first && *second) return **first == **second;
  return a.m_data == b.m_data;
}

}  // namespace model
