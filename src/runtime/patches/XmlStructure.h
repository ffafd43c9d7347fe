#pragma once

#include <QIODevice>

#include "foundation/Result.h"
#include "runtime/Structure.h"

namespace runtime::patches {

/// Reads an XML document as nested structures: the result holds what the root element holds. An
/// element of text alone is that text; any other is a structure of its attributes and child
/// elements under their names, text among them under "text". Several children of one name are a
/// keyless structure, and an element that holds nothing else is that structure itself. Depth and
/// number of elements are limited; entities of the document's own are not expanded.
[[nodiscard]] foundation::Result<Structure> structureFromXml(QIODevice& device,
                                                             const QString& fileName);

}  // namespace runtime::patches
