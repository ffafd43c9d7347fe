#pragma once

#include "foundation/Finding.h"
#include "store/ObjectContext.h"

namespace model {

class Composition;

/// A finding with the objects that it is about, by their numbers; 0 for none.
struct CompositionFinding : foundation::Finding {
  store::ObjectId component = 0;
  store::ObjectId attribute = 0;
};

/// What in a graphic will not come out as its designer may expect, although it is allowed. Objects
/// are a component's title, "/" and an attribute's label, or "Composition". Codes:
///
///   component-not-loadable    its composition cannot be opened
///   unknown-class             its composition uses patches that this runtime does not have
///   only-first-node-exported  its composition has several nodes at the top; an export takes one
///   field-lost-to-animation   was a field of the template until it was animated
///   animated-field            is marked as a field, but animated inputs are not published
///   empty-field               is marked as a field, but images are published only with a picture
///   color-alpha-dropped       exported colours are opaque
///   margin-moves-export       on air it is drawn off by its margins
///   key-frame-outside-times   a key frame lies outside of the component's times
///   ends-after-composition    the component ends after the composition
///   missing-font              the font is not installed
///   missing-file              the file does not exist
///   same-file-name            two different files of one name: embedded, one replaces the other
///   key-gets-counter          two published keys would have one name
///   stop-frame-outside        a stop frame lies after the composition's end
///   too-many-stop-frames      with more than 255 an export has none
[[nodiscard]] QList<CompositionFinding> compositionFindings(const Composition& composition);

}  // namespace model
