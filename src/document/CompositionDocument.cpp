#include "document/CompositionDocument.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include "document/PackageFolder.h"
#include "document/PackagePictures.h"
#include "document/PosterFrame.h"
#include "foundation/DurableFile.h"
#include "foundation/Log.h"
#include "foundation/PropertyList.h"
#include "model/ModelEntities.h"

namespace document {

using foundation::failure;
using foundation::logDebug;
using foundation::logError;
using foundation::Result;
using model::Composition;

namespace {

/// Playout systems translate the texts of scrollers, which they know by this key.
QString exportKey(const model::QuartzComponent& component, const QString& separator,
                  const QString& port) {
  const QString file = QFileInfo(component.compositionFilename()).completeBaseName();
  if (file == QLatin1String("TextScroller") && port == QLatin1String("Strings_1Input"))
    return QStringLiteral("EAS_TRANSLATION");
  return Composition::standardKey(component, separator, port);
}

}  // namespace

CompositionDocument::CompositionDocument(model::StandardComponents standardComponents)
    : PersistentPackageDocument(model::modelEntities()),
      m_standardComponents(std::move(standardComponents)) {}

CompositionDocument::~CompositionDocument() {
  if (m_composition) m_composition->cleanUp();
}

QUrl CompositionDocument::quartzCompositionURL() const {
  if (fileURL().isEmpty()) return {};
  return QUrl::fromLocalFile(PackageLayout(fileURL().toLocalFile()).composition());
}

void CompositionDocument::beforeLoad() {
  logDebug(QStringLiteral("CompositionDocument before load"));
}

void CompositionDocument::afterLoad() {
  logDebug(QStringLiteral("CompositionDocument after load"));
  PersistentPackageDocument::afterLoad();
}

void CompositionDocument::emptyDocumentWithResolution(const model::VideoResolution& resolution) {
  beforeLoad();
  m_values = {};
  replaceContents();
  m_composition = context().insert(std::make_unique<Composition>(resolution));
  afterLoad();
  contextIsNew();
  m_valueObservers.call(*this);
}

Result<void> CompositionDocument::readFromURL(const QUrl& url) {
  logDebug(QStringLiteral("CompositionDocument will read from %1").arg(url.toString()));
  if (auto read = PersistentPackageDocument::readFromURL(url); !read) {
    logDebug(QStringLiteral("CompositionDocument failed to read from %1 with error %2")
                 .arg(url.toString(), read.error().text()));
    return read;
  }
  beforeLoad();
  takeComposition();
  afterLoad();
  readValues();
  m_valueObservers.call(*this);
  return {};
}

void CompositionDocument::readValues() {
  const bool wasHeld = m_values.isHeld();
  const QString path = fileURL().toLocalFile();
  m_values = {};
  if (!path.isEmpty())
    if (const auto read = m_values.read(PackageLayout(path)); !read)
      addWarning(QStringLiteral("The sets of values are not there: %1").arg(read.error().text()));
  if (wasHeld) heldBesideChanged();
}

Result<void> CompositionDocument::setValueSets(const playout::ValueSets& sets,
                                               const QStringList& pictureKeys) {
  m_values.hold(sets);
  m_pictureKeys += pictureKeys;
  m_pictureKeys.removeDuplicates();
  followPackage();
  const QString path = fileURL().toLocalFile();
  Result<void> written;
  if (!path.isEmpty()) {
    const auto copied = holdPictures(PackageLayout(path));
    written = m_values.write(PackageLayout(path)).and_then([&] { return copied; });
  }
  heldBesideChanged();
  m_valueObservers.call(*this);
  return written;
}

Result<void> CompositionDocument::holdPictures(const PackageLayout& package) {
  const auto kept = PackagePictures::kept(m_values.sets(), m_pictureKeys, package);
  m_values.hold(kept.sets);
  return kept.copied;
}

QByteArray CompositionDocument::heldBesideStore() const {
  return m_values.isHeld() ? m_values.sets().toJson() : QByteArray();
}

Result<void> CompositionDocument::writeHeld(const PackageLayout& package) const {
  if (!m_values.isHeld()) return {};
  const auto kept = PackagePictures::kept(m_values.sets(), m_pictureKeys, package);
  if (!kept.copied) logError(kept.copied.error().text());
  PackageValues values = m_values;
  values.hold(kept.sets);
  return values.writeCopy(package).map([](const auto&) {});
}

void CompositionDocument::writeValues(const PackageLayout& package, SaveOperation operation) {
  if (!m_values.isHeld()) return;
  if (operation == SaveOperation::Save || isAt(QUrl::fromLocalFile(package.folder()))) {
    if (const auto copied = holdPictures(package); !copied)
      m_saveWarnings.append(copied.error().text());
    if (const auto written = m_values.write(package); !written)
      leftOut(package.values(), written.error());
  } else if (operation == SaveOperation::SaveAs) {
    if (const auto read = m_values.read(package); !read) leftOut(package.values(), read.error());
  }
  m_valueObservers.call(*this);
}

void CompositionDocument::takeComposition() {
  QList<Composition*> found;
  for (const auto& [id, object] : context().objects())
    if (auto* composition = dynamic_cast<Composition*>(object.get())) found.append(composition);
  m_composition = found.size() == 1 ? found.first() : nullptr;
  if (m_composition) m_composition->setFileURL(quartzCompositionURL());
}

Result<RecoveredDocument> CompositionDocument::recover(const RecoveryStore& recoveryStore,
                                                       const RecoveryEntry& entry) {
  auto recovered = PersistentPackageDocument::recover(recoveryStore, entry);
  if (!recovered) return recovered;
  takeComposition();
  readValues();
  if (!recovered->heldBeside.isEmpty()) {
    const auto held = playout::ValueSets::fromJson(recovered->heldBeside, entry.dataFolder);
    if (held)
      m_values.hold(playout::ValueSets::merged({}, *held, m_values.sets()));
    else
      recovered->warnings.append(held.error().text());
  }
  m_valueObservers.call(*this);
  return recovered;
}

void CompositionDocument::simpleSetFileURL(const QUrl& url) {
  PersistentPackageDocument::simpleSetFileURL(url);
  if (m_composition) m_composition->setFileURL(quartzCompositionURL());
}

void CompositionDocument::prepareToClose() {
  if (m_composition) m_composition->setPlayMode(false);
}

Result<void> CompositionDocument::writeSafelyToURL(const QUrl& url, SaveOperation operation) {
  m_saveWarnings.clear();
  if (writesNothing(url, operation)) return {};
  if (auto written = PersistentPackageDocument::writeSafelyToURL(url, operation); !written) {
    logError(
        QStringLiteral("Could not write document with error is %1").arg(written.error().text()));
    return written;
  }
  const PackageLayout package(url.toLocalFile());
  writeValues(package, operation);
  if (!QDir().mkpath(package.quickLook())) {
    const foundation::Error error{QStringLiteral("cannot be made"), package.quickLook(), {}};
    logError(QStringLiteral("Could not create QuickLook folder with error %1").arg(error.text()));
    return tl::unexpected(error);
  }
  if (!m_composition) return {};
  writeInformation(package);
  copyResources(package);
  writeExports(package);
  return {};
}

void CompositionDocument::leftOut(const QString& file, const foundation::Error& error) {
  m_saveWarnings.append(
      QStringLiteral("%1 was not written: %2").arg(QFileInfo(file).fileName(), error.text()));
}

void CompositionDocument::writeInformation(const PackageLayout& package) {
  const auto xml = foundation::PropertyList::toXml(m_composition->compositionInfo());
  const auto written =
      xml ? foundation::replaceFile(package.info(), *xml) : tl::unexpected(xml.error());
  if (!written) leftOut(package.info(), written.error());
}

void CompositionDocument::copyResources(const PackageLayout& package) {
  for (const model::EmbeddedResource& resource : std::exchange(m_saveResources, {})) {
    const auto copied = PackageFolder::copyEntry(resource.source, resource.dest);
    if (copied) continue;
    logError(QStringLiteral("Could not embed %1 at %2 with error %3")
                 .arg(resource.source, package.composition(), copied.error().text()));
    m_saveWarnings.append(
        QStringLiteral("%1 was not embedded: %2").arg(resource.source, copied.error().text()));
  }
}

void CompositionDocument::writeExports(const PackageLayout& package) {
  using Background = Composition::Background;
  const auto playout = m_composition->exportToPath(package.composition(), Background::Exclude);
  if (!playout) return leftOut(package.composition(), playout.error());
  if (const auto written = writeThumbnail(package); !written)
    leftOut(package.thumbnail(), written.error());
}

Result<void> CompositionDocument::writeThumbnail(const PackageLayout& package) {
  const QTemporaryDir temporary;
  const QString preview = temporary.filePath(QStringLiteral("TessaryPreview.qtz"));
  return m_composition->exportToPath(preview, Composition::Background::Include)
      .and_then([&] {
        return PosterFrame::render(*m_composition, preview, package.folder(),
                                   valueSets().thumbnailSet(), m_saveWarnings);
      })
      .and_then([&](const QImage& picture) {
        return foundation::replaceFile(package.thumbnail(), PosterFrame::jpeg(picture));
      });
}

Result<void> CompositionDocument::renewThumbnail() {
  m_saveWarnings.clear();
  if (!m_composition || fileURL().isEmpty()) return {};
  const PackageLayout package(fileURL().toLocalFile());
  if (!QDir().mkpath(package.quickLook()))
    return failure(QStringLiteral("cannot be made"), package.quickLook());
  return writeThumbnail(package);
}

Result<void> CompositionDocument::exportQuartzComposition(
    const QString& path, Composition::Background background) const {
  if (!m_composition) return failure(QStringLiteral("the document holds no composition"), path);
  return m_composition->exportToPath(path, background, exportKey);
}

}  // namespace document
