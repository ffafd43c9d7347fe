#include "model/detail/SourceReader.h"

#include <QRegularExpression>
#include <cmath>

namespace model {

SourceObject::SourceObject(const QJsonValue& value, QString place) : m_place(std::move(place)) {
  if (!value.isObject()) throw SourceFault{m_place, QStringLiteral("must be an object {…}")};
  m_object = value.toObject();
}

QString SourceObject::placeOf(const QString& member) const {
  if (member.isEmpty()) return m_place;
  return m_place.isEmpty() ? member : m_place + m_separator + member;
}

void SourceObject::allowOnly(const QStringList& members) const {
  for (const QString& member : m_object.keys())
    if (!members.contains(member)) fail(member, QStringLiteral("is not known"));
}

QString SourceObject::text(const QString& member) const {
  const QJsonValue found = value(member);
  if (!found.isString()) fail(member, QStringLiteral("must be a text"));
  return found.toString();
}

double SourceObject::number(const QString& member) const {
  const QJsonValue found = value(member);
  if (!found.isDouble() || !std::isfinite(found.toDouble()))
    fail(member, QStringLiteral("must be a number"));
  return found.toDouble();
}

bool SourceObject::flag(const QString& member) const {
  if (!value(member).isBool()) fail(member, QStringLiteral("must be true or false"));
  return value(member).toBool();
}

std::optional<double> SourceObject::optionalNumber(const QString& member) const {
  return contains(member) ? std::optional(number(member)) : std::nullopt;
}

QJsonArray SourceObject::list(const QString& member) const {
  if (contains(member) && !value(member).isArray())
    fail(member, QStringLiteral("must be a list […]"));
  return value(member).toArray();
}

SourceObject SourceObject::object(const QString& member) const {
  SourceObject inner(contains(member) ? value(member) : QJsonValue(QJsonObject()), placeOf(member));
  inner.m_separator = QStringLiteral(".");
  return inner;
}

void SourceObject::fail(const QString& member, const QString& message) const {
  throw SourceFault{placeOf(member), message};
}

std::optional<foundation::Color> colorFromText(const QString& text) {
  static const QRegularExpression pattern(QStringLiteral("^#[0-9A-Fa-f]{6}([0-9A-Fa-f]{2})?$"));
  if (!pattern.match(text).hasMatch()) return {};
  const auto channel = [&](qsizetype at) {
    return at < text.size() ? text.mid(at, 2).toInt(nullptr, 16) / 255.0 : 1.0;
  };
  return foundation::Color{channel(1), channel(3), channel(5), channel(7)};
}

}  // namespace model
