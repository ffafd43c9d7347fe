#pragma once

#include "document/PackageLayout.h"
#include "playout/ValueSets.h"

namespace document {

/// The pictures that a document's sets of values name. They belong into the package, so that a copy
/// of it on another machine has them.
class PackagePictures {
 public:
  struct Kept {
    playout::ValueSets sets;
    foundation::Result<void> copied = {};  ///< the first failure; its set is as it was
  };
  /// The sets with the pictures of the keys relative to the package's folder, whose files were
  /// copied into it unless they lay there. A file that would get the name of another one gets a
  /// number from 2 on; one with the same bytes is taken as it is. Names of files that are not there
  /// stay as they are.
  [[nodiscard]] static Kept kept(const playout::ValueSets& sets, const QStringList& keys,
                                 const PackageLayout& package);
};

}  // namespace document
