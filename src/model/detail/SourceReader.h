#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <optional>

#include "foundation/Color.h"
#include "foundation/Result.h"

namespace model {

/// What is wrong at which place of a source: thrown inside the reading of one source only and
/// turned into an Error at its edge.
struct SourceFault {
  QString place;
  QString message;
};

/// One object of a source with its place, e.g. `components[2] "Name 1"`. Every reader throws a
/// SourceFault for a value of the wrong type.
class SourceObject {
 public:
  SourceObject(const QJsonValue& value, QString place);

  [[nodiscard]] const QString& place() const { return m_place; }
  void setPlace(const QString& place) { m_place = place; }
  [[nodiscard]] QString placeOf(const QString& member) const;
  [[nodiscard]] bool contains(const QString& member) const { return m_object.contains(member); }
  [[nodiscard]] QStringList members() const { return m_object.keys(); }
  [[nodiscard]] QJsonValue value(const QString& member) const { return m_object.value(member); }
  /// Refuses members that are none of these.
  void allowOnly(const QStringList& members) const;
  [[nodiscard]] QString text(const QString& member) const;
  [[nodiscard]] double number(const QString& member) const;
  [[nodiscard]] bool flag(const QString& member) const;
  [[nodiscard]] std::optional<double> optionalNumber(const QString& member) const;
  /// Empty when absent.
  [[nodiscard]] QJsonArray list(const QString& member) const;
  [[nodiscard]] SourceObject object(const QString& member) const;
  [[noreturn]] void fail(const QString& member, const QString& message) const;

 private:
  QJsonObject m_object;
  QString m_place;
  QString m_separator = QStringLiteral(", ");  ///< between the place and a member
};

/// "#RRGGBB" or "#RRGGBBAA".
[[nodiscard]] std::optional<foundation::Color> colorFromText(const QString& text);

}  // namespace model
