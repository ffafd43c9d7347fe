#pragma once

#include "inspector/panes/InspectorPane.h"

class QPushButton;

namespace inspector {

class AnchorPicker;
class CheckRow;
class NumberRow;

/// Position, size, rotation and margins of the selected components, in picture pixels and degrees.
/// The position is that of the chosen one of nine points, and a size grows from there.
class TransformPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit TransformPane(InspectorContext& context);
  void takeSelection() override;
  void refresh() override;

 private:
  void fitToContent();
  void bindFrame();

  AnchorPicker* m_anchor;
  NumberRow* m_position;
  NumberRow* m_size;
  CheckRow* m_proportions;
  NumberRow* m_rotation;
  NumberRow* m_margin;
  QPushButton* m_fit;
};

}  // namespace inspector
