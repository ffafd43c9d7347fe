#include "GeneratedGraphic.h"

#include <gtest/gtest.h>

#include <QSet>
#include <cmath>

namespace support {

using model::Attribute;
using model::AttributeType;
using model::AttributeValue;
using model::QuartzComponent;

namespace {

template <typename Visitor>
void forEachAnimated(const model::Composition& composition, const Visitor& visit) {
  for (const QuartzComponent* component : composition.components())
    for (const Attribute* attribute : component->attributes())
      if (attribute->isAnimatedInExport()) visit(*attribute);
}

}  // namespace

QList<double> remarkableTimes(const model::Composition& composition) {
  const double rate = composition.videoResolution().framesPerSecond();
  QSet<double> times;
  for (const double time : composition.stopFrameTimepoints()) times.insert(time);
  forEachAnimated(composition, [&](const Attribute& attribute) {
    for (const double time : attribute.sortedKeyFrames())
      times.insert(std::round(time * rate) / rate);
  });
  QList<double> sorted(times.begin(), times.end());
  sorted.removeIf([&](double time) { return time > composition.duration(); });
  std::sort(sorted.begin(), sorted.end());
  return sorted;
}

bool isSettled(const model::Composition& composition, double time) {
  bool settled = true;
  forEachAnimated(composition, [&](const Attribute& attribute) {
    const bool smooth =
        attribute.type() == AttributeType::Number || attribute.type() == AttributeType::Color;
    if (!smooth || attribute.hasKeyframeAtTimePoint(time)) return;
    const double before = attribute.previousTimePoint(time);
    const double after = attribute.nextTimePoint(time);
    if (before == model::noTimepoint || after == model::noTimepoint) return;
    settled = settled && attribute.valueForTimepoint(before) == attribute.valueForTimepoint(after);
  });
  return settled;
}

GeneratedGraphic::GeneratedGraphic(unsigned seed) : m_random(seed) {
  const QStringList formats{QStringLiteral("HD 1080i25"), QStringLiteral("HD 1080p50"),
                            QStringLiteral("HD 720p50"), QStringLiteral("HD 720p60")};
  m_composition = m_context.insert(std::make_unique<model::Composition>(
      model::VideoResolution(formats[below(static_cast<int>(formats.size()))])));
  m_composition->setDuration(frameTime(0.4, 4));
  makeBeats();
  for (int i = 1 + below(5); i > 0; --i) addComponent();
  for (int i = below(4); i > 0; --i)
    m_composition->addStopFrame(chance(60) ? m_beats[below(static_cast<int>(m_beats.size()))]
                                           : frameTime(0, m_composition->duration()));
  m_composition->selectAllComponents();
  m_composition->moveSelectionByLevel(below(3) - 1);
  if (chance(50)) m_composition->components().back()->setZLevel(0);
}

void GeneratedGraphic::makeBeats() {
  QSet<double> beats;
  for (int i = 2 + below(4); i > 0; --i) beats.insert(frameTime(0, m_composition->duration()));
  m_beats = QList<double>(beats.begin(), beats.end());
  std::sort(m_beats.begin(), m_beats.end());
}

double GeneratedGraphic::frameTime(double first, double last) {
  const double rate = m_composition->videoResolution().framesPerSecond();
  return std::round(real(first, last) * rate) / rate;
}

void GeneratedGraphic::addComponent() {
  static const QStringList names{QStringLiteral("Text"),
                                 QStringLiteral("RichText"),
                                 QStringLiteral("TextComponent"),
                                 QStringLiteral("Rectangle"),
                                 QStringLiteral("Ellipse"),
                                 QStringLiteral("GradientBar"),
                                 QStringLiteral("Line"),
                                 QStringLiteral("Countdown"),
                                 QStringLiteral("TextScroller"),
                                 QStringLiteral("ImageComponent"),
                                 QStringLiteral("RoundedRectangle")};
  const QString path = QStringLiteral(TESSARY_COMPONENTS "/%1.qtz")
                           .arg(names[below(static_cast<int>(names.size()))]);
  QStringList warnings;
  QuartzComponent* component =
      m_composition->addComponenWithQuartzCompositionFile(path, {}, warnings);
  ASSERT_NE(component, nullptr) << warnings.join(u' ').toStdString();
  component->setTitle(chance(70) ? QStringLiteral("Part %1").arg(below(100))
                                 : QStringLiteral("Same & title"));
  arrange(*component);
  for (Attribute* attribute : component->attributes()) {
    if (attribute->key() == QLatin1String("visibleInCompositionEditor")) continue;
    if (attribute->key().startsWith(QLatin1String("margin"))) continue;
    if (chance(45)) fill(*attribute);
    if (attribute->animationPossible() && chance(25)) animate(*attribute);
    if (!attribute->animateable() && chance(40)) attribute->setPermissionToChange(true);
  }
}

void GeneratedGraphic::arrange(QuartzComponent& component) {
  const double duration = m_composition->duration();
  // These run by the time of the whole graphic on air, stops or not, and by their own in the
  // editor.
  const QString& file = component.compositionFilename();
  const bool runsThrough =
      file.contains(QLatin1String("Scroller")) || file.contains(QLatin1String("Countdown"));
  if (chance(50) && !runsThrough) component.setStartTime(frameTime(0, duration * 0.6));
  if (chance(50)) component.setEndTime(frameTime(component.startTime(), duration * 1.2));
  component.setWidth(std::round(real(40, 900)));
  component.setHeight(std::round(real(20, 500)));
  component.setOriginX(place(-100, 1500));
  component.setOriginY(place(-100, 900));
  if (chance(40)) component.setZRotation(real(-180, 180));
  if (chance(40)) component.setOpacity(real(0, 1));
  if (chance(25)) component.setMarginX(place(0, 30));
  if (chance(25)) component.setMarginY(place(0, 30));
  if (chance(10)) component.setVisibleInCompositionEditor(false);
}

void GeneratedGraphic::fill(Attribute& attribute) {
  attribute.setCurrentValue(valueFor(attribute));
}

void GeneratedGraphic::animate(Attribute& attribute) {
  const bool smooth =
      attribute.type() == AttributeType::Number || attribute.type() == AttributeType::Color;
  if (!smooth || chance(15)) {
    for (int i = 1 + below(4); i > 0; --i)
      attribute.addTimepoint(frameTime(0, m_composition->duration()), valueFor(attribute));
    return;
  }
  // A run of beats without a gap, so that every beat finds it at a key frame or standing still.
  const int first = below(static_cast<int>(m_beats.size()));
  const int last = first + below(static_cast<int>(m_beats.size()) - first);
  for (int i = first; i <= last; ++i) attribute.addTimepoint(m_beats[i], valueFor(attribute));
}

AttributeValue GeneratedGraphic::valueFor(const Attribute& attribute) {
  switch (attribute.type()) {
    case AttributeType::Number:
      return numberFor(attribute.key());
    case AttributeType::Boolean:
      return chance(50);
    case AttributeType::Index:
    case AttributeType::IndexWithMenu:
      return qint64{below(std::max(2, static_cast<int>(attribute.possibleValues().size())))};
    case AttributeType::Color:  // opaque, as an export makes them
      return foundation::Color{real(0, 1), real(0, 1), real(0, 1), 1};
    case AttributeType::Image:
      return picture();
    case AttributeType::Font:
      return model::FontValue{chance(50) ? QStringLiteral("Inter-Bold") : QStringLiteral("Inter"),
                              std::round(real(12, 90))};
    case AttributeType::String: {
      if (attribute.key() == QLatin1String("End")) return QStringLiteral("00:0%1").arg(below(10));
      if (attribute.key() == QLatin1String("Format")) return QStringLiteral("mm:ss");
      static const QStringList texts{QStringLiteral("Hello"), QStringLiteral("Größe & Maß"),
                                     QStringLiteral("two\nlines"), QString(),
                                     QStringLiteral("<b>\"markup\"</b>")};
      return texts[below(static_cast<int>(texts.size()))];
    }
    default:
      return attribute.currentValue();
  }
}

AttributeValue GeneratedGraphic::numberFor(const QString& key) {
  if (key == QLatin1String("opacity") || key.startsWith(QLatin1String("Opacity")))
    return real(0, 1);
  if (key == QLatin1String("zRotation")) return real(-180, 180);
  if (key == QLatin1String("inputWidth")) return std::round(real(20, 900));
  if (key == QLatin1String("inputHeight")) return std::round(real(20, 500));
  if (key == QLatin1String("originX")) return place(-200, 1600);
  if (key == QLatin1String("originY")) return place(-200, 900);
  if (key.contains(QLatin1String("Spacing"))) return real(0.7, 1.5);
  return real(1, 60);
}

QImage GeneratedGraphic::picture() {
  QImage image(8 + below(60), 8 + below(40), QImage::Format_ARGB32);
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      image.setPixel(x, y, qRgba(x * 4, y * 5, (x + y) * 2, 255 - x * 2));
  return image;
}

}  // namespace support
