#include "foundation/archive/ArchiveGraph.h"

namespace foundation {

bool ArchiveGraph::isKindOf(const Object& object, const char* className) const {
  // The count guards against parents that form a ring.
  qsizetype steps = classes.size();
  for (qsizetype i = object.classIndex; i >= 0 && i < classes.size() && steps-- > 0;
       i = classes[i].parent)
    if (classes[i].name == className) return true;
  return false;
}

}  // namespace foundation
