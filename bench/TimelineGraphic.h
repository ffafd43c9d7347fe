#pragma once

#include "CanvasGraphic.h"

/// The graphic of the canvas with times, key frames and stop frames, for the timeline.
class TimelineGraphic : public CanvasGraphic {
 public:
  TimelineGraphic() {
    times("Clock", 0, 10);
    times("Logo", 0.2, 9.6);
    times("Headline", 0.6, 9.4);
    times("Second Line", 1, 9.4);
    times("Strap", 0.2, 9.6);
    model::QuartzComponent& headline = *component(QStringLiteral("Headline"));
    headline.setExpanded(true);
    key(headline, "opacity", {{0.6, 0}, {1, 1}, {8.8, 1}, {9.4, 0}});
    key(headline, "originX", {{0.6, -400}, {1.32, 290}, {3.48, 300}, {8.8, 290}, {9.4, 1900}});
    headline.attributeForKey(QStringLiteral("opacity"))->setTimePointSelected(0.6, true);
    headline.attributeForKey(QStringLiteral("opacity"))->setTimePointSelected(1, true);
    graphic->addStopFrame(3, QStringLiteral("Headline in"));
    graphic->addStopFrame(7.2, QStringLiteral("Out"));
    graphic->setEditorTimepoint(3.48);
    component(QStringLiteral("Live"))->setVisibleInCompositionEditor(false);
    headline.setSelected(true);
    context.clearHistory();
  }

  static void key(model::QuartzComponent& component, const char* key,
                  const QList<std::pair<double, double>>& values) {
    model::Attribute* attribute = component.attributeForKey(QLatin1String(key));
    attribute->setAnimateable(true);
    for (const auto& [time, value] : values) attribute->setValueForTimepoint(value, time);
  }

 private:
  void times(const char* title, double start, double end) {
    model::QuartzComponent& one = *component(QLatin1String(title));
    one.setStartTime(start);
    one.setEndTime(end);
  }
};
