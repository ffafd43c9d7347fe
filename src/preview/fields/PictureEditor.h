#pragma once

#include "preview/fields/FieldEditor.h"

class QPushButton;

namespace widgets {
class TYImageWell;
}

namespace preview {

/// A picture file: chosen, dropped, or none with Delete.
class PictureEditor : public FieldEditor {
  Q_OBJECT

 public:
  explicit PictureEditor(QWidget* parent = nullptr);

  void showValue(const Field& field) override;
  [[nodiscard]] QWidget& control() const override;

 private:
  void choose();

  widgets::TYImageWell* m_well;
  QPushButton* m_choose;
  QString m_path;
  std::optional<runtime::Image> m_shown;
};

}  // namespace preview
