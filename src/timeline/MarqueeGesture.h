#pragma once

#include "timeline/RowGesture.h"

namespace timeline {

/// Selects the key frames that a rectangle touches; with Ctrl in addition to those that were
/// selected.
class MarqueeGesture : public RowGesture {
 public:
  using RowGesture::RowGesture;

 protected:
  void drag(const TimelinePointer& pointer) override;

 private:
  void select(const QRectF& rect, bool adds);
};

}  // namespace timeline
