#pragma once

#include "inspector/rows/InspectorRow.h"

namespace widgets {
class TYTimecodeField;
}

namespace inspector {

class FieldBinder;

/// One time, or a pair of them, as time codes of the composition's format. Bound values are
/// seconds; frames and seconds can be typed too ("12f", "1.5s").
class TimeRow : public InspectorRow {
  Q_OBJECT

 public:
  TimeRow(InspectorContext& context, const QString& label, const QStringList& names);

  using InspectorRow::bind;
  void bind(const QList<Binding>& bindings) override;

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;

 private:
  QStringList m_names;
  QList<widgets::TYTimecodeField*> m_fields;
  QList<FieldBinder*> m_binders;
};

}  // namespace inspector
