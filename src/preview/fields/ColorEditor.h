#pragma once

#include "preview/fields/FieldEditor.h"

namespace widgets {
class TYColorWell;
}

namespace preview {

/// A colour; while its panel is open every change is sent, and Esc takes all of them back.
class ColorEditor : public FieldEditor {
  Q_OBJECT

 public:
  explicit ColorEditor(QWidget* parent = nullptr);

  void showValue(const Field& field) override;
  [[nodiscard]] QWidget& control() const override;

 private:
  widgets::TYColorWell* m_well;
};

}  // namespace preview
