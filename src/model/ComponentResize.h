#pragma once

#include <QRectF>

namespace model {

class QuartzComponent;

/// Resizing by one grip, from the frame at the start of the drag to where the pointer is. In
/// picture coordinates.
class ComponentResize {
 public:
  enum class Proportional { No, Yes };
  enum class FromCenter { No, Yes };

  ComponentResize(int handle, const QRectF& startFrame, const QPointF& pointer,
                  Proportional proportional, FromCenter fromCenter);
  /// A side of less than 2 pixels is not made: then that axis stays (and, for the width, the other
  /// too).
  void applyTo(QuartzComponent& component) const;

 private:
  void keepProportions();
  [[nodiscard]] bool applyWidth(QuartzComponent& component) const;
  [[nodiscard]] bool applyHeight(QuartzComponent& component) const;

  int m_handle;
  QRectF m_start;
  QPointF m_pointer;
  double m_growthX = 0;
  double m_growthY = 0;
  bool m_fromCenter;
};

}  // namespace model
