#pragma once

#include "foundation/Finding.h"
#include "runtime/CompiledComposition.h"
#include "runtime/check/PatchOutline.h"

/// The questions that CompositionChecker asks. Each looks at one patch and its direct nodes and
/// appends what it finds.
namespace runtime::check {

/// Connections between the nodes of a macro, and their keys.
void checkWiring(const PatchOutline& macro, foundation::Findings& findings);
/// What a macro publishes.
void checkPublishedPorts(const PatchOutline& macro, foundation::Findings& findings);
/// The values that the nodes' inputs hold where nothing is connected, against the ports' types.
void checkPortValues(const PatchOutline& macro, foundation::Findings& findings);
/// The values of published root inputs that a composition keeps apart from its root patch.
void checkInputParameters(const PatchOutline& root,
                          const foundation::PropertyDictionary& parameters,
                          foundation::Findings& findings);
/// Names of image, movie and composition files; relative ones start beside `fileName`, the
/// composition's own file; empty: nobody can say whether they exist.
void checkLocations(const PatchOutline& macro, const foundation::PropertyDictionary& parameters,
                    const QString& fileName, foundation::Findings& findings);
/// Loops of connections that nothing from outside comes into.
void checkLoops(const CompiledComposition& composition, foundation::Findings& findings);

}  // namespace runtime::check
