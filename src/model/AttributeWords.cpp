#include "model/AttributeWords.h"

#include <QRegularExpression>
#include <cmath>

namespace model {

namespace {

std::optional<double> numberFrom(const QString& text) {
  bool isNumber = false;
  const double number = QString(text).replace(u',', u'.').toDouble(&isNumber);
  return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<AttributeValue> indexFrom(const QString& text) {
  bool isNumber = false;
  const qint64 index = text.toLongLong(&isNumber);
  return isNumber && index >= 0 ? std::optional(AttributeValue(index)) : std::nullopt;
}

std::optional<AttributeValue> flagFrom(const QString& text) {
  // Spreadsheets turn the words into their own.
  const QString word = text.toLower();
  if (word == QLatin1String("true") || word == QLatin1String("1")) return AttributeValue(true);
  if (word == QLatin1String("false") || word == QLatin1String("0")) return AttributeValue(false);
  return {};
}

std::optional<AttributeValue> colorFrom(const QString& text) {
  static const QRegularExpression pattern(
      QStringLiteral("^#([0-9a-fA-F]{2})([0-9a-fA-F]{2})([0-9a-fA-F]{2})([0-9a-fA-F]{2})?$"));
  const QRegularExpressionMatch match = pattern.match(text);
  if (!match.hasMatch()) return {};
  const auto channel = [&match](int index) {
    return match.captured(index).isEmpty() ? 1.0 : match.captured(index).toInt(nullptr, 16) / 255.0;
  };
  return foundation::Color{channel(1), channel(2), channel(3), channel(4)};
}

}  // namespace

QString AttributeWords::typeWord(AttributeType type) {
  switch (type) {
    case AttributeType::String:
      return QStringLiteral("string");
    case AttributeType::Index:
    case AttributeType::IndexWithMenu:
      return QStringLiteral("index");
    case AttributeType::Number:
      return QStringLiteral("number");
    case AttributeType::Boolean:
      return QStringLiteral("boolean");
    case AttributeType::Color:
      return QStringLiteral("color");
    case AttributeType::Image:
      return QStringLiteral("image");
    case AttributeType::Font:
      return QStringLiteral("font");
    case AttributeType::RichText:
      return QStringLiteral("rich text");
    case AttributeType::File:
    case AttributeType::OtherFile:
      return QStringLiteral("file");
    case AttributeType::VideoInput:
      return QStringLiteral("video input");
    case AttributeType::RichFont:
      return QStringLiteral("rich font");
  }
  return QStringLiteral("unknown");
}

std::optional<AttributeType> AttributeWords::typeFromWord(const QString& word) {
  for (const AttributeType type :
       {AttributeType::String, AttributeType::Index, AttributeType::Number, AttributeType::Boolean,
        AttributeType::Color})
    if (word == typeWord(type)) return type;
  return {};
}

std::optional<AttributeValue> AttributeWords::valueFromText(const QString& text,
                                                            AttributeType type) {
  switch (type) {
    case AttributeType::String:
      return AttributeValue(text);
    case AttributeType::Index:
    case AttributeType::IndexWithMenu:
      return indexFrom(text.trimmed());
    case AttributeType::Number:
      if (const auto number = numberFrom(text.trimmed())) return AttributeValue(*number);
      return {};
    case AttributeType::Boolean:
      return flagFrom(text.trimmed());
    case AttributeType::Color:
      return colorFrom(text.trimmed());
    default:
      return {};
  }
}

}  // namespace model
