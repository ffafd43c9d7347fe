#pragma once

#include "document/PackageLayout.h"
#include "playout/ValueSets.h"

namespace document {

/// The sets of values of a document and the file in its package that they are kept in. Other
/// programs may write that file between two writes of this one: what they did is brought together
/// with what happened here.
class PackageValues {
 public:
  static constexpr qint64 largestFile = qint64{64} << 20;

  [[nodiscard]] const playout::ValueSets& sets() const { return m_sets; }
  /// Whether they wait to be written.
  [[nodiscard]] bool isHeld() const { return m_isHeld; }

  /// As they are in the package; none when it has no such file, or a damaged one, or one that
  /// cannot be read: then it fails, naming the file.
  [[nodiscard]] foundation::Result<void> read(const PackageLayout& package);
  /// To be written. What is as it was before needs no writing.
  void hold(const playout::ValueSets& sets);
  /// Writes what is held and is what the package holds from then on. A damaged file is kept beside
  /// under another name. On failure everything is held still.
  [[nodiscard]] foundation::Result<void> write(const PackageLayout& package);
  /// The same for a package that is being made, changing nothing here; without anything held it
  /// writes nothing.
  [[nodiscard]] foundation::Result<playout::ValueSets> writeCopy(
      const PackageLayout& package) const;

 private:
  /// What the package holds now; as before when that is damaged, or there is no file.
  [[nodiscard]] foundation::Result<playout::ValueSets> present(const PackageLayout& package) const;

  playout::ValueSets m_sets;
  playout::ValueSets m_before;  ///< as last read or written
  bool m_isHeld = false;
};

}  // namespace document
