#pragma once

#include "foundation/Finding.h"
#include "quartz/QuartzComposition.h"

namespace runtime {

/// Walks the graph of a composition file and lists what in it cannot work as meant: connections and
/// published ports that lead nowhere, values that their ports do not take, loops, patches that this
/// runtime does not have, files that it needs besides itself. Codes:
///
///   connection-from-missing-node, connection-to-missing-node, connection-from-missing-port,
///   connection-to-missing-port, connection-type-mismatch, input-connected-twice,
///   duplicate-node-key, published-key-twice, published-port-missing-node,
///   published-port-missing-port, port-value-type, unknown-class, missing-virtual-patch,
///   virtual-patch-contains-itself, absolute-path, missing-file, composition-loads-itself,
///   feedback-loop, not-playable
///
/// Objects are paths of node keys that begin with "Root", or with the name of an embedded virtual
/// patch ("/name"), whose content is looked at once however often it is used.
class CompositionChecker {
 public:
  /// `fileName` is where relative locations start; empty: nobody can say whether they exist.
  [[nodiscard]] static foundation::Findings check(const quartz::QuartzComposition& composition,
                                                  const QString& fileName = {});
};

}  // namespace runtime
