#include "cli/edit/AttributeText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <cmath>

#include "cli/InputAssignment.h"
#include "model/RichFontValue.h"

namespace cli {

using model::Attribute;
using model::AttributeType;
using model::AttributeValue;
using model::FontValue;
using model::RichFontValue;
using runtime::PortAttributes;
using runtime::PortType;
using RichFont = std::shared_ptr<const RichFontValue>;

namespace {

constexpr qint64 largestText = 16 * 1024 * 1024;
constexpr double largestNumber = 1 << 24;  ///< up to it single precision keeps whole pixels

/// Values that composition files know are read as a playout system's are.
std::optional<PortType> portType(AttributeType type) {
  switch (type) {
    case AttributeType::Index:
    case AttributeType::IndexWithMenu:
      return PortType::Index;
    case AttributeType::Number:
      return PortType::Number;
    case AttributeType::Boolean:
      return PortType::Boolean;
    case AttributeType::Color:
      return PortType::Color;
    case AttributeType::Image:
    case AttributeType::VideoInput:
      return PortType::Image;
    default:
      return {};
  }
}

tl::expected<runtime::Value, LoadFailure> portValue(const QString& key, PortType type,
                                                    const QString& text, const QString& folder,
                                                    const QStringList& menu = {}) {
  PortAttributes port;
  port.key = key;
  port.type = type;
  port.menu = menu;
  return playout::InputValues::fromText(text, port, folder).map_error(InputAssignment::told);
}

/// "NAME SIZE", or one of both; what is not given stays as it is.
FontValue fontFrom(const QString& text, FontValue font) {
  static const QRegularExpression pattern(
      QStringLiteral("^(?<name>.*?)(?:(?:^|\\s+)(?<size>\\d+(?:\\.\\d+)?))?$"));
  const QRegularExpressionMatch match = pattern.match(text.trimmed());
  if (!match.captured(u"name").isEmpty()) font.name = match.captured(u"name");
  if (!match.captured(u"size").isEmpty()) font.size = match.captured(u"size").toDouble();
  return font;
}

}  // namespace

tl::expected<QString, LoadFailure> AttributeText::filePath(const QString& text) const {
  const QString name = text.startsWith(u'@') ? text.mid(1) : text;
  const QString path = QDir::cleanPath(QDir(m_folder).absoluteFilePath(name));
  if (QFileInfo(path).isFile()) return path;
  return failed(ExitStatus::InputUnreadable, QStringLiteral("there is no such file"), path);
}

tl::expected<QImage, LoadFailure> AttributeText::picture(const QString& text) const {
  const auto path = filePath(text);
  if (!path) return tl::unexpected(path.error());
  return portValue({}, PortType::Image, *path, m_folder).map([](const runtime::Value& value) {
    return AttributeValue::fromRuntime(value).toImage();
  });
}

tl::expected<double, LoadFailure> AttributeText::number(const QString& key, const QString& text) {
  const auto value = portValue(key, PortType::Number, text, {});
  if (!value) return tl::unexpected(value.error());
  if (std::abs(value->toNumber()) <= largestNumber) return value->toNumber();
  return misused(QStringLiteral("'%1' is too large: %2").arg(key, text));
}

tl::expected<bool, LoadFailure> AttributeText::flag(const QString& key, const QString& text) {
  return portValue(key, PortType::Boolean, text, {}).map([](const runtime::Value& value) {
    return value.toBoolean();
  });
}

tl::expected<foundation::Color, LoadFailure> AttributeText::color(const QString& key,
                                                                  const QString& text) {
  return portValue(key, PortType::Color, text, {}).map([](const runtime::Value& value) {
    return value.toColor();
  });
}

AttributeText::Read AttributeText::textValue(const QString& text) const {
  if (text.startsWith(QLatin1String("@@"))) return text.mid(1);
  if (!text.startsWith(u'@')) return text;
  const auto path = filePath(text);
  if (!path) return tl::unexpected(path.error());
  QFile file(*path);
  if (!file.open(QIODevice::ReadOnly) || file.size() > largestText)
    return failed(ExitStatus::InputUnreadable, QStringLiteral("cannot be read as a text"), *path);
  QString content = QString::fromUtf8(file.readAll());
  if (content.endsWith(u'\n')) content.chop(1);
  return content;
}

AttributeText::Read AttributeText::value(const Attribute& attribute, const QString& text) const {
  const AttributeType type = attribute.type();
  if (type == AttributeType::Font) {
    const AttributeValue present = attribute.currentValue();
    const auto* font = present.as<FontValue>();
    return fontFrom(text, font ? *font : FontValue());
  }
  if (type == AttributeType::RichFont) {
    const AttributeValue present = attribute.currentValue();
    const auto* font = present.as<RichFont>();
    if (!font || !*font)
      return misused(QStringLiteral("'%1' holds no font to change").arg(attribute.key()));
    auto changed = std::make_shared<RichFontValue>(**font);
    changed->setFont(fontFrom(text, (*font)->font()));
    return RichFont(changed);
  }
  if (attribute.isFilePath() && text.startsWith(u'@'))
    return filePath(text).map([](const QString& path) { return AttributeValue(path); });
  const auto port = portType(type);
  if (!port) return textValue(text);
  const QString given = *port == PortType::Image && text.startsWith(u'@') ? text.mid(1) : text;
  return portValue(attribute.key(), *port, given, m_folder, attribute.possibleValues())
      .map([](const runtime::Value& value) { return AttributeValue::fromRuntime(value); });
}

AttributeText::Read AttributeText::richFontValue(const Attribute& attribute, const QString& key,
                                                 const QString& text) const {
  const AttributeValue present = attribute.currentValue();
  const auto* font = present.as<RichFont>();
  const AttributeValue member = (*font)->renderAttributes().value(key);
  AttributeValue value = text;
  if (member.as<double>() || member.as<qint64>() || member.as<bool>()) {
    const auto type = member.as<bool>() ? PortType::Boolean : PortType::Number;
    const auto read = portValue(key, type, text, m_folder);
    if (!read) return tl::unexpected(read.error());
    value = AttributeValue::fromRuntime(*read);
    if (member.as<qint64>()) value = static_cast<qint64>(value.toNumber());
  } else if (member.as<foundation::Color>()) {
    const auto read = color(key, text);
    if (!read) return tl::unexpected(read.error());
    value = *read;
  }
  auto changed = std::make_shared<RichFontValue>(**font);
  changed->setValueForFullKey(value, key);
  return RichFont(changed);
}

}  // namespace cli
