#pragma once

#include <optional>

#include "runtime/draw/DrawList.h"

namespace runtime {

/// An image that is a drawn list: the result of a render-in-image patch. Pixels are drawn when
/// first asked for.
class DrawnImage : public ImageSource {
 public:
  /// Drawn over `before` where given, else over transparent black.
  DrawnImage(DrawList list, const QSize& size, QImage before = {});
  [[nodiscard]] QRect extent() const override { return {QPoint(), m_size}; }
  [[nodiscard]] QImage pixels(const QRect& area) const override;
  [[nodiscard]] const DrawList& list() const { return m_list; }

  /// Drawing the list at the image's place gives what drawing the image over the picture would
  /// (within rounding), and is worth it: only things laid over one another, nothing hidden by
  /// depth, and not much more of it than the image has pixels.
  [[nodiscard]] bool canBeReplayed() const { return m_replayable; }
  /// The list to draw instead of the image, as it shows at the opacity. Nothing where an opacity
  /// below 1 would shine through overlapping items.
  [[nodiscard]] std::optional<DrawList> replay(double opacity) const;

 private:
  DrawList m_list;
  QSize m_size;
  QImage m_before;
  bool m_replayable;
};

}  // namespace runtime
