#pragma once

#include "preview/fields/FieldEditor.h"

class QCheckBox;

namespace preview {

/// True or false.
class SwitchEditor : public FieldEditor {
  Q_OBJECT

 public:
  explicit SwitchEditor(QWidget* parent = nullptr);

  void showValue(const Field& field) override;
  [[nodiscard]] QWidget& control() const override;

 private:
  QCheckBox* m_box;
};

}  // namespace preview
