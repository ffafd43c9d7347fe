#pragma once

#include <QDateTime>
#include <QString>

namespace runtime::patches {

/// The date and time by a Unicode date pattern such as "EEEE d MMMM yyyy" or "HH:mm:ss", with
/// English names. Text between apostrophes is literal, two apostrophes are one; letters without a
/// meaning are left out.
[[nodiscard]] QString dateText(const QDateTime& when, const QString& pattern);

enum class DateStyle : quint8 { None, Short, Medium, Long, Full };

/// The pattern of the styles for the date and for the time of day; empty when both are None.
[[nodiscard]] QString datePattern(DateStyle date, DateStyle time);

/// Seconds since 2001-01-01 00:00 GMT as a date in the zone ("Europe/London", "GMT+2"); an empty or
/// unknown zone is the local one. Times beyond some 3,000 years around are clamped.
[[nodiscard]] QDateTime dateFromReference(double seconds, const QString& zoneName);

}  // namespace runtime::patches
