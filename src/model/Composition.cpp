#include "model/Composition.h"

#include <cmath>

#include "foundation/UserDefaults.h"
#include "foundation/archive/KeyedArchive.h"
#include "foundation/archive/NonKeyedArchive.h"
#include "model/StandardComponents.h"
#include "model/export/PlayoutExport.h"
#include "store/ObjectContext.h"

namespace model {

using foundation::PropertyArray;
using foundation::PropertyDictionary;

namespace {

/// What was archived under a default, by whichever archiver.
foundation::ArchiveValue unarchived(const QVariant& data) {
  const QByteArray bytes = data.toByteArray();
  if (auto value = foundation::NonKeyedArchive::read(bytes)) return *value;
  if (auto value = foundation::KeyedArchive::read(bytes)) return *value;
  return {};
}

}  // namespace

Composition::Declaration::Declaration() : Entity(QStringLiteral("Composition")) {
  const auto of = [](const ManagedObject& object) -> const Composition& {
    return static_cast<const Composition&>(object);
  };
  const auto list = [](const auto& objects) {
    return QVariant::fromValue(QList<ManagedObject*>(objects.begin(), objects.end()));
  };
  derive("width", {"broadcastMode"},
         [of](const auto& object) { return QVariant(of(object).width()); });
  derive("height", {"broadcastMode"},
         [of](const auto& object) { return QVariant(of(object).height()); });
  derive("size", {"width", "height"},
         [of](const auto& object) { return QVariant(of(object).size()); });
  derive("stopFramesSet", {"stopFrames"});
  derive("componentsSortedByZLevel", {},
         [of, list](const auto& object) { return list(of(object).componentsSortedByZLevel()); });
  derive("componentsSortedByInverseZLevel", {}, [of, list](const auto& object) {
    return list(of(object).componentsSortedByInverseZLevel());
  });
  derive("selectedComponents", {},
         [of, list](const auto& object) { return list(of(object).selectedComponents()); });
  derive("validSelection", {"selectedComponents"},
         [of](const auto& object) { return QVariant(of(object).validSelection()); });
  derive("selectedComponentsIndexes", {"selectedComponents"}, [of](const auto& object) {
    return QVariant::fromValue(of(object).selectedComponentsIndexes());
  });
  derive("selectedComponentsIndexesSortedByZLevel", {"selectedComponents"},
         [of](const auto& object) {
           return QVariant::fromValue(of(object).selectedComponentsIndexesSortedByZLevel());
         });
  derive("selectionIndexPaths", {}, [of](const auto& object) {
    return QVariant::fromValue(of(object).selectionIndexPaths());
  });
  derive("imageBackgroundMode", {"backgroundMode"},
         [of](const auto& object) { return QVariant(of(object).imageBackgroundMode()); });
  derive("solidColorBackgroundMode", {"backgroundMode"},
         [of](const auto& object) { return QVariant(of(object).solidColorBackgroundMode()); });
  announceAlong("backgroundMode", {"backgroundColor", "backgroundImage"});
  derive("posterFrameMode", {"posterFrameTimepoint"},
         [of](const auto& object) { return QVariant(of(object).posterFrameMode()); });
}

const Composition::Declaration& Composition::declaration() {
  static const Declaration declaration;
  return declaration;
}

Composition::Composition(const VideoResolution& videoResolution)
    : ManagedObject(declaration()), m_videoResolution(videoResolution) {
  setVideoResolution(videoResolution);
}

Composition::~Composition() = default;

void Composition::cleanUp() {
  m_contextChanges.cancel();
}

void Composition::awakeFromInsert() {
  commonSetup();
  readDefaults();
}

void Composition::awakeFromFetch() {
  commonSetup();
}

void Composition::commonSetup() {
  setEditorTimepoint(0);
  setZoomMode(0);
  m_videoResolution = VideoResolution(broadcastMode());
  m_ticksPerSecond = static_cast<quint64>(std::llround(m_videoResolution.framesPerSecond()));
  m_contextChanges = context()->observeChanges(
      [this](const store::ChangeSet& changes) { objectsChanged(changes); });
}

void Composition::readDefaults() {
  const foundation::UserDefaults& defaults = foundation::UserDefaults::standard();
  const auto stored = [&](const char16_t* key) { return defaults.value(QString::fromUtf16(key)); };
  setBackgroundMode(
      static_cast<BackgroundMode>(stored(u"defaultCompositionBackgroundMode").toInt()));
  const auto archivedColor = unarchived(stored(u"defaultCompositionBackgroundColorData"));
  if (const auto* color = archivedColor.as<foundation::Color>()) setBackgroundColor(*color);
  const auto archivedImage = unarchived(stored(u"defaultCompositionBackgroundImageData"));
  if (const auto* image = archivedImage.as<foundation::ArchiveImage>())
    setBackgroundImage(QImage::fromData(image->file));
  setBackgroundMovie(stored(u"defaultCompositionMovieFilename").toString());
}

void Composition::setVideoResolution(const VideoResolution& resolution) {
  m_videoResolution = resolution;
  m_ticksPerSecond = static_cast<quint64>(std::llround(resolution.framesPerSecond()));
  set(declaration().broadcastMode, resolution.title());
}

void Composition::valueDidChange(const QString& key) {
  if (key == QLatin1String("broadcastMode") && m_videoResolution.title() != broadcastMode()) {
    m_videoResolution = VideoResolution(broadcastMode());  // undone or redone
    m_ticksPerSecond = static_cast<quint64>(std::llround(m_videoResolution.framesPerSecond()));
  }
  if (key == QLatin1String("components") && m_selection.forgetRemoved()) selectionDidChange();
}

void Composition::setFileURL(const QUrl& fileURL) {
  if (fileURL == m_fileURL) return;
  m_fileURL = fileURL;
  announce(QStringLiteral("fileURL"));
  for (QuartzComponent* component : components()) component->updateFileURL();
}

void Composition::objectsChanged(const store::ChangeSet& changes) {
  bool holdsComponents = false;
  bool holdsSelected = false;
  for (const store::ObjectSet* set : {&changes.inserted, &changes.updated, &changes.deleted})
    for (const ManagedObject* object : set->objects()) {
      const auto* component = dynamic_cast<const QuartzComponent*>(object);
      if (!component) continue;
      holdsComponents = true;
      holdsSelected = holdsSelected || component->selected();
    }
  if (holdsComponents) zOrderDidChange();
  if (holdsSelected) selectionDidChange();
}

void Composition::zOrderDidChange() {
  announce(QStringLiteral("componentsSortedByZLevel"));
  announce(QStringLiteral("componentsSortedByInverseZLevel"));
}

QStringList Composition::supportedDraggedTypes() {
  return {QStringLiteral("application/x-tessary-component"), QStringLiteral("text/uri-list")};
}

void Composition::addComponent(QuartzComponent& component) {
  const store::UndoStep step(*context(), tr("Add Component"));
  quint64 highest = 0;
  for (const QuartzComponent* other : components())
    if (other != &component) highest = std::max(highest, other->zLevel());
  component.setZLevel(highest + 1);  // the first one too stands at 1 until an order is given
  clearSelection();
  component.setSelected(true);
}

QuartzComponent* Composition::addComponenWithQuartzCompositionFile(const QString& path,
                                                                   const InputValues& inputValues,
                                                                   QStringList& warnings) {
  const store::UndoStep step(*context(), tr("Add Component"));
  QuartzComponent* component =
      QuartzComponent::createWithQuartzCompositionFile(path, *this, inputValues, warnings);
  if (component) addComponent(*component);
  return component;
}

void Composition::removeComponents(const QList<QuartzComponent*>& components) {
  {
    const store::UndoStep step(*context(), tr("Remove"));
    for (QuartzComponent* component : components) {
      component->setSelected(false);
      context()->remove(*component);
    }
  }
  announce(QStringLiteral("componentsSortedByInverseZLevel"));
}

QList<QuartzComponent*> Composition::componentsSortedByInverseZLevel() const {
  QList<QuartzComponent*> sorted = componentsSortedByZLevel();
  std::reverse(sorted.begin(), sorted.end());
  return sorted;
}

void Composition::moveSelectionByLevel(qsizetype step) {
  // Those at the end that they move to go first, so that they keep their order.
  QList<QuartzComponent*> moved =
      step > 0 ? componentsSortedByInverseZLevel() : componentsSortedByZLevel();
  moved.removeIf([](const QuartzComponent* component) { return !component->selected(); });
  moveComponents(moved, step);
}

void Composition::moveComponents(const QList<QuartzComponent*>& components, qsizetype byLevel) {
  const store::UndoStep step(*context(), tr("Arrange"));
  m_zOrder.move(components, byLevel);
  zOrderDidChange();
}

void Composition::sendSelectionTo(ZOrder::End end) {
  const store::UndoStep step(*context(), tr("Arrange"));
  m_zOrder.sendTo(selectedComponents(), end);
  zOrderDidChange();
}

void Composition::adjustZLevels(const QList<QuartzComponent*>& ordered) {
  m_zOrder.adjustLevels(ordered);
  zOrderDidChange();
}

std::optional<CommandReport> Composition::swapSelected() {
  const QList<QuartzComponent*> selected = selectedComponents();
  if (selected.size() != 2)
    return CommandReport{tr("Swap Selected:"), tr("Please select two components to swap.")};
  const store::UndoStep step(*context(), tr("Swap Selected"));
  m_zOrder.swap(*selected[0], *selected[1]);
  zOrderDidChange();
  return {};
}

QList<qsizetype> Composition::selectedComponentsIndexes() const {
  QList<qsizetype> indexes;
  qsizetype index = 0;
  for (const QuartzComponent* component : components()) {
    if (component->selected()) indexes.append(index);
    ++index;
  }
  return indexes;
}

QList<qsizetype> Composition::selectedComponentsIndexesSortedByZLevel() const {
  QList<qsizetype> rows;
  for (const QuartzComponent* component : selectedComponents())
    rows.append(components().size() - 1 - static_cast<qsizetype>(component->zLevel()));
  std::sort(rows.begin(), rows.end());
  return rows;
}

QList<qsizetype> Composition::selectionIndexPaths() const {
  QList<qsizetype> rows;
  const QList<QuartzComponent*> shown = componentsSortedByInverseZLevel();
  for (qsizetype row = 0; row < shown.size(); ++row)
    if (shown[row]->selected()) rows.append(row);
  return rows;
}

void Composition::setSelectionIndexPaths(const QList<qsizetype>& rows) {
  const QList<QuartzComponent*> shown = componentsSortedByInverseZLevel();
  QList<QuartzComponent*> named;
  for (const qsizetype row : rows)
    if (row >= 0 && row < shown.size()) named.append(shown[row]);
  m_selection.set(named);
}

void Composition::sizeToFitSelection() {
  const store::UndoStep step(*context(), tr("Size to Fit"));
  for (QuartzComponent* component : selectedComponents()) component->sizeToFit();
}

void Composition::selectionDidChange() {
  announce(QStringLiteral("selectedComponents"));
  announce(QStringLiteral("selectionIndexPaths"));
}

void Composition::soloSelectedComponents() {
  const store::UndoStep step(*context(), tr("Solo"));
  bool isSolo = true;
  for (const QuartzComponent* component : components())
    isSolo = isSolo && component->selected() == component->visibleInCompositionEditor();
  for (QuartzComponent* component : components())
    component->setVisibleInCompositionEditor(isSolo || component->selected());
}

void Composition::showAllComponents() {
  const store::UndoStep step(*context(), tr("Show All"));
  for (QuartzComponent* component : components()) component->setVisibleInCompositionEditor(true);
}

void Composition::setEditorTimepoint(double timepoint) {
  const double kept = std::max(0.0, std::min(timepoint, duration()));
  m_playback.editorTimeWasSet(kept);
  set(declaration().editorTimepoint, kept);
}

double Composition::snapped(double timepoint) const {
  if (m_ticksPerSecond == 0) return timepoint;
  const auto ticks = static_cast<double>(m_ticksPerSecond);
  return std::round(timepoint * ticks) / ticks;
}

bool Composition::validateEditorTimepoint(double& timepoint) const {
  if (timepoint < 0)
    timepoint = 0;
  else if (timepoint > duration())
    timepoint = duration();
  else
    timepoint = snapped(timepoint);
  return timepoint != editorTimepoint();
}

void Composition::setEditorTimepointForNearestTick(double timepoint) {
  setEditorTimepoint(snapped(timepoint));
}

void Composition::setPlayMode(bool playing) {
  m_playback.setPlaying(playing);
  set(declaration().playMode, playing);
}

StopFrame* Composition::addStopFrame(double timepoint, const QString& triggerInformation) {
  const store::UndoStep step(*context(), tr("Add Stop Frame"));
  StopFrame* stopFrame =
      context()->insert(std::make_unique<StopFrame>(timepoint, triggerInformation));
  stopFrame->setComposition(this);
  return stopFrame;
}

void Composition::removeStopFrame(StopFrame& stopFrame) {
  const store::UndoStep step(*context(), tr("Remove Stop Frame"));
  context()->remove(stopFrame);
}

StopFrame* Composition::stopFrameAtTimepoint(double timepoint) const {
  for (StopFrame* stopFrame : stopFrames())
    if (stopFrame->isTimepoint(timepoint)) return stopFrame;
  return nullptr;
}

QList<double> Composition::stopFrameTimepoints() const {
  QList<double> times;
  for (const StopFrame* stopFrame : stopFrames()) times.append(stopFrame->timepoint());
  std::sort(times.begin(), times.end());
  return times;
}

QList<StopFrame*> Composition::stopFramesSortedByTime() const {
  QList<StopFrame*> sorted = stopFrames().list();
  std::stable_sort(sorted.begin(), sorted.end(), [](const StopFrame* a, const StopFrame* b) {
    return a->timepoint() < b->timepoint();
  });
  return sorted;
}

PropertyArray Composition::stopFrameDictionaries() const {
  PropertyArray dictionaries;
  for (const StopFrame* stopFrame : stopFramesSortedByTime()) {
    const QString& name = stopFrame->triggerInformation();
    dictionaries.append(PropertyDictionary{
        {QStringLiteral("name"), name.isEmpty() ? QStringLiteral("Stopframe") : name},
        {QStringLiteral("time"), stopFrame->timepoint()}});
  }
  return dictionaries;
}

PropertyDictionary Composition::compositionInfo() const {
  const auto single = [](double value) { return static_cast<double>(static_cast<float>(value)); };
  PropertyArray stops;
  for (const StopFrame* stopFrame : stopFramesSortedByTime()) {
    PropertyDictionary stop{{QStringLiteral("timepoint"), single(stopFrame->timepoint())}};
    if (const QString& title = stopFrame->triggerInformation(); !title.isEmpty())
      stop.insert(QStringLiteral("title"), title);
    stops.append(std::move(stop));
  }
  PropertyArray infos;
  for (const QuartzComponent* component : componentsSortedByZLevel())
    infos.append(component->componentInfo());
  return {{QStringLiteral("duration"), single(duration())},
          {QStringLiteral("width"), qint64{m_videoResolution.width()}},
          {QStringLiteral("height"), qint64{m_videoResolution.height()}},
          {QStringLiteral("pixelAspectRatio"), single(m_videoResolution.aspectRatio())},
          {QStringLiteral("stopframes"), std::move(stops)},
          {QStringLiteral("components"), std::move(infos)}};
}

QList<Attribute*> Composition::attributesWithSelectedKeyframes() const {
  QList<Attribute*> found;
  for (const QuartzComponent* component : components())
    for (Attribute* attribute : component->attributes())
      if (!attribute->selectedTimepoints().isEmpty()) found.append(attribute);
  return found;
}

void Composition::deselectAllKeyFrames() {
  for (const QuartzComponent* component : components())
    for (Attribute* attribute : component->attributes()) attribute->deselectAllTimePoints();
}

void Composition::sendChangeNotificationForValues() {
  for (QuartzComponent* component : components())
    component->sendChangeNotificationForValues(AbstractComponent::Announced::OnlyAnimateable);
}

void Composition::setPosterFrameMode(int mode) {
  setPosterFrameTimepoint(mode != 0 ? -1.0 : editorTimepoint());
}

Ruler* Composition::addRulerAtPosition(double position, bool horizontal) {
  const store::UndoStep step(*context(), tr("Add Guide"));
  setShowsRulers(true);
  Ruler* ruler = context()->insert(std::make_unique<Ruler>(position, horizontal));
  ruler->setComposition(this);
  return ruler;
}

void Composition::removeRuler(Ruler& ruler) {
  const store::UndoStep step(*context(), tr("Remove Guide"));
  context()->remove(ruler);
}

QString Composition::standardKey(const QuartzComponent& component, const QString& separator,
                                 const QString& port) {
  return component.title() + separator + port;
}

QString Composition::stringByTrimmingInvalidKeyCharacters(const QString& string) {
  QString cleaned;
  cleaned.reserve(string.size());
  for (const char32_t character : string.toUcs4()) {
    const bool valid = QChar::isLetterOrNumber(character) || QChar::isMark(character);
    cleaned += valid || character == U'_' ? QString::fromUcs4(&character, 1) : QStringLiteral("_");
  }
  return cleaned;
}

foundation::Result<void> Composition::exportToPath(const QString& path,
                                                   Background includeBackground,
                                                   const KeyFactory& keyFactory) const {
  const foundation::UserDefaults& defaults = foundation::UserDefaults::standard();
  const ExportOptions options{includeBackground == Background::Include,
                              defaults.value(QStringLiteral("avoidSpacesInPortLabels")).toBool(),
                              defaults.value(QStringLiteral("previewFPS")).toBool()};
  PlayoutExport playout(*this, StandardComponents::located(), options, keyFactory);
  return playout.writeToPath(path);
}

}  // namespace model
