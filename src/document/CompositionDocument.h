#pragma once

#include "document/PackageValues.h"
#include "document/PersistentPackageDocument.h"
#include "model/Composition.h"
#include "model/maintenance/Maintenance.h"

namespace document {

/// A graphic as a document. Saving also writes, beside the objects, what other systems read: the
/// playout composition, an information file and a thumbnail; none of these is ever read back.
class CompositionDocument : public PersistentPackageDocument {
 public:
  explicit CompositionDocument(
      model::StandardComponents standardComponents = model::StandardComponents::located());
  ~CompositionDocument() override;

  /// None when the package held none, or several, and before a document was read or made empty.
  [[nodiscard]] model::Composition* composition() const { return m_composition; }
  [[nodiscard]] const model::StandardComponents& standardComponents() const {
    return m_standardComponents;
  }
  /// Of the playout composition in the package; empty before the document was saved.
  [[nodiscard]] QUrl quartzCompositionURL() const;

  /// Makes this a new document of the format, as the user's defaults have it. Nothing to undo.
  void emptyDocumentWithResolution(const model::VideoResolution& resolution);
  [[nodiscard]] foundation::Result<void> readFromURL(const QUrl& url) override;
  /// Fails when the objects could not be written, and, the objects being written then, when the
  /// thumbnail's folder cannot be made. What else cannot be written is left out: see
  /// saveWarnings().
  [[nodiscard]] foundation::Result<void> writeSafelyToURL(const QUrl& url,
                                                          SaveOperation operation) override;
  [[nodiscard]] foundation::Result<RecoveredDocument> recover(const RecoveryStore& recoveryStore,
                                                              const RecoveryEntry& entry) override;
  /// Sets of values for the published inputs of the graphic, in the keys of its own playout
  /// composition (Composition::standardKey). Relative names of pictures in them start at the
  /// package's folder.
  [[nodiscard]] const playout::ValueSets& valueSets() const { return m_values.sets(); }
  /// No edit of the graphic: neither undone nor unsaved. In a saved document they are written at
  /// once; sets that another program has written meanwhile are brought together with these, so
  /// valueSets() may give more afterwards. What cannot be written, and why, is told; it is tried
  /// again by the next change and the next save. A document without a place keeps them for its
  /// first save. Files that sets name under `pictureKeys` are copied into the package and go by
  /// their names there then; of files that cannot be copied the sets keep the paths, and it is
  /// told.
  [[nodiscard]] foundation::Result<void> setValueSets(const playout::ValueSets& sets,
                                                      const QStringList& pictureKeys = {});
  /// Called after they have changed, by reading the package as well.
  [[nodiscard]] store::Subscription observeValueSets(
      std::function<void(const CompositionDocument&)> observer) {
    return m_valueObservers.add(std::move(observer));
  }
  [[nodiscard]] QByteArray heldBesideStore() const override;
  /// Makes the thumbnail in the package anew, from the graphic as it is now.
  [[nodiscard]] foundation::Result<void> renewThumbnail();

  /// What the last save left out, and why.
  [[nodiscard]] const QStringList& saveWarnings() const { return m_saveWarnings; }
  /// Stops playback, as is due before the user is asked about unsaved changes.
  void prepareToClose();

  /// Files to be copied into the package by the next save, whether they can be copied or not.
  void setResourcesToSave(const QList<model::EmbeddedResource>& resources) {
    m_saveResources = resources;
  }
  /// Writes the playout composition with the keys that playout systems expect of a file that was
  /// exported by hand.
  [[nodiscard]] foundation::Result<void> exportQuartzComposition(
      const QString& path,
      model::Composition::Background background = model::Composition::Background::Exclude) const;

 protected:
  void beforeLoad() override;
  void afterLoad() override;
  void simpleSetFileURL(const QUrl& url) override;
  void contentsWereReplaced() override { m_composition = nullptr; }
  [[nodiscard]] foundation::Result<void> writeHeld(const PackageLayout& package) const override;

 private:
  void takeComposition();
  void readValues();
  /// Copies the pictures of the sets that wait into the package that they are written into.
  [[nodiscard]] foundation::Result<void> holdPictures(const PackageLayout& package);
  /// Those that wait: into the package that was saved, or noted as written into a new one.
  void writeValues(const PackageLayout& package, SaveOperation operation);
  [[nodiscard]] foundation::Result<void> writeThumbnail(const PackageLayout& package);
  void writeInformation(const PackageLayout& package);
  void copyResources(const PackageLayout& package);
  void writeExports(const PackageLayout& package);
  void leftOut(const QString& file, const foundation::Error& error);

  model::StandardComponents m_standardComponents;
  model::Composition* m_composition = nullptr;
  QList<model::EmbeddedResource> m_saveResources;
  QStringList m_saveWarnings;
  PackageValues m_values;
  QStringList m_pictureKeys;  ///< of the sets
  store::ObserverList<CompositionDocument> m_valueObservers;
};

}  // namespace document
