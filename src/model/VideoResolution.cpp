#include "model/VideoResolution.h"

#include <QSize>
#include <array>

#include "foundation/UserDefaults.h"

namespace model {

namespace {

using Rate = FrameRateCode;

struct RateRule {
  const char* name;
  bool isPrefix;
  Rate rate;
};

// Tried from the top: the order decides between "SD NTSC 23.98" and "SD NTSC".
constexpr std::array rateRules{
    RateRule{"SD NTSC 23.98", false, Rate::Rate23_98},
    RateRule{"HD 1080p23.98", false, Rate::Rate23_98},
    RateRule{"HD 720p23.98", false, Rate::Rate23_98},
    RateRule{"UHD p23.98", false, Rate::Rate23_98},
    RateRule{"4K p23.98", false, Rate::Rate23_98},
    RateRule{"SD PAL", true, Rate::Rate25},
    RateRule{"HD 1080i25", false, Rate::Rate25},
    RateRule{"HD 1080p25", false, Rate::Rate25},
    RateRule{"UHD p25", false, Rate::Rate25},
    RateRule{"4K p25", false, Rate::Rate25},
    RateRule{"SD NTSC", true, Rate::Rate29_97},
    RateRule{"HD 1080i29.97", false, Rate::Rate29_97},
    RateRule{"HD 1080p29.97", false, Rate::Rate29_97},
    RateRule{"UHD p29.97", false, Rate::Rate29_97},
    RateRule{"4K p29.97", false, Rate::Rate29_97},
    RateRule{"HD 1080i30", false, Rate::Rate30},
    RateRule{"HD 1080p30", false, Rate::Rate30},
    RateRule{"UHD p30", false, Rate::Rate30},
    RateRule{"4K p30", false, Rate::Rate30},
    RateRule{"HD 720p50", false, Rate::Rate50},
    RateRule{"HD 1080p50", false, Rate::Rate50},
    RateRule{"UHD p50", false, Rate::Rate50},
    RateRule{"4K p50", false, Rate::Rate50},
    RateRule{"HD 720p60", false, Rate::Rate60},
    RateRule{"HD 1080p60", false, Rate::Rate60},
    RateRule{"UHD p60", false, Rate::Rate60},
    RateRule{"4K p60", false, Rate::Rate60},
    RateRule{"HD 720p59.94", false, Rate::Rate59_94},
    RateRule{"HD 1080p59.94", false, Rate::Rate59_94},
    RateRule{"UHD p59.94", false, Rate::Rate59_94},
    RateRule{"4K p59.94", false, Rate::Rate59_94},
    RateRule{"HD 1080p24", false, Rate::Rate24},
    RateRule{"HD 720p24", false, Rate::Rate24},
    RateRule{"UHD p24", false, Rate::Rate24},
    RateRule{"4K p24", false, Rate::Rate24},
};

/// How names of progressive formats end, by frame-rate code.
constexpr std::array progressiveSuffixes{"p23.98", "p24", "p25",    "p29.97",
                                         "p30",    "p50", "p59.94", "p60"};

Rate rateOfName(const QString& name) {
  for (const RateRule& rule : rateRules) {
    const QLatin1String pattern(rule.name);
    if (rule.isPrefix ? name.startsWith(pattern) : name == pattern) return rule.rate;
  }
  return Rate::Unknown;
}

qint64 scanOfName(const QString& name, Rate rate) {
  if (rate == Rate::Unknown) return 0;
  return name.endsWith(QLatin1String(progressiveSuffixes[static_cast<size_t>(rate)])) ? 0 : 1;
}

QSize sizeOfName(const QString& name) {
  const auto starts = [&](const char* prefix) { return name.startsWith(QLatin1String(prefix)); };
  if (starts("SD ") && name.endsWith(QLatin1String("Widescreen")) &&
      (starts("SD PAL") || starts("SD NTSC")))
    qCritical("Unsupported SD widescreen format");
  if (starts("SD PAL")) return {720, 576};
  if (starts("SD NTSC")) return {720, 480};
  if (starts("HD 720")) return {1280, 720};
  if (starts("HD 1080")) return {1920, 1080};
  if (starts("UHD")) return {3840, 2160};
  if (starts("4K")) qCritical("Unsupported 4K format");
  return {0, 0};
}

}  // namespace

VideoResolution::VideoResolution(const QString& broadcastMode, const VideoModes& modes) {
  if (const VideoMode* known = modes.supportedModeForName(broadcastMode)) {
    take(*known, broadcastMode);
    return;
  }
  const Rate rate = rateOfName(broadcastMode);
  const qint64 scan = scanOfName(broadcastMode, rate);
  const QSize size = sizeOfName(broadcastMode);
  modes.enumerateSupportedModes([&](const VideoMode& mode, bool& stop) {
    stop = QSize(mode.width, mode.height) == size && mode.frameRate == rate &&
           mode.pixelFormat == VideoMode::rgba && mode.scan == scan;
    if (stop) take(mode, mode.name);
  });
}

VideoResolution VideoResolution::defaultVideoResolution(const foundation::UserDefaults& defaults) {
  return VideoResolution(defaults.value(QStringLiteral("defaultDocumentMode")).toString());
}

double VideoResolution::framesPerSecond() const {
  return m_frameRate == FrameRateCode::Unknown ? 0 : timecodeRate().framesPerSecond();
}

void VideoResolution::take(const VideoMode& mode, const QString& title) {
  m_title = title;
  m_frameRate = mode.frameRate;
  m_isInterlaced = mode.scan == 1;
  m_width = mode.width;
  m_height = mode.height;
}

}  // namespace model
