#pragma once

#include <QString>

namespace document {

/// Holds on to a folder, so that it is found again after somebody moved or renamed it. Keeps no
/// disk from being taken away for longer than the object lives.
class FolderTracker {
 public:
  FolderTracker() = default;
  explicit FolderTracker(const QString& path);
  ~FolderTracker();
  FolderTracker(FolderTracker&& other) noexcept;
  FolderTracker& operator=(FolderTracker&& other) noexcept;
  FolderTracker(const FolderTracker&) = delete;
  FolderTracker& operator=(const FolderTracker&) = delete;

  /// Empty when the folder is gone, was thrown into a rubbish bin, or was not there at first.
  [[nodiscard]] QString path() const;

 private:
  int m_descriptor = -1;
};

}  // namespace document
