#include "cli/edit/DocumentSettings.h"

#include "cli/edit/NearNames.h"
#include "cli/edit/TimeText.h"
#include "document/NewDocumentMenu.h"

namespace cli {

using model::BackgroundMode;
using Done = DocumentSettings::Done;

QString DocumentSettings::help() {
  return QStringLiteral(
      "  mode=NAME             the video format\n"
      "  duration=SECONDS\n"
      "  background=           none, a colour, or @FILE for a picture\n"
      "  movie=@FILE           a movie as the background, above its colour; none: without it\n"
      "  poster=TIME           the moment of the thumbnail; none; or @FILE for a picture instead\n"
      "  safeZones=, guides=   yes or no: what the editor shows");
}

Done DocumentSettings::apply(const Assignment& assignment) {
  struct Setting {
    const char* key;
    Done (DocumentSettings::*set)(const QString& value);
  };
  static const Setting settings[] = {{"mode", &DocumentSettings::setMode},
                                     {"duration", &DocumentSettings::setDuration},
                                     {"background", &DocumentSettings::setBackground},
                                     {"movie", &DocumentSettings::setMovie},
                                     {"poster", &DocumentSettings::setPoster},
                                     {"safeZones", &DocumentSettings::setSafeZones},
                                     {"guides", &DocumentSettings::setGuides}};
  QStringList names;
  for (const Setting& setting : settings) {
    if (assignment.key == QLatin1String(setting.key)) return (this->*setting.set)(assignment.value);
    names.append(QLatin1String(setting.key));
  }
  return misused(QStringLiteral("a document has no '%1'; %2")
                     .arg(assignment.key, nearNames(assignment.key, names)));
}

tl::expected<model::VideoResolution, LoadFailure> DocumentSettings::mode(const QString& name) {
  model::VideoResolution resolution(name);
  if (resolution.width() > 0) return resolution;
  QStringList names;
  const document::NewDocumentMenu menu;
  for (const document::NewDocumentMenu::Item& item : menu.items())
    if (!item.isSeparator()) names.append(item.title);
  return misused(QStringLiteral("there is no video format '%1'; there are: %2")
                     .arg(name, names.join(QStringLiteral(", "))));
}

tl::expected<double, LoadFailure> DocumentSettings::duration(const QString& text,
                                                             const foundation::TimecodeRate& rate) {
  const auto seconds = secondsFromText(text, rate);
  if (seconds && *seconds > 0) return *seconds;
  return misused(
      QStringLiteral("a duration is a number of seconds above 0 or a time code, not '%1'")
          .arg(text));
}

Done DocumentSettings::setMode(const QString& value) {
  const auto resolution = mode(value);
  if (!resolution) return tl::unexpected(resolution.error());
  m_composition.setVideoResolution(*resolution);
  return {};
}

Done DocumentSettings::setDuration(const QString& value) {
  const auto seconds = duration(value, m_composition.videoResolution().timecodeRate());
  if (!seconds) return tl::unexpected(seconds.error());
  m_composition.setDuration(*seconds);
  return {};
}

Done DocumentSettings::setBackground(const QString& value) {
  if (value == QLatin1String("none")) {
    m_composition.setBackgroundMode(BackgroundMode::None);
    return {};
  }
  if (value.startsWith(u'@')) {
    const auto picture = m_text.picture(value);
    if (!picture) return tl::unexpected(picture.error());
    m_composition.setBackgroundMovie({});
    m_composition.setBackgroundImage(*picture);
    m_composition.setBackgroundMode(BackgroundMode::Image);
    return {};
  }
  const auto color = AttributeText::color(QStringLiteral("background"), value);
  if (!color)
    return misused(
        QStringLiteral("'background' takes none, a colour such as #1A58C4, or @FILE, not '%1'")
            .arg(value));
  m_composition.setBackgroundColor(*color);
  m_composition.setBackgroundMode(BackgroundMode::SolidColor);
  return {};
}

Done DocumentSettings::setMovie(const QString& value) {
  if (value == QLatin1String("none")) {
    m_composition.setBackgroundMovie({});
    return {};
  }
  const auto path = m_text.filePath(value);
  if (!path) return tl::unexpected(path.error());
  m_composition.setBackgroundMovie(*path);
  m_composition.setBackgroundMode(BackgroundMode::Image);
  return {};
}

Done DocumentSettings::setPoster(const QString& value) {
  if (value == QLatin1String("none")) {
    m_composition.setPosterFrameTimepoint(-1);
    return {};
  }
  if (value.startsWith(u'@')) {
    const auto picture = m_text.picture(value);
    if (!picture) return tl::unexpected(picture.error());
    m_composition.setPosterFrameImage(*picture);
    m_composition.setPosterFrameTimepoint(-1);
    return {};
  }
  const auto time = secondsFromText(value, m_composition);
  if (!time || *time > m_composition.duration())
    return misused(
        QStringLiteral("'poster' takes a time within the duration, none, or @FILE, not '%1'")
            .arg(value));
  m_composition.setPosterFrameTimepoint(*time);
  return {};
}

Done DocumentSettings::setSafeZones(const QString& value) {
  return AttributeText::flag(QStringLiteral("safeZones"), value).map([this](bool shows) {
    m_composition.setShowsSafeZones(shows);
  });
}

Done DocumentSettings::setGuides(const QString& value) {
  return AttributeText::flag(QStringLiteral("guides"), value).map([this](bool shows) {
    m_composition.setShowsRulers(shows);
  });
}

}  // namespace cli
