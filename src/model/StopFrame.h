#pragma once

#include <QString>

#include "model/KeyFrames.h"

namespace model {

/// A time at which playback halts until it is triggered.
class StopFrame {
 public:
  explicit StopFrame(double timepoint, QString triggerInformation = {})
      : m_timepoint(timepoint), m_triggerInformation(std::move(triggerInformation)) {}

  [[nodiscard]] double timepoint() const { return m_timepoint; }  ///< seconds
  void setTimepoint(double timepoint) { m_timepoint = timepoint; }
  [[nodiscard]] const QString& triggerInformation() const { return m_triggerInformation; }
  void setTriggerInformation(const QString& text) { m_triggerInformation = text; }
  /// To the hundredth of a second.
  [[nodiscard]] bool isTimepoint(double timepoint) const {
    return compareTimeInterval(m_timepoint, timepoint) == 0;
  }

 private:
  double m_timepoint;
  QString m_triggerInformation;
};

}  // namespace model
