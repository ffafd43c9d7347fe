#pragma once

#include "inspector/rows/InspectorRow.h"

class QCheckBox;

namespace inspector {

/// A flag; a dash where the objects differ.
class CheckRow : public InspectorRow {
  Q_OBJECT

 public:
  /// The title stands beside the box.
  CheckRow(InspectorContext& context, const QString& label, const QString& title = {});

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;

 private:
  QCheckBox* m_box;
};

}  // namespace inspector
