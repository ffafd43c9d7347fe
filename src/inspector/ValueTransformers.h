#pragma once

#include <QUrl>

#include "foundation/Timecode.h"

namespace inspector {

/// Between seconds and the time codes that fields show.
class TimepointToString {
 public:
  explicit TimepointToString(const foundation::TimecodeRate& rate) : m_rate(rate) {}

  [[nodiscard]] const foundation::TimecodeRate& rate() const { return m_rate; }
  /// Negative times count as 0.
  [[nodiscard]] QString transformedValue(double seconds) const {
    return foundation::Timecode::fromSeconds(std::max(seconds, 0.0), m_rate).toString();
  }
  /// Relative texts count from the present time; see Timecode::fromString().
  [[nodiscard]] foundation::Result<double> reverseTransformedValue(const QString& text,
                                                                   double present = 0) const {
    return foundation::Timecode::fromString(text, m_rate, present)
        .map([](const foundation::Timecode& read) { return read.seconds(); });
  }

 private:
  foundation::TimecodeRate m_rate;
};

/// Between paths and file locations; nothing stays nothing.
struct StringToURL {
  [[nodiscard]] static QUrl transformedValue(const QString& path) {
    return path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path);
  }
  [[nodiscard]] static QString reverseTransformedValue(const QUrl& location) {
    return location.toLocalFile();
  }
};

/// Whether commands for several components can act.
struct CountGreaterThanOne {
  [[nodiscard]] static bool transformedValue(qsizetype count) { return count > 1; }
};
struct CountGreaterThanTwo {
  [[nodiscard]] static bool transformedValue(qsizetype count) { return count > 2; }
};

}  // namespace inspector
