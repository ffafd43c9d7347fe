#pragma once

#include <QCoreApplication>

#include "foundation/FileLock.h"

namespace document {

/// Keeps two processes, or two windows, from editing one document: a hidden file beside the package
/// says who has it. It is let go when this object or its process ends.
class DocumentLock {
  Q_DECLARE_TR_FUNCTIONS(DocumentLock)

 public:
  using State = foundation::FileLock::State;
  using Others = foundation::FileLock::Others;
  struct Attempt {
    State state = State::Unavailable;
    std::unique_ptr<DocumentLock> lock;  ///< when held
    foundation::LockHolder holder;       ///< when taken
    QString sentence;                    ///< why it is not held, to be shown; empty when it is
  };
  /// Unavailable stands for a folder that cannot be written, or does not exist: the document can be
  /// looked at, and saved elsewhere.
  [[nodiscard]] static Attempt take(const QString& documentPath, Others others = Others::Respect);
  /// Where the lock of the document lies.
  [[nodiscard]] static QString pathFor(const QString& documentPath);

  /// After the document was saved elsewhere or renamed: takes the lock there, then lets go of the
  /// one before. The attempt holds no lock; when its state is not Held, nothing has changed.
  [[nodiscard]] Attempt moveTo(const QString& documentPath, Others others = Others::Respect);
  /// False after somebody took the lock by force: what is saved now may overwrite theirs.
  [[nodiscard]] bool isStillHeld() const { return m_lock->isStillHeld(); }

 private:
  explicit DocumentLock(std::unique_ptr<foundation::FileLock> lock) : m_lock(std::move(lock)) {}
  [[nodiscard]] static QString sentenceFor(const foundation::LockHolder& holder,
                                           const QString& documentPath);

  std::unique_ptr<foundation::FileLock> m_lock;
};

}  // namespace document
