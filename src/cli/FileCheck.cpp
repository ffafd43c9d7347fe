#include "cli/FileCheck.h"

#include "runtime/CompositionChecker.h"

namespace cli {

namespace {

foundation::Result<foundation::Findings> checkComposition(const QString& path) {
  const auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition) return tl::unexpected(composition.error());
  return runtime::CompositionChecker::check(**composition, path);
}

}  // namespace

foundation::Result<foundation::Findings> checkFile(const QString& path) {
  return checkComposition(path);
}

}  // namespace cli
