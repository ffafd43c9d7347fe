// Exporting graphics of 10 to 1,000 components and of 10 to 10,000 key frames a component, beside
// serialising the property list that comes out, which is the least that an export can cost.
#include <QElapsedTimer>
#include <QGuiApplication>
#include <algorithm>
#include <cstdio>

#include "foundation/PropertyList.h"
#include "model/Composition.h"
#include "model/export/PlayoutExport.h"
#include "store/ObjectContext.h"

namespace {

using model::Composition;

struct Measured {
  double total = 0;      ///< milliseconds: building the graph and turning it into bytes
  double serialise = 0;  ///< milliseconds: the bytes alone
  qsizetype bytes = 0;
};

/// Text components with that many key frames, spread over six attributes.
void fill(Composition& composition, int components, int keyFrames) {
  const store::UndoSuspension suspension(*composition.context());
  const auto standard = model::StandardComponents::located();
  const auto path = standard.pathOf(QStringLiteral("Text"));
  if (!path) qFatal("no standard components in %s", qPrintable(standard.folder()));
  QStringList warnings;
  const QStringList keys{QStringLiteral("originX"),    QStringLiteral("originY"),
                         QStringLiteral("inputWidth"), QStringLiteral("opacity"),
                         QStringLiteral("zRotation"),  QStringLiteral("Text")};
  for (int c = 0; c < components; ++c) {
    auto* component = composition.addComponenWithQuartzCompositionFile(*path, {}, warnings);
    if (!component) qFatal("%s", qPrintable(warnings.join(u' ')));
    component->setTitle(QStringLiteral("Line"));  // of one title: keys have to be made unique
    for (qsizetype k = 0; k < keys.size(); ++k) {
      model::Attribute* attribute = component->attributeForKey(keys[k]);
      if (!attribute) continue;
      // All at once: one by one would measure the editing.
      model::KeyFrames frames;
      const int own =
          keyFrames / static_cast<int>(keys.size()) + (k < keyFrames % keys.size() ? 1 : 0);
      for (int i = 0; i < own; ++i)
        frames.set(5.0 * i / std::max(1, own),
                   attribute->type() == model::AttributeType::Number
                       ? model::AttributeValue(static_cast<double>(i % 50))
                       : model::AttributeValue(QStringLiteral("text %1").arg(i)));
      if (own == 0) continue;
      attribute->addTimepoint(0, frames.value(0));
      attribute->setStoredValue(store::CodecOf<model::KeyFrames>::encode(frames),
                                QStringLiteral("values"));
    }
  }
}

Measured measure(int components, int keyFrames) {
  store::ObjectContext context;
  auto* composition = context.insert(
      std::make_unique<Composition>(model::VideoResolution(QStringLiteral("HD 1080i25"))));
  fill(*composition, components, keyFrames);
  std::vector<double> totals;
  std::vector<double> serialised;
  Measured result;
  for (int run = 0; run < 5; ++run) {
    QElapsedTimer timer;
    timer.start();
    const model::KeyFactory factory = Composition::standardKey;
    model::PlayoutExport playout(*composition, model::StandardComponents::located(), {}, factory);
    if (const auto built = playout.build(); !built) qFatal("%s", qPrintable(built.error().text()));
    const auto bytes = playout.file().fileDataByRemovingPixelFormatSetting(true);
    totals.push_back(static_cast<double>(timer.nsecsElapsed()) * 1e-6);
    const auto tree = foundation::PropertyList::fromData(*bytes, {});
    timer.restart();
    const auto again = foundation::PropertyList::toXml(*tree);
    serialised.push_back(static_cast<double>(timer.nsecsElapsed()) * 1e-6);
    result.bytes = again->size();
  }
  std::sort(totals.begin(), totals.end());
  std::sort(serialised.begin(), serialised.end());
  result.total = totals[2];
  result.serialise = serialised[2];
  return result;
}

void print(int components, int keyFrames, const Measured& measured) {
  std::printf("%10d %12d %10.1f %12.1f %12.1f %12.3f %10.1f\n", components, keyFrames,
              measured.total, measured.serialise, measured.total - measured.serialise,
              (measured.total - measured.serialise) / components,
              static_cast<double>(measured.bytes) * 1e-6);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  std::printf("%10s %12s %10s %12s %12s %12s %10s\n", "components", "key frames", "export, ms",
              "serialise", "beyond it", "a component", "MB");
  for (const int components : {10, 100, 1000}) print(components, 20, measure(components, 20));
  for (const int keyFrames : {10, 100, 1000, 10000}) print(10, keyFrames, measure(10, keyFrames));
  return 0;
}
