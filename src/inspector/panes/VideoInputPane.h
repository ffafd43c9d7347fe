#pragma once

#include "inspector/panes/InspectorPane.h"

namespace inspector {

class ImageRow;

/// The pictures that stand in for live video while editing. Hidden where there is no video input.
class VideoInputPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit VideoInputPane(InspectorContext& context);
  void takeSelection() override;

 private:
  QList<ImageRow*> m_images;
};

}  // namespace inspector
