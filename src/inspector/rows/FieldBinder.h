#pragma once

#include <QObject>

#include "inspector/Binding.h"

namespace widgets {
class NumberExpression;
class TYValueField;
}  // namespace widgets

namespace inspector {

class InspectorContext;

/// Joins a field to a bound number: one gesture in it is one step, and where values differ "+=10"
/// changes each by itself.
class FieldBinder : public QObject {
  Q_OBJECT

 public:
  /// The field owns it. `kind` gives the values as the objects take them.
  FieldBinder(InspectorContext& context, widgets::TYValueField& field, double minimum,
              double maximum);

  void bind(const Binding& binding);
  void refresh();
  [[nodiscard]] const Binding& binding() const { return m_binding; }
  /// As the bound objects take a number: indexes are whole.
  [[nodiscard]] static model::AttributeValue likeValue(const model::AttributeValue& model,
                                                       double number);

 private:
  void begin();
  void edit(double value);
  void editRelatively(const widgets::NumberExpression& change);

  InspectorContext& m_context;
  widgets::TYValueField& m_field;
  double m_minimum;
  double m_maximum;
  Binding m_binding;
  std::vector<double> m_before;
};

}  // namespace inspector
