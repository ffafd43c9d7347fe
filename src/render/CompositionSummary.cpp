#include "render/CompositionSummary.h"

namespace render {

using foundation::PropertyDictionary;
using foundation::PropertyValue;
using quartz::QuartzPatch;

namespace {

void readStopframes(const QuartzPatch& node, CompositionSummary& summary) {
  if (node.identifier() != QLatin1String("BRVStopframesPlugIn")) return;
  const PropertyDictionary& settings = node.state().value(u"plugInState").dictionary();
  if (settings.value(u"compositionDuration").isNumeric())
    summary.duration = settings.value(u"compositionDuration").toDouble();
  if (!settings.value(u"enableStopframesInBRVApps").toBool()) return;
  for (const PropertyValue& stop : settings.value(u"stopframes").array())
    summary.stopFrames.push_back(
        {stop.dictionary().value(u"name").toString(), stop.dictionary().value(u"time").toDouble()});
}

double portValue(const QuartzPatch& node, QStringView port) {
  for (const PropertyValue& entry : node.state().value(u"publishedInputPorts").array())
    if (entry.dictionary().value(u"key").toString() == port)
      return entry.dictionary().value(u"state").dictionary().value(u"value").toDouble();
  for (const QStringView group : {u"ivarInputPortStates", u"customInputPortStates"}) {
    const PropertyValue& stored = node.state().value(group).dictionary().value(port);
    if (stored.isDictionary()) return stored.dictionary().value(u"value").toDouble();
  }
  return 0;
}

}  // namespace

CompositionSummary CompositionSummary::of(const quartz::QuartzComposition& composition) {
  CompositionSummary summary;
  for (const auto& node : composition.rootPatch()->nodes()) {
    readStopframes(*node, summary);
    if (node->key() == QLatin1String("Scaler")) {
      const QSize size(static_cast<int>(portValue(*node, u"compositionWidth")),
                       static_cast<int>(portValue(*node, u"compositionHeight")));
      if (!size.isEmpty()) summary.size = size;
    }
    if (node->key().startsWith(QLatin1String("Component_")))
      summary.components.append(node->name());
  }
  const QSize viewer = composition.viewerSize().toSize();
  if (!summary.size && !viewer.isEmpty()) summary.size = viewer;
  return summary;
}

}  // namespace render
