#include "runtime/patches/DatePattern.h"

#include <QLocale>
#include <QTimeZone>
#include <cmath>

namespace runtime::patches {

namespace {

QString padded(qint64 number, qsizetype width) {
  return QStringLiteral("%1").arg(number, static_cast<int>(width), 10, QLatin1Char('0'));
}

QString year(int year, qsizetype width) {
  return width == 2 ? padded(std::abs(year) % 100, 2) : padded(year, width);
}

QString month(int month, qsizetype width) {
  if (width <= 2) return padded(month, width);
  const QString name = QLocale::c().monthName(month, QLocale::LongFormat);
  return width == 4 ? name : name.left(width == 3 ? 3 : 1);
}

QString weekday(int day, qsizetype width) {
  const QString name = QLocale::c().dayName(day, QLocale::LongFormat);
  return width == 4 ? name : name.left(width <= 3 ? 3 : width == 5 ? 1 : 2);
}

/// Weeks start on Sunday here; ISO days are counted from Monday.
int sundayBased(const QDate& date) {
  return date.dayOfWeek() % 7 + 1;
}

qint64 weekOfYear(const QDate& date) {
  const int firstDay = sundayBased(QDate(date.year(), 1, 1));
  return (date.dayOfYear() + firstDay - 2) / 7 + 1;
}

qint64 weekOfMonth(const QDate& date) {
  const int firstDay = sundayBased(QDate(date.year(), date.month(), 1));
  return (date.day() + firstDay - 2) / 7 + 1;
}

QString offset(const QDateTime& when, bool withColon) {
  const int minutes = std::abs(when.offsetFromUtc()) / 60;
  return (when.offsetFromUtc() < 0 ? QLatin1Char('-') : QLatin1Char('+')) +
         padded(minutes / 60, 2) + (withColon ? QStringLiteral(":") : QString()) +
         padded(minutes % 60, 2);
}

QString zone(const QDateTime& when, qsizetype width) {
  if (width < 4) return when.timeZoneAbbreviation();
  return when.timeZone().displayName(when, QTimeZone::LongName, QLocale::c());
}

QString fraction(const QTime& time, qsizetype width) {
  return padded(time.msec(), 3).leftJustified(width, QLatin1Char('0')).left(width);
}

QString dayField(const QDate& date, char16_t letter, qsizetype width) {
  switch (letter) {
    case 'G':
      return date.year() > 0 ? QStringLiteral("AD") : QStringLiteral("BC");
    case 'y':
    case 'u':
      return year(date.year(), width);
    case 'Y':
      return year(date.addDays(7 - sundayBased(date)).year(), width);
    case 'Q':
    case 'q':
      return width <= 2 ? padded((date.month() + 2) / 3, width)
                        : QStringLiteral("Q%1").arg((date.month() + 2) / 3);
    case 'M':
    case 'L':
      return month(date.month(), width);
    case 'w':
      return padded(weekOfYear(date), width);
    case 'W':
      return padded(weekOfMonth(date), width);
    case 'd':
      return padded(date.day(), width);
    case 'D':
      return padded(date.dayOfYear(), width);
    case 'F':
      return padded((date.day() - 1) / 7 + 1, width);
    case 'E':
      return weekday(date.dayOfWeek(), width);
    case 'e':
    case 'c':
      return width <= 2 ? padded(sundayBased(date), width) : weekday(date.dayOfWeek(), width);
    default:
      return {};
  }
}

QString timeField(const QTime& time, char16_t letter, qsizetype width) {
  const int hour = time.hour();
  switch (letter) {
    case 'a':
      return hour < 12 ? QStringLiteral("AM") : QStringLiteral("PM");
    case 'h':
      return padded(hour % 12 == 0 ? 12 : hour % 12, width);
    case 'H':
      return padded(hour, width);
    case 'K':
      return padded(hour % 12, width);
    case 'k':
      return padded(hour == 0 ? 24 : hour, width);
    case 'm':
      return padded(time.minute(), width);
    case 's':
      return padded(time.second(), width);
    case 'S':
      return fraction(time, width);
    case 'A':
      return padded(time.msecsSinceStartOfDay(), width);
    default:
      return {};
  }
}

QString field(const QDateTime& when, char16_t letter, qsizetype width) {
  if (letter == 'z' || letter == 'v' || letter == 'V') return zone(when, width);
  if (letter == 'Z' || letter == 'x' || letter == 'X')
    return offset(when, letter != 'Z' && width % 2 == 1 && width > 1);
  const QString day = dayField(when.date(), letter, width);
  return day.isEmpty() ? timeField(when.time(), letter, width) : day;
}

/// The literal text that starts at an apostrophe; moves `at` behind it.
QString quoted(const QString& pattern, qsizetype& at) {
  QString text;
  if (pattern.mid(at, 2) == QLatin1String("''")) {
    at += 2;
    return QStringLiteral("'");
  }
  for (++at; at < pattern.size(); ++at) {
    if (pattern[at] != QLatin1Char('\'')) {
      text += pattern[at];
    } else if (pattern.mid(at, 2) == QLatin1String("''")) {
      text += pattern[at++];
    } else {
      ++at;
      break;
    }
  }
  return text;
}

}  // namespace

QString dateText(const QDateTime& when, const QString& pattern) {
  constexpr qsizetype widest = 20;
  QString text;
  for (qsizetype at = 0; at < pattern.size();) {
    const QChar c = pattern[at];
    if (c == QLatin1Char('\'')) {
      text += quoted(pattern, at);
    } else if (c.unicode() < 128 && c.isLetter()) {
      const qsizetype start = at;
      while (at < pattern.size() && pattern[at] == c) ++at;
      text += field(when, c.unicode(), std::min(at - start, widest));
    } else {
      text += c;
      ++at;
    }
  }
  return text;
}

QString datePattern(DateStyle date, DateStyle time) {
  static const QString dates[] = {QString(), QStringLiteral("M/d/yy"), QStringLiteral("MMM d, y"),
                                  QStringLiteral("MMMM d, y"), QStringLiteral("EEEE, MMMM d, y")};
  static const QString times[] = {QString(), QStringLiteral("h:mm a"), QStringLiteral("h:mm:ss a"),
                                  QStringLiteral("h:mm:ss a z"), QStringLiteral("h:mm:ss a zzzz")};
  const QString& day = dates[static_cast<size_t>(date)];
  const QString& clock = times[static_cast<size_t>(time)];
  return day.isEmpty() || clock.isEmpty() ? day + clock : day + QLatin1Char(' ') + clock;
}

QDateTime dateFromReference(double seconds, const QString& zoneName) {
  constexpr double reference = 978307200;  // 2001-01-01 in seconds since 1970-01-01
  constexpr double limit = 1e11;
  if (std::isnan(seconds)) seconds = 0;
  const double unixTime = reference + std::clamp(seconds, -limit, limit);
  const auto msecs = static_cast<qint64>(std::floor(unixTime * 1000 + 1e-3));
  if (zoneName.startsWith(QLatin1String("GMT")) && zoneName.size() > 3) {
    const QTimeZone fixed("UTC" + zoneName.mid(3).toLatin1());
    if (fixed.isValid()) return QDateTime::fromMSecsSinceEpoch(msecs, fixed);
  }
  const QTimeZone named(zoneName.toLatin1());
  if (!zoneName.isEmpty() && named.isValid()) return QDateTime::fromMSecsSinceEpoch(msecs, named);
  return QDateTime::fromMSecsSinceEpoch(msecs, QTimeZone::systemTimeZone());
}

}  // namespace runtime::patches
