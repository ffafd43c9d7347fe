#pragma once

#include <QPointF>
#include <Qt>

namespace canvas {

/// Where the pointer is and what is held with it.
struct Pointer {
  QPointF picture;  ///< pixels of the picture, y up
  QPointF view;     ///< logical pixels of the view
  QPointF screen;   ///< logical pixels that do not move when the view scrolls
  Qt::KeyboardModifiers modifiers = Qt::NoModifier;
  /// Whether the pointer is over the part of the view that is seen.
  bool isOverView = true;

  [[nodiscard]] bool holds(Qt::KeyboardModifier modifier) const {
    return modifiers.testFlag(modifier);
  }
};

/// Something done with the pointer from press to release. Changes of the document are one undo step
/// that ends with finish(); cancel(), or the end of a gesture that was not finished, leaves nothing
/// behind.
class Gesture {
 public:
  virtual ~Gesture() = default;
  Gesture() = default;
  Gesture(const Gesture&) = delete;
  Gesture& operator=(const Gesture&) = delete;

  virtual void update(const Pointer& pointer) = 0;
  virtual void finish(const Pointer& pointer) = 0;
  virtual void cancel() = 0;
};

}  // namespace canvas
