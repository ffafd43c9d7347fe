#include "model/PlayoutArguments.h"

#include <QStringList>
#include <cmath>

namespace model {

QVariantHash PlayoutArguments::argumentsAtTime(double time, bool playing) {
  const double elapsed = playing ? std::fmod(time, clipDuration) : 0;
  const auto key = [](const char* name) {
    return QStringLiteral("BALEventParameterMetadata_") + QLatin1String(name);
  };
  return {{key("ElapsedTime"), elapsed},
          {key("AbsoluteElapsedTime"), elapsed},
          {key("RemainingTime"), clipDuration - elapsed},
          {key("CurrentDuration"), clipDuration},
          {key("PercentageElapsed"), elapsed / clipDuration * 100},
          {key("CurrentName"), QStringLiteral("Current Clip")},
          {key("NextNames"),
           QStringList{QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")}}};
}

}  // namespace model
