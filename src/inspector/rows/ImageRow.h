#pragma once

#include "inspector/rows/InspectorRow.h"

namespace widgets {
class TYImageWell;
}

namespace inspector {

/// A picture: dropped, chosen from a file by clicking, taken away with Delete.
class ImageRow : public InspectorRow {
  Q_OBJECT

 public:
  ImageRow(InspectorContext& context, const QString& label);

  /// What cannot be read leaves the picture that is there and is told below it.
  void takeFile(const QString& path);

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;

 private:
  void take(const QImage& image);
  void choose();

  widgets::TYImageWell* m_well;
  qint64 m_shown = 0;  ///< key of the image in the well
};

}  // namespace inspector
