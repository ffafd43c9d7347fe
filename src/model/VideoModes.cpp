#include "model/VideoModes.h"

namespace model {

namespace {

using Rate = FrameRateCode;

struct RateName {
  const char16_t* suffix;
  Rate rate;
  qint64 scan;
};

constexpr qint64 progressive = 0;
constexpr qint64 interlaced = 1;

void append(QList<VideoMode>& modes, const QString& group, const QString& prefix, QSize size,
            std::initializer_list<RateName> rates) {
  for (const RateName& rate : rates)
    modes.append({prefix + QString::fromUtf16(rate.suffix), group, rate.rate, VideoMode::rgba,
                  rate.scan, size.width(), size.height()});
}

QList<VideoMode> standardModes() {
  QList<VideoMode> modes;
  const QString sd = QStringLiteral("SD");
  append(modes, sd, QStringLiteral("SD PAL"), {720, 576}, {{u"", Rate::Rate25, interlaced}});
  append(modes, sd, QStringLiteral("SD NTSC"), {720, 480},
         {{u"", Rate::Rate29_97, interlaced}, {u" 23.98", Rate::Rate23_98, interlaced}});
  const QString hd720 = QStringLiteral("HD 720");
  append(modes, hd720, hd720, {1280, 720},
         {{u"p23.98", Rate::Rate23_98, progressive},
          {u"p24", Rate::Rate24, progressive},
          {u"p50", Rate::Rate50, progressive},
          {u"p59.94", Rate::Rate59_94, progressive},
          {u"p60", Rate::Rate60, progressive}});
  const QString hd1080 = QStringLiteral("HD 1080");
  append(modes, hd1080, hd1080, {1920, 1080},
         {{u"i25", Rate::Rate25, interlaced},
          {u"i29.97", Rate::Rate29_97, interlaced},
          {u"i30", Rate::Rate30, interlaced},
          {u"p23.98", Rate::Rate23_98, progressive},
          {u"p24", Rate::Rate24, progressive},
          {u"p25", Rate::Rate25, progressive},
          {u"p29.97", Rate::Rate29_97, progressive},
          {u"p30", Rate::Rate30, progressive},
          {u"p50", Rate::Rate50, progressive},
          {u"p59.94", Rate::Rate59_94, progressive},
          {u"p60", Rate::Rate60, progressive}});
  // The name that new documents get unless the user prefers another one.
  append(modes, hd1080, QStringLiteral("1080i25 RGBA"), {1920, 1080},
         {{u"", Rate::Rate25, interlaced}});
  const QString uhd = QStringLiteral("UHD");
  append(modes, uhd, uhd + QLatin1Char(' '), {3840, 2160},
         {{u"p23.98", Rate::Rate23_98, progressive},
          {u"p24", Rate::Rate24, progressive},
          {u"p25", Rate::Rate25, progressive},
          {u"p29.97", Rate::Rate29_97, progressive},
          {u"p30", Rate::Rate30, progressive},
          {u"p50", Rate::Rate50, progressive},
          {u"p59.94", Rate::Rate59_94, progressive},
          {u"p60", Rate::Rate60, progressive}});
  return modes;
}

}  // namespace

foundation::TimecodeRate timecodeRate(FrameRateCode code) {
  using foundation::TimecodeRate;
  static const TimecodeRate rates[] = {TimecodeRate::slowed(24), TimecodeRate::whole(24),
                                       TimecodeRate::whole(25),  TimecodeRate::slowed(30),
                                       TimecodeRate::whole(30),  TimecodeRate::whole(50),
                                       TimecodeRate::slowed(60), TimecodeRate::whole(60)};
  const auto index = static_cast<size_t>(code);
  return index < std::size(rates) ? rates[index] : TimecodeRate::whole(25);
}

const VideoModes& VideoModes::standard() {
  static const VideoModes modes(standardModes());
  return modes;
}

const VideoMode* VideoModes::supportedModeForName(const QString& name) const {
  for (const VideoMode& mode : m_modes)
    if (mode.name == name) return &mode;
  return nullptr;
}

void VideoModes::enumerateSupportedModes(
    const std::function<void(const VideoMode&, bool&)>& visitor) const {
  bool stop = false;
  for (const VideoMode& mode : m_modes) {
    visitor(mode, stop);
    if (stop) return;
  }
}

}  // namespace model
