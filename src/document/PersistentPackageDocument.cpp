#include "document/PersistentPackageDocument.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "document/PackageFolder.h"
#include "foundation/DurableFile.h"

namespace document {

using foundation::failure;
using foundation::Result;

namespace {

constexpr qint64 largestStore = qint64{1} << 30;

Result<QByteArray> readStore(const PackageLayout& layout) {
  QFile file(layout.store());
  const QFileInfo info(layout.store());
  if (!info.exists()) return failure(QStringLiteral("holds no data.xml"), layout.folder());
  // A link out of the package would be written over by the next save, or be someone else's file.
  if (!info.isFile() || info.isSymLink())
    return failure(QStringLiteral("is not a plain file"), layout.store());
  if (info.size() > largestStore)
    return failure(QStringLiteral("is too large for a document"), layout.store());
  if (!file.open(QIODevice::ReadOnly))
    return failure(QStringLiteral("cannot be read"), layout.store(), file.errorString());
  QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError)
    return failure(QStringLiteral("cannot be read"), layout.store(), file.errorString());
  return bytes;
}

QString folderOf(const QUrl& url) {
  return PackageLayout(url.toLocalFile()).folder();
}

}  // namespace

PersistentPackageDocument::PersistentPackageDocument(store::EntityFactories factories)
    : m_factories(std::move(factories)),
      m_store(std::make_unique<store::XmlStore>(m_factories)),
      m_context(std::make_unique<store::ObjectContext>()) {}

PersistentPackageDocument::~PersistentPackageDocument() = default;

QString PersistentPackageDocument::displayName() const {
  if (m_fileURL.isEmpty()) {
    const QString name =
        QCoreApplication::translate("document::PersistentPackageDocument", "Untitled");
    return m_untitledNumber > 1 ? QStringLiteral("%1 %2").arg(name).arg(m_untitledNumber) : name;
  }
  const QString name = QFileInfo(folderOf(m_fileURL)).fileName();
  return PackageLayout::isPackageName(name) ? QFileInfo(name).completeBaseName() : name;
}

std::optional<QUrl> PersistentPackageDocument::storeURLFromPath(const QString& path) {
  if (path.isEmpty()) return {};
  return QUrl::fromLocalFile(PackageLayout(path).store());
}

PersistentPackageDocument::StoreState PersistentPackageDocument::stateOf(const QString& storePath) {
  const QFileInfo info(storePath);
  if (!info.exists()) return {};
  return {info.lastModified(), info.size()};
}

bool PersistentPackageDocument::storeChangedOnDisk() const {
  return !m_fileURL.isEmpty() &&
         !(stateOf(PackageLayout(folderOf(m_fileURL)).store()) == m_storeState);
}

bool PersistentPackageDocument::isAt(const QUrl& url) const {
  return PackageLayout::isSamePlace(folderOf(m_fileURL), folderOf(url)) &&
         QFileInfo(folderOf(url)).isDir();
}

bool PersistentPackageDocument::writesNothing(const QUrl& url, SaveOperation operation) const {
  return operation == SaveOperation::SaveAs && isAt(url) &&
         QFileInfo::exists(PackageLayout(folderOf(url)).store());
}

Result<void> PersistentPackageDocument::readFromURL(const QUrl& url) {
  const auto layout = PackageLayout::around(url.toLocalFile());
  if (!layout) return tl::unexpected(layout.error());
  const StoreState state = stateOf(layout->store());
  const auto bytes = readStore(*layout);
  if (!bytes) return tl::unexpected(bytes.error());
  auto store = std::make_unique<store::XmlStore>(m_factories);
  auto context = std::make_unique<store::ObjectContext>();
  if (auto read = store->read(*bytes, layout->store(), *context); !read) return read;
  replaceContents(std::move(store), std::move(context));
  m_storeState = state;
  simpleSetFileURL(QUrl::fromLocalFile(QFileInfo(layout->folder()).absoluteFilePath()));
  if (m_storeObserver) m_storeObserver->contextWasReplaced(*bytes);
  return {};
}

void PersistentPackageDocument::replaceContents(std::unique_ptr<store::XmlStore> store,
                                                std::unique_ptr<store::ObjectContext> context) {
  m_replacementObservers.call(*this);
  if (m_storeObserver) m_storeObserver->contextWillBeReplaced();
  m_store = store ? std::move(store) : std::make_unique<store::XmlStore>(m_factories);
  m_context = context ? std::move(context) : std::make_unique<store::ObjectContext>();
  m_warnings = m_store->warnings();
  contentsWereReplaced();
}

