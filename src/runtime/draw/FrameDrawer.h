#pragma once

#include <QImage>
#include <functional>

#include "runtime/draw/DrawList.h"

namespace runtime {

/// Draws one frame within QThreadPool::globalInstance(), where painting is fastest, and waits for
/// it. Drawing several frames at once, each in a task of that pool, needs no drawer: call
/// RasterBackend there.
class FrameDrawer {
 public:
  /// The picture is cut into so many bands of rows, of about the same work, each a task of its own.
  explicit FrameDrawer(int bands = 1) : m_bands(std::max(bands, 1)) {}

  /// Draws over what the target (premultiplied ARGB32) holds. The same bytes whatever the bands.
  void draw(const DrawList& list, QImage& target) const;

  /// Called for each band's area before it is drawn, in the band's task.
  using Preparation = std::function<void(QImage& target, const QRect& area)>;
  void draw(const DrawList& list, QImage& target, const Preparation& prepare) const;

  /// Rows at which the bands begin, and the height at the end.
  [[nodiscard]] static std::vector<int> bandLimits(const DrawList& list, const QSize& size,
                                                   int bands);

 private:
  int m_bands;
};

}  // namespace runtime
