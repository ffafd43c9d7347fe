#pragma once

#include "canvas/CanvasGeometry.h"

class QPainter;

namespace model {
class Composition;
}

namespace canvas {

/// Safe-area frames and guides, in lines of one device pixel.
class SafeAreasLayer {
 public:
  explicit SafeAreasLayer(const model::Composition& composition) : m_composition(composition) {}

  void paint(QPainter& painter, const CanvasGeometry& geometry) const;

 private:
  const model::Composition& m_composition;
};

}  // namespace canvas
