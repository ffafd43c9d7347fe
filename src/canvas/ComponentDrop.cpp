#include "canvas/ComponentDrop.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeData>
#include <QUrl>
#include <cmath>

#include "canvas/CanvasHost.h"
#include "document/psd/PSDLayerImporter.h"
#include "model/ComponentClipboard.h"
#include "model/Composition.h"
#include "store/ObjectContext.h"

namespace canvas {

namespace {

/// Pixels of the picture between files that are dropped together, so that none hides another.
constexpr double cascade = 20;

QString componentType() {
  return model::Composition::supportedDraggedTypes().first();
}

QStringList localPaths(const QMimeData& data) {
  QStringList paths;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile()) paths.append(url.toLocalFile());
  return paths;
}

}  // namespace

bool ComponentDrop::canTake(const QMimeData& data) {
  return data.hasFormat(componentType()) || !localPaths(data).isEmpty();
}

bool ComponentDrop::take(const QMimeData& data, bool commandKeyPressed) {
  if (data.hasFormat(componentType())) return addArchived(data.data(componentType()));
  const QStringList paths = localPaths(data);
  return !paths.isEmpty() && addComponentsFromPaths(paths, commandKeyPressed);
}

bool ComponentDrop::addComponentsFromPaths(const QStringList& paths, bool commandKeyPressed) {
  const store::UndoStep step(*m_composition.context(), tr("Add Component"));
  const auto before = present();
  bool allAdded = true;
  for (const QString& path : paths) allAdded = addPath(path, commandKeyPressed) && allAdded;
  place(before, Keeps::Nothing);
  return allAdded;
}

bool ComponentDrop::addPath(const QString& path, bool commandKeyPressed) {
  if (QFileInfo(path).suffix().compare(QLatin1String("qtz"), Qt::CaseInsensitive) == 0)
    return addComposition(path);
  const bool isPSD = isPSDFile(path);
  if (isPSD && !commandKeyPressed) {
    const auto component = m_standard.pathOf(QStringLiteral("ImageComponent"));
    return component && m_host.importPSDFile(path, *component);
  }
  addImage(path, isPSD);
  return true;
}

bool ComponentDrop::addComposition(const QString& path) {
  QStringList warnings;
  const bool added =
      m_composition.addComponenWithQuartzCompositionFile(path, {}, warnings) != nullptr;
  tellWarnings(warnings);
  return added;
}

void ComponentDrop::addImage(const QString& path, bool isFlatPSD) {
  QImage image;
  if (isFlatPSD) {
    if (const auto layered = document::PSDLayerImporter::layerImporterWithPath(path, false))
      image = (*layered)->combinedImageOfVisibleLayers();
  } else if (QFileInfo(path).isFile()) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    image = reader.read();
    if (image.isNull() && reader.canRead() &&
        reader.error() != QImageReader::UnsupportedFormatError)
      tellWarnings({tr("Could not load image \"%1\": %2").arg(path, reader.errorString())});
  }
  const auto component = m_standard.pathOf(QStringLiteral("ImageComponent"));
  if (image.isNull() || !component) return;
  QStringList warnings;
  m_composition.addComponenWithQuartzCompositionFile(*component, {{QStringLiteral("Image"), image}},
                                                     warnings);
}

bool ComponentDrop::addArchived(const QByteArray& data) {
  const auto dictionaries = model::ComponentClipboard::dictionariesFromData(data);
  if (!dictionaries) return false;
  const store::UndoStep step(*m_composition.context(), tr("Add Component"));
  const auto before = present();
  QStringList warnings;
  bool allAdded = !dictionaries->isEmpty();
  for (const auto& dictionary : *dictionaries) {
    auto* component =
        model::QuartzComponent::createWithDictionaryData(dictionary, m_composition, warnings);
    if (component) m_composition.addComponent(*component);
    allAdded = allAdded && component;
  }
  place(before, Keeps::Distances);
  tellWarnings(warnings);
  return allAdded;
}

QSet<const model::QuartzComponent*> ComponentDrop::present() const {
  QSet<const model::QuartzComponent*> components;
  for (const model::QuartzComponent* component : m_composition.components())
    components.insert(component);
  return components;
}

void ComponentDrop::place(const QSet<const model::QuartzComponent*>& before, Keeps keeps) const {
  if (!m_place) return;
  QList<model::QuartzComponent*> added = m_composition.componentsSortedByZLevel();
  added.removeIf([&](const auto* component) { return before.contains(component); });
  QRectF extent;
  for (const auto* component : added) extent |= component->drawingFrame();
  QPointF target = *m_place;
  for (auto* component : added) {
    const QRectF frame = component->drawingFrame();
    const QPointF middle = keeps == Keeps::Distances ? extent.center() : frame.center();
    // On whole pixels, where pictures are sharp.
    component->setOriginX(std::round(frame.left() + target.x() - middle.x()));
    component->setOriginY(std::round(frame.top() + target.y() - middle.y()));
    if (keeps == Keeps::Nothing) target += QPointF(cascade, -cascade);
  }
}

void ComponentDrop::tellWarnings(const QStringList& warnings) {
  if (warnings.isEmpty()) return;
  QString text = tr("Please note the following information related to the import:");
  for (const QString& warning : warnings) text += QStringLiteral("\n\n• ") + warning;
  m_host.showReport({tr("Import Composition"), text});
}

bool ComponentDrop::isPSDFile(const QString& path) {
  QFile file(path);
  return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) && file.read(4) == "8BPS";
}

}  // namespace canvas
