#pragma once

#include "runtime/draw/FrameDrawer.h"

namespace runtime {

/// The parts of a picture that were drawn on: a stretch of every row.
class TouchedRows {
 public:
  explicit TouchedRows(int height) : m_rows(static_cast<size_t>(std::max(height, 0))) {}
  void add(const QRect& pixels);
  void reset() { std::fill(m_rows.begin(), m_rows.end(), Stretch()); }
  /// The smallest rectangle around all parts.
  [[nodiscard]] QRect bounds() const;
  /// Makes the parts within the area transparent.
  void erase(QImage& image, const QRect& area) const;

 private:
  struct Stretch {
    int left = 0;
    int right = 0;  ///< behind the last
  };
  std::vector<Stretch> m_rows;
};

/// A picture that is drawn again for every frame, from transparent black. Only what the frame
/// before touched is erased: with small graphics on a large picture, erasing all of it would take
/// as long as the drawing.
class FrameCanvas {
 public:
  /// For bands see FrameDrawer; 0 draws in the calling thread, for use in a task of the pool.
  explicit FrameCanvas(const QSize& size, int bands = 1);

  /// Draws the list and returns the picture, valid until the next call. Who keeps a copy of it
  /// makes the next call copy the pixels.
  const QImage& draw(const DrawList& list);
  [[nodiscard]] const QImage& image() const { return m_image; }
  /// The picture for changing in place, within what was touched: only that is erased.
  [[nodiscard]] QImage& pixels() { return m_image; }
  /// The area outside of which the picture is transparent.
  [[nodiscard]] QRect touched() const { return m_touched.bounds(); }

 private:
  QImage m_image;
  TouchedRows m_touched;
  int m_bands;
};

}  // namespace runtime
