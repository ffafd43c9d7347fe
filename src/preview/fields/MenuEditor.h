#pragma once

#include "preview/fields/FieldEditor.h"

class QComboBox;

namespace preview {

/// One of the items that an index has names for.
class MenuEditor : public FieldEditor {
  Q_OBJECT

 public:
  explicit MenuEditor(const runtime::PortAttributes& port, QWidget* parent = nullptr);

  void showValue(const Field& field) override;
  [[nodiscard]] QWidget& control() const override;

 private:
  QComboBox* m_box;
};

}  // namespace preview
