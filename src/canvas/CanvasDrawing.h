#pragma once

#include <QImage>
#include <QRegion>
#include <QSemaphore>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "canvas/PictureTarget.h"
#include "runtime/draw/DrawList.h"
#include "runtime/draw/PixelRows.h"
#include "runtime/draw/Viewport.h"

namespace canvas {

/// One drawing of a region of the components' image, in QThreadPool::globalInstance(), where
/// painting is fastest. It owns all that it needs, so that nobody has to wait for it.
class CanvasDrawing : public std::enable_shared_from_this<CanvasDrawing> {
 public:
  struct Part {
    std::shared_ptr<const runtime::DrawList> list;
    QRect touched;  ///< device pixels that the list reaches
  };

  /// Draws the parts, lowest first, over what the image holds.
  CanvasDrawing(QImage image, const PictureTarget& target, std::vector<Part> parts);

  /// `finished` is called on a thread of the pool, unless everything was abandoned.
  void start(const QRegion& region, std::function<void()> finished);
  /// True when it is through within the time, in milliseconds.
  [[nodiscard]] bool wait(int milliseconds);
  /// What is not drawn yet need not be.
  void abandon() { m_abandoned = true; }
  /// Only when it is through.
  [[nodiscard]] QImage& image() { return m_image; }
  [[nodiscard]] const QRegion& region() const { return m_region; }
  /// The part on which most time went into so far, and that time in seconds; −1 for none.
  [[nodiscard]] std::pair<int, double> slowestPart() const;

  [[nodiscard]] static runtime::Viewport viewportOf(const PictureTarget& target, const QRect& clip);

 private:
  /// What one task draws, from the first part to the last.
  struct Band {
    QRect area;
    std::atomic<int> part = -1;
    std::atomic<qint64> since = 0;  ///< nanoseconds
  };
  void draw(Band& band);
  void leavePart(Band& band);

  QImage m_image;
  PictureTarget m_target;
  std::vector<Part> m_parts;
  std::vector<std::atomic<qint64>> m_spent;  ///< nanoseconds a part
  std::vector<std::unique_ptr<Band>> m_bands;
  std::optional<runtime::PixelRows> m_rows;
  QRegion m_region;
  std::function<void()> m_finished;
  QSemaphore m_done;
  std::atomic<int> m_left = 0;
  std::atomic<bool> m_abandoned = false;
};

}  // namespace canvas
