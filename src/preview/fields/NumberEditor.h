#pragma once

#include "preview/fields/FieldEditor.h"

namespace preview {

/// A number or an index without names. What is typed outside of the limits is refused, scrubbing
/// stops at them.
class NumberEditor : public FieldEditor {
  Q_OBJECT

 public:
  explicit NumberEditor(const runtime::PortAttributes& port, QWidget* parent = nullptr);

  void showValue(const Field& field) override;
  [[nodiscard]] QWidget& control() const override;
  void commitEntry() override;
  void dropEntry() override;
  [[nodiscard]] bool hasEntry() const override;

 private:
  class LimitedField;
  LimitedField* m_field;
};

}  // namespace preview
