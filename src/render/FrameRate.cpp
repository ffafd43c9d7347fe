#include "render/FrameRate.h"

#include <QStringList>
#include <cmath>

namespace render {

qint64 FrameRate::framesIn(double seconds) const {
  // A duration that is a whole number of frames but for rounding counts as that number.
  const double frames = seconds * static_cast<double>(numerator) / static_cast<double>(denominator);
  return static_cast<qint64>(std::ceil(frames - 1e-6));
}

std::optional<FrameRate> FrameRate::fromText(const QString& text) {
  static const std::pair<QLatin1String, qint64> broadcast[] = {{QLatin1String("23.98"), 24},
                                                               {QLatin1String("23.976"), 24},
                                                               {QLatin1String("29.97"), 30},
                                                               {QLatin1String("59.94"), 60},
                                                               {QLatin1String("119.88"), 120}};
  for (const auto& [name, nominal] : broadcast)
    if (text == name) return FrameRate{nominal * 1000, 1001};
  const QStringList parts = text.split(QLatin1Char('/'));
  bool ok = false;
  if (parts.size() == 2) {
    bool ok2 = false;
    const FrameRate rate{parts[0].toLongLong(&ok), parts[1].toLongLong(&ok2)};
    if (!ok || !ok2 || rate.numerator < 1 || rate.denominator < 1 ||
        rate.numerator > 1000 * rate.denominator || rate.numerator > 1'000'000'000)
      return {};
    return rate;
  }
  const double rate = text.toDouble(&ok);
  if (!ok || !(rate > 0) || rate > 1000) return {};
  if (rate == std::floor(rate)) return FrameRate{static_cast<qint64>(rate), 1};
  return FrameRate{std::llround(rate * 1000), 1000};
}

FrameRate frameRate(model::FrameRateCode code) {
  const foundation::TimecodeRate rate = model::timecodeRate(code);
  return {rate.numerator, rate.denominator};
}

}  // namespace render
