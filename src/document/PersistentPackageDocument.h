#pragma once

#include <QDateTime>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>

#include "document/FolderTracker.h"
#include "document/PackageLayout.h"
#include "document/SaveOperation.h"
#include "document/StoreObserver.h"
#include "document/recovery/RecoveryStore.h"
#include "store/ObjectContext.h"
#include "store/XmlStore.h"

namespace document {

/// A document whose objects are stored inside a package folder. Owns their context. Knows nothing
/// of what the objects are. Locations are local files.
class PersistentPackageDocument {
 public:
  explicit PersistentPackageDocument(store::EntityFactories factories);
  virtual ~PersistentPackageDocument();
  PersistentPackageDocument(const PersistentPackageDocument&) = delete;
  PersistentPackageDocument& operator=(const PersistentPackageDocument&) = delete;

  [[nodiscard]] store::ObjectContext& context() const { return *m_context; }
  /// Empty before the document was saved.
  [[nodiscard]] const QUrl& fileURL() const { return m_fileURL; }
  /// Tells documents that were never saved apart; the first has none.
  void setUntitledNumber(int number) { m_untitledNumber = number; }
  [[nodiscard]] int untitledNumber() const { return m_untitledNumber; }
  /// The package's name without its extension; before it was saved "Untitled", with its number when
  /// it is not the first.
  [[nodiscard]] QString displayName() const;
  [[nodiscard]] bool isDocumentEdited() const { return m_context->hasChanges(); }
  /// What reading noticed, for its user.
  [[nodiscard]] const QStringList& warnings() const { return m_warnings; }
  /// Whether someone else wrote the store since this document last read or wrote it.
  [[nodiscard]] bool storeChangedOnDisk() const;

  /// Of the package at the path; none for no path.
  [[nodiscard]] static std::optional<QUrl> storeURLFromPath(const QString& path);

  /// Opens the package: the folder, or any file in it. Replaces what the document held. On failure
  /// nothing changes.
  [[nodiscard]] virtual foundation::Result<void> readFromURL(const QUrl& url);
  /// Forgets all changes and reads the package again.
  [[nodiscard]] virtual foundation::Result<void> revertToContentsOfURL(const QUrl& url);
  /// Writes the objects; see PackageFolder for what happens to a package that is there already.
  [[nodiscard]] virtual foundation::Result<void> writeSafelyToURL(const QUrl& url,
                                                                  SaveOperation operation);
  /// The whole of a save: writes, and on success moves along and is unchanged from then on. A copy
  /// changes nothing here. A package that somebody renamed or moved on its disk is followed first.
  [[nodiscard]] foundation::Result<void> saveToURL(const QUrl& url, SaveOperation operation);
  /// Saving as another document onto itself writes nothing, unless it has been taken away there.
  [[nodiscard]] bool writesNothing(const QUrl& url, SaveOperation operation) const;
  /// Takes note of where the package is, when somebody renamed it or moved it on its disk.
  void followPackage();
  /// The package was moved there.
  void setFileURL(const QUrl& url);

  /// The store as a save would write it.
  [[nodiscard]] QByteArray storeBytes() const { return m_store->write(*m_context); }
  /// What the next save writes beside the store, in a form that recovering gives back; nothing when
  /// all of it is on the disk.
  [[nodiscard]] virtual QByteArray heldBesideStore() const { return {}; }
  /// Replaces what the document holds by what a process left behind. The document has unsaved
  /// changes then, and lies where it lay for that process.
  [[nodiscard]] virtual foundation::Result<RecoveredDocument> recover(
      const RecoveryStore& recoveryStore, const RecoveryEntry& entry);
  /// At most one; not owned; may be none.
  void setStoreObserver(StoreObserver* observer) { m_storeObserver = observer; }

  /// Told before the context is replaced by another one, for whoever holds on to its objects.
  [[nodiscard]] store::Subscription observeReplacement(
      std::function<void(const PersistentPackageDocument&)> observer) {
    return m_replacementObservers.add(std::move(observer));
  }

 protected:
  /// Around every loading: what happens between is no change and cannot be undone.
  virtual void beforeLoad() {}
  virtual void afterLoad();
  /// Only takes note of the place.
  virtual void simpleSetFileURL(const QUrl& url);
  /// Objects of the context before are gone.
  virtual void contentsWereReplaced() {}
  /// To be called when heldBesideStore() gives something else than before.
  void heldBesideChanged();
  /// What to the user is worth telling about the contents just read.
  void addWarning(const QString& sentence) { m_warnings.append(sentence); }
  /// Writes what is held beside the store into a package that is being made, which has the other
  /// entries of the present one already.
  [[nodiscard]] virtual foundation::Result<void> writeHeld(const PackageLayout&) const {
    return {};
  }
  /// To be called when the document was made new, after what it begins with was put in.
  void contextIsNew();
  /// Whether the package lies there, and is there.
  [[nodiscard]] bool isAt(const QUrl& url) const;
  /// Without arguments: by nothing.
  void replaceContents(std::unique_ptr<store::XmlStore> store = nullptr,
                       std::unique_ptr<store::ObjectContext> context = nullptr);

 private:
  struct StoreState {
    QDateTime modified;
    qint64 size = -1;
    friend bool operator==(const StoreState&, const StoreState&) = default;
  };
  [[nodiscard]] static StoreState stateOf(const QString& storePath);
  /// With what was put into the present package by hand or by embedding.
  [[nodiscard]] foundation::Result<void> writePackage(const QString& folder,
                                                      const QByteArray& storeBytes) const;

  store::EntityFactories m_factories;
  int m_untitledNumber = 1;
  std::unique_ptr<store::XmlStore> m_store;
  std::unique_ptr<store::ObjectContext> m_context;
  QUrl m_fileURL;
  FolderTracker m_folder;   ///< of the package
  StoreState m_storeState;  ///< when it was last read or written here
  QStringList m_warnings;
  StoreObserver* m_storeObserver = nullptr;
  store::ObserverList<PersistentPackageDocument> m_replacementObservers;
};

}  // namespace document
