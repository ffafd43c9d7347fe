#pragma once

#include <QCoreApplication>
#include <QString>

#include "foundation/Result.h"

namespace foundation {

/// How fast frames follow one another, and how they are counted.
struct TimecodeRate {
  int numerator = 25;  ///< frames in `denominator` seconds
  int denominator = 1;
  int nominal = 25;    ///< frames that a counted second has
  bool drops = false;  ///< leaves out numbers, so that the count keeps up with the clock

  [[nodiscard]] double framesPerSecond() const {
    return static_cast<double>(numerator) / denominator;
  }
  /// Of whole frames a second.
  [[nodiscard]] static TimecodeRate whole(int framesPerSecond);
  /// 1000/1001 of that: 23.98 counts every frame, 29.97 and 59.94 drop numbers.
  [[nodiscard]] static TimecodeRate slowed(int framesPerSecond);
  friend bool operator==(const TimecodeRate&, const TimecodeRate&) = default;
};

/// A time as a count of frames, written "hours:minutes:seconds:frames", with ";" before the frames
/// where numbers are dropped. May be negative.
class Timecode {
  Q_DECLARE_TR_FUNCTIONS(Timecode)

 public:
  explicit Timecode(qint64 frames, const TimecodeRate& rate) : m_frames(frames), m_rate(rate) {}
  /// The nearest frame.
  [[nodiscard]] static Timecode fromSeconds(double seconds, const TimecodeRate& rate);
  /// Understood are
  ///
  ///   1:12  0:00:01:12   from the right frames, seconds, minutes, hours; also with ";" and "."
  ///   112                the same without colons, two digits each
  ///   2s 1.5s 500ms 3m 1h 1m30s 12f   with units
  ///   +10 -1:00          relative to `present`, otherwise zero
  ///
  /// Others fail with a sentence for the person who typed them.
  [[nodiscard]] static Result<Timecode> fromString(const QString& text, const TimecodeRate& rate,
                                                   double present = 0);

  [[nodiscard]] qint64 frames() const { return m_frames; }
  [[nodiscard]] const TimecodeRate& rate() const { return m_rate; }
  [[nodiscard]] double seconds() const;
  [[nodiscard]] QString toString() const;
  friend bool operator==(const Timecode&, const Timecode&) = default;

 private:
  struct Fields {
    qint64 hours = 0;
    qint64 minutes = 0;
    qint64 seconds = 0;
    qint64 frames = 0;
  };
  [[nodiscard]] static Result<Timecode> fromFields(const Fields& fields, const TimecodeRate& rate);
  [[nodiscard]] static Result<Timecode> fromDigits(const QString& text, const TimecodeRate& rate);
  [[nodiscard]] static Result<Timecode> fromUnits(const QString& text, const TimecodeRate& rate);

  qint64 m_frames;
  TimecodeRate m_rate;
};

}  // namespace foundation
