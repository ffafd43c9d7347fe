#pragma once

#include <QString>
#include <functional>

#include "foundation/Result.h"

namespace document {

/// Makes package folders so that at every moment there is either what was there before or the whole
/// new package.
class PackageFolder {
 public:
  /// Fills a folder whose path it is given.
  using Filler = std::function<foundation::Result<void>(const QString& folder)>;

  /// Puts a folder that the filler fills at the path. A package that lies there is exchanged for
  /// it, anything else but an empty folder is left alone and an error. What the filler writes must
  /// be on the disk when it returns.
  [[nodiscard]] static foundation::Result<void> replace(const QString& path, const Filler& fill);
  /// Copies a file or a folder with all in it.
  [[nodiscard]] static foundation::Result<void> copyEntry(const QString& source,
                                                          const QString& destination);
};

}  // namespace document
