#include "foundation/Timecode.h"

#include <QRegularExpression>
#include <cmath>

namespace foundation {

namespace {

constexpr qint64 mostHours = 999;
constexpr int secondsPerMinute = 60;
constexpr int minutesPerHour = 60;

/// Numbers left out at the beginning of every minute but each tenth.
qint64 droppedPerMinute(const TimecodeRate& rate) {
  return rate.drops ? rate.nominal / 15 : 0;
}

qint64 framesPerMinute(const TimecodeRate& rate) {
  return qint64{rate.nominal} * secondsPerMinute - droppedPerMinute(rate);
}

qint64 framesPerTenMinutes(const TimecodeRate& rate) {
  return framesPerMinute(rate) * 10 + droppedPerMinute(rate);
}

/// The number that the frame carries, with those left out before it.
qint64 numberOfFrame(qint64 frame, const TimecodeRate& rate) {
  const qint64 dropped = droppedPerMinute(rate);
  if (dropped == 0) return frame;
  const qint64 tens = frame / framesPerTenMinutes(rate);
  const qint64 rest = frame % framesPerTenMinutes(rate);
  // The first of ten minutes drops nothing, so it is longer than the others.
  const qint64 first = qint64{rate.nominal} * secondsPerMinute;
  const qint64 minutes = rest < first ? 0 : 1 + (rest - first) / framesPerMinute(rate);
  return frame + dropped * (9 * tens + minutes);
}

}  // namespace

TimecodeRate TimecodeRate::whole(int framesPerSecond) {
  return {framesPerSecond, 1, framesPerSecond, false};
}

TimecodeRate TimecodeRate::slowed(int framesPerSecond) {
  return {framesPerSecond * 1000, 1001, framesPerSecond, framesPerSecond % 30 == 0};
}

Timecode Timecode::fromSeconds(double seconds, const TimecodeRate& rate) {
  const double frames = seconds * rate.numerator / rate.denominator;
  if (!(std::abs(frames) < 1e15)) return Timecode(0, rate);
  return Timecode(std::llround(frames), rate);
}

double Timecode::seconds() const {
  return static_cast<double>(m_frames) * m_rate.denominator / m_rate.numerator;
}

QString Timecode::toString() const {
  const qint64 number = numberOfFrame(std::abs(m_frames), m_rate);
  const qint64 seconds = number / m_rate.nominal;
  QString text;
  const auto append = [&text](qint64 value, char16_t separator) {
    if (value > 99) text += QString::number(value / 100);
    text += QChar(static_cast<char16_t>(u'0' + value / 10 % 10));
    text += QChar(static_cast<char16_t>(u'0' + value % 10));
    if (separator != 0) text += QChar(separator);
  };
  if (m_frames < 0) text += u'-';
  append(seconds / (secondsPerMinute * minutesPerHour), u':');
  append(seconds / secondsPerMinute % minutesPerHour, u':');
  append(seconds % secondsPerMinute, m_rate.drops ? u';' : u':');
  append(number % m_rate.nominal, 0);
  return text;
}

Result<Timecode> Timecode::fromFields(const Fields& fields, const TimecodeRate& rate) {
  if (fields.frames >= rate.nominal)
    return failure(tr("A second has %1 frames, 0 to %2.").arg(rate.nominal).arg(rate.nominal - 1));
  if (fields.seconds >= secondsPerMinute) return failure(tr("A minute has 60 seconds, 0 to 59."));
  if (fields.minutes >= minutesPerHour) return failure(tr("An hour has 60 minutes, 0 to 59."));
  if (fields.hours > mostHours) return failure(tr("The time is too long."));
  const qint64 minutes = fields.hours * minutesPerHour + fields.minutes;
  const qint64 dropped = droppedPerMinute(rate);
  if (minutes % 10 != 0 && fields.seconds == 0 && fields.frames < dropped)
    return failure(tr("This time code leaves out the first %1 frames of the minute.").arg(dropped));
  const qint64 number =
      (minutes * secondsPerMinute + fields.seconds) * rate.nominal + fields.frames;
  return Timecode(number - dropped * (minutes - minutes / 10), rate);
}

Result<Timecode> Timecode::fromDigits(const QString& text, const TimecodeRate& rate) {
  static const QRegularExpression separators(QStringLiteral("[:;.]"));
  QStringList parts = text.split(separators);
  if (parts.size() == 1) {
    parts.clear();
    for (QString digits = text; !digits.isEmpty(); digits.chop(2)) parts.prepend(digits.right(2));
  }
  if (parts.size() > 4) return failure(tr("A time has hours, minutes, seconds and frames."));
  Fields fields;
  const std::array<qint64*, 4> places{&fields.frames, &fields.seconds, &fields.minutes,
                                      &fields.hours};
  for (qsizetype i = 0; i < parts.size(); ++i) {
    const QString& part = parts.at(parts.size() - 1 - i);
    bool isNumber = part.isEmpty();  // ":12" and "1:"
    *places.at(static_cast<size_t>(i)) = part.isEmpty() ? 0 : part.toLongLong(&isNumber);
    if (!isNumber) return failure(tr("\"%1\" is no number.").arg(part));
  }
  return fromFields(fields, rate);
}

Result<Timecode> Timecode::fromUnits(const QString& text, const TimecodeRate& rate) {
  static const QRegularExpression piece(
      QStringLiteral(R"(\G\s*([0-9]*[.,]?[0-9]+)\s*(ms|[hmsf]))"));
  double seconds = 0;
  double frames = 0;
  qsizetype read = 0;
  for (auto pieces = piece.globalMatch(text); pieces.hasNext();) {
    const QRegularExpressionMatch match = pieces.next();
    const double value = match.captured(1).replace(u',', u'.').toDouble();
    const QString unit = match.captured(2);
    if (unit == QLatin1String("h")) seconds += value * 3600;
    if (unit == QLatin1String("m")) seconds += value * 60;
    if (unit == QLatin1String("s")) seconds += value;
    if (unit == QLatin1String("ms")) seconds += value / 1000;
    if (unit == QLatin1String("f")) frames += value;
    read = match.capturedEnd();
  }
  if (read != text.size())
    return failure(tr("\"%1\" is no time; write for instance 1:12, 2s or 500ms.").arg(text));
  if (seconds > mostHours * 3600.0 || frames > mostHours * 3600.0 * rate.nominal)
    return failure(tr("The time is too long."));
  return Timecode(fromSeconds(seconds, rate).frames() + std::llround(frames), rate);
}

Result<Timecode> Timecode::fromString(const QString& text, const TimecodeRate& rate,
                                      double present) {
  QString rest = text.trimmed().toLower();
  int sign = 0;
  if (rest.startsWith(u'+')) sign = 1;
  // U+2212 is what some keyboards and texts have for minus.
  if (rest.startsWith(u'-') || rest.startsWith(u'\u2212')) sign = -1;
  if (sign != 0) rest = rest.mid(1).trimmed();
  if (rest.isEmpty()) return failure(tr("Write a time, for instance 1:12, +10 or 2s."));
  static const QRegularExpression digits(QStringLiteral("^[0-9:;.]+$"));
  const auto read = digits.match(rest).hasMatch() ? fromDigits(rest, rate) : fromUnits(rest, rate);
  if (!read || sign == 0) return read;
  return Timecode(fromSeconds(present, rate).frames() + sign * read->frames(), rate);
}

}  // namespace foundation
