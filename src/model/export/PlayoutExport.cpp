#include "model/export/PlayoutExport.h"

#include "model/export/ComponentExport.h"

namespace model {

using foundation::PropertyDictionary;
using foundation::PropertyValue;
using foundation::Result;
using quartz::QuartzComposition;
using quartz::QuartzPatch;

namespace {

const QString timebaseKey = QStringLiteral("timebase");

PropertyValue single(double value) {
  return PropertyValue::fromFloat(static_cast<float>(value));
}

tl::unexpected<foundation::Error> logged(const QString& message, const QString& file = {},
                                         const QString& detail = {}) {
  qCritical("%s", qPrintable(message));
  return foundation::failure(message, file, detail);
}

}  // namespace

PlayoutExport::PlayoutExport(const Composition& composition, StandardComponents standardComponents,
                             const ExportOptions& options, const KeyFactory& keyFactory)
    : m_composition(composition),
      m_standardComponents(std::move(standardComponents)),
      m_options(options),
      m_context{composition,
                keyFactory,
                options.avoidSpacesInPortLabels ? QStringLiteral("_") : QStringLiteral(" "),
                {},
                {},
                nullptr,
                {},
                {}} {}

Result<void> PlayoutExport::writeToPath(const QString& path) {
  if (auto built = build(); !built) return built;
  if (auto written = m_context.file.writeToFile(path, true); !written)
    return logged(QStringLiteral("Unable to write output file!"), path, written.error().message);
  return {};
}

Result<void> PlayoutExport::build() {
  addClearNode();
  if (m_options.includeBackground) addBackground();
  if (auto scaler = addScaler(); !scaler) return scaler;
  addStopFrameTiming();
  int row = 1;
  for (const QuartzComponent* component : m_composition.componentsSortedByZLevel()) {
    ComponentExport part(m_context, *component, row++);
    if (auto added = part.add(); !added) return added;
  }
  if (m_options.includeBackground && m_options.previewFps)
    addBackgroundPatchOf(QStringLiteral("FPS"));
  return {};
}

void PlayoutExport::addClearNode() {
  // No colour: the patch's own default, transparent, applies.
  QuartzPatch* clear = m_context.root().addPatchWithClass(
      QStringLiteral("QCClear"),
      {{QStringLiteral("clearColorBuffer"), true}, {QStringLiteral("clearDepthBuffer"), true}});
  clear->setPosition({500, 400});
  const QString key = QStringLiteral("clear_enable");
  clear->publishPort(QStringLiteral("_enable"), key, QStringLiteral("Enable Clear"));
  m_context.file.setInputParameter(true, key);
}

void PlayoutExport::addBackground() {
  const bool image = m_composition.backgroundMode() == BackgroundMode::Image;
  if (image && !m_composition.backgroundMovie().isEmpty()) {
    QuartzPatch* patch = addBackgroundPatchOf(QStringLiteral("MovieBackground"));
    if (!patch) return;
    patch->setPortValue(QuartzComposition::quartzValueForObject(m_composition.backgroundMovie()),
                        QStringLiteral("Filename"));
    // What shows when the movie does not play.
    const QString color = QStringLiteral("backgroundColor");
    if (!patch->infoForPublishedInputPortWithName(color).isEmpty())
      patch->setPortValue(QuartzComposition::quartzValueForObject(m_composition.backgroundColor()),
                          color);
    return;
  }
  if (!image && m_composition.backgroundMode() != BackgroundMode::SolidColor) return;
  QuartzPatch* patch = addBackgroundPatchOf(QStringLiteral("Background"));
  if (!patch) return;
  if (!image)
    patch->setPortValue(QuartzComposition::quartzValueForObject(m_composition.backgroundColor()),
                        QStringLiteral("backgroundColor"));
  else if (!m_composition.backgroundImage().isNull())
    patch->setPortValue(QuartzComposition::quartzValueForObject(m_composition.backgroundImage()),
                        QStringLiteral("backgroundImage"));
}

QuartzPatch* PlayoutExport::addBackgroundPatchOf(const QString& standardComponent) {
  const auto file = m_standardComponents.load(standardComponent);
  if (!file) return nullptr;
  QuartzPatch* source = (*file)->rootPatch()->patchWithName(QStringLiteral("Background"));
  if (!source) return nullptr;
  auto patch = (*file)->rootPatch()->takeNode(source);
  patch->setKey(m_context.root().uniqueNodeKey(patch->key()));
  return m_context.root().addNode(std::move(patch));
}

Result<void> PlayoutExport::addScaler() {
  auto file = m_standardComponents.load(QStringLiteral("Renderer"));
  if (!file) return tl::unexpected(file.error());
  m_context.rendererFile = std::move(*file);
  QuartzPatch& source = *m_context.rendererFile->rootPatch();
  QuartzPatch* found = source.patchWithName(QStringLiteral("Scaling Factor"));
  if (!found) return logged(QStringLiteral("Unable to find scaling patch"));
  auto scaler = source.takeNode(found);
  scaler->setKey(QStringLiteral("Scaler"));
  scaler->setPosition({500, 500});
  QuartzPatch* added = m_context.root().addNode(std::move(scaler));
  const VideoResolution& format = m_composition.videoResolution();
  added->setPortValue(single(format.compositionWidth()), QStringLiteral("compositionWidth"));
  added->setPortValue(single(format.compositionHeight()), QStringLiteral("compositionHeight"));
  if (!source.patchWithName(QStringLiteral("Renderer")))
    return logged(QStringLiteral("Unable to find renderer patch"));
  return {};
}

void PlayoutExport::addStopFrameTiming() {
  QuartzPatch& root = m_context.root();
  QuartzPatch* timer = root.addPatchWithClass(QStringLiteral("BRVPatchTimePlugIn"),
                                              {{timebaseKey, QStringLiteral("parent")}});
  timer->setPosition({-200, 500});
  timer->setKey(QStringLiteral("stopframetimer"));
  timer->setName(QStringLiteral("Stop Frame Timer"));

  // Counted in eight bits: 256 stop frames count as none.
  const bool hasStopFrames = static_cast<quint8>(m_composition.stopFrames().size()) != 0;
  PropertyDictionary settings{{QStringLiteral("compositionDuration"), m_composition.duration()},
                              {QStringLiteral("enableStopframesInBRVApps"), hasStopFrames}};
  if (hasStopFrames)
    settings.insert(QStringLiteral("stopframes"), m_composition.stopFrameDictionaries());
  QuartzPatch* stopFrames = root.addPatchWithClass(
      QStringLiteral("QCPlugInPatch"), {{timebaseKey, QStringLiteral("external")},
                                        {QStringLiteral("plugInState"), std::move(settings)}});
  stopFrames->setIdentifier(QStringLiteral("BRVStopframesPlugIn"));
  stopFrames->setPosition({0, 500});
  if (hasStopFrames) {
    const QString trigger = QStringLiteral("trigger");
    stopFrames->publishPort(QStringLiteral("inputTrigger"), trigger, trigger);
    stopFrames->publishOutputPort(QStringLiteral("outputWaitingForTrigger"),
                                  QStringLiteral("waitingForTrigger"));
  }
  m_context.connect(*timer, QStringLiteral("outputTime"), *stopFrames, QStringLiteral("_time"));
  stopFrames->publishOutputPort(QStringLiteral("outputActive"), QStringLiteral("active"));
  m_context.stopFrameNode = stopFrames->key();
  m_context.timeLineBase = hasStopFrames ? QStringLiteral("external") : QStringLiteral("parent");
}

}  // namespace model