void PersistentPackageDocument::contextIsNew() {
  if (m_storeObserver) m_storeObserver->contextWasReplaced({});
}

void PersistentPackageDocument::heldBesideChanged() {
  if (m_storeObserver) m_storeObserver->heldBesideChanged();
}

void PersistentPackageDocument::afterLoad() {
  m_context->processPendingChanges();
  m_context->clearHistory();
  m_context->markSaved();
}

Result<void> PersistentPackageDocument::revertToContentsOfURL(const QUrl& url) {
  return readFromURL(url);
}

void PersistentPackageDocument::simpleSetFileURL(const QUrl& url) {
  m_fileURL = url;
  m_folder = url.isEmpty() ? FolderTracker() : FolderTracker(folderOf(url));
}

void PersistentPackageDocument::setFileURL(const QUrl& url) {
  simpleSetFileURL(url);
  if (m_storeObserver) m_storeObserver->wasMoved();
}

Result<RecoveredDocument> PersistentPackageDocument::recover(const RecoveryStore& recoveryStore,
                                                             const RecoveryEntry& entry) {
  auto store = std::make_unique<store::XmlStore>(m_factories);
  auto context = std::make_unique<store::ObjectContext>();
  auto recovered = recoveryStore.recover(
      entry,
      [&store](const QByteArray& bytes, const QString& path, store::ObjectContext& target) {
        return store->read(bytes, path, target);
      },
      m_factories, *context);
  if (!recovered) return recovered;
  replaceContents(std::move(store), std::move(context));
  const QString& path = recovered->document.path;
  simpleSetFileURL(path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path));
  m_storeState = path.isEmpty() ? StoreState() : stateOf(PackageLayout(path).store());
  return recovered;
}

Result<void> PersistentPackageDocument::writePackage(const QString& folder,
                                                     const QByteArray& storeBytes) const {
  if (!m_fileURL.isEmpty()) {
    const PackageLayout present(folderOf(m_fileURL));
    for (const QString& entry : present.otherEntries())
      if (auto copied =
              PackageFolder::copyEntry(present.folder() + u'/' + entry, folder + u'/' + entry);
          !copied)
        return copied;
  }
  if (auto held = writeHeld(PackageLayout(folder)); !held) return held;
  return foundation::replaceFile(PackageLayout(folder).store(), storeBytes);
}

Result<void> PersistentPackageDocument::writeSafelyToURL(const QUrl& url, SaveOperation operation) {
  const QString folder = folderOf(url);
  const bool isInPlace = operation == SaveOperation::Save || isAt(url);
  if (isInPlace && !QFileInfo(folder).isDir())
    return failure(QStringLiteral("the document is no longer there"), folder);
  const bool isCopy = operation == SaveOperation::SaveTo && !isInPlace;
  if (m_storeObserver)
    if (auto may = m_storeObserver->mayBeSavedTo(folder, operation); !may) return may;
  const QByteArray bytes = storeBytes();
  if (m_storeObserver && !isCopy) m_storeObserver->willBeSaved(bytes, folder);
  auto written = isInPlace ? foundation::replaceFile(PackageLayout(folder).store(), bytes)
                           : PackageFolder::replace(folder, [&](const QString& staged) {
                               return writePackage(staged, bytes);
                             });
  if (written && isInPlace) m_storeState = stateOf(PackageLayout(folder).store());
  return written;
}

void PersistentPackageDocument::followPackage() {
  if (m_fileURL.isEmpty() || QFileInfo::exists(folderOf(m_fileURL))) return;
  const QString now = m_folder.path();
  if (PackageLayout::isPackageName(now)) setFileURL(QUrl::fromLocalFile(now));
}

Result<void> PersistentPackageDocument::saveToURL(const QUrl& target, SaveOperation operation) {
  const bool isOwnPlace = target == m_fileURL;
  followPackage();
  const QUrl url = isOwnPlace && operation == SaveOperation::Save ? m_fileURL : target;
  // What is unsaved stays so when nothing is written.
  const bool isUnsavedStill = operation == SaveOperation::SaveTo || writesNothing(url, operation);
  if (auto written = writeSafelyToURL(url, operation); !written) return written;
  if (isUnsavedStill) return {};
  if (operation == SaveOperation::SaveAs) {
    simpleSetFileURL(QUrl::fromLocalFile(QFileInfo(folderOf(url)).absoluteFilePath()));
    m_storeState = stateOf(PackageLayout(folderOf(url)).store());
  }
  m_context->markSaved();
  if (m_storeObserver) m_storeObserver->wasSaved();
  return {};
}

}  // namespace document
