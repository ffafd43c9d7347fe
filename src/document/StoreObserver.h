#pragma once

#include "document/SaveOperation.h"
#include "foundation/Result.h"

namespace document {

/// Told by a document of what happens to its store. Paths are those of packages.
class StoreObserver {
 public:
  virtual ~StoreObserver() = default;
  /// The document's context is about to go, with its unsaved changes.
  virtual void contextWillBeReplaced() = 0;
  /// Another context holds the document's objects now. The bytes are those of the store that they
  /// were read from; none for a new document.
  virtual void contextWasReplaced(const QByteArray& storeBytes) = 0;
  /// An error keeps the document from being written there.
  [[nodiscard]] virtual foundation::Result<void> mayBeSavedTo(const QString& path,
                                                              SaveOperation operation) = 0;
  /// These bytes are about to become the document's store, there.
  virtual void willBeSaved(const QByteArray& storeBytes, const QString& path) = 0;
  virtual void wasSaved() = 0;
  /// What the next save writes beside the store is something else now.
  virtual void heldBesideChanged() = 0;
  /// It lies elsewhere now, with its store.
  virtual void wasMoved() = 0;
};

}  // namespace document
