#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "store/ObjectContext.h"

class QCheckBox;

namespace model {
class Composition;
class QuartzComponent;
}  // namespace model

namespace widgets {
class NumberExpression;
class TYNumberField;
}  // namespace widgets

namespace inspector {

/// Position, size, rotation, opacity and visibility of the selected components, in picture pixels,
/// degrees and percent. Values that differ show as mixed; editing sets all. One gesture is one undo
/// step.
class GeometryPane : public QWidget {
  Q_OBJECT

 public:
  explicit GeometryPane(QWidget* parent = nullptr);
  ~GeometryPane() override;

  /// None shows nothing. Must be told before the composition is gone.
  void setComposition(model::Composition* composition);

 private:
  struct Row;
  void addRow(const QString& label, std::initializer_list<const Row*> fields);
  widgets::TYNumberField* makeField(const Row& row);
  void addVisibility();
  void followSelection();
  void updateValues();
  void updateField(const Row& row, widgets::TYNumberField& field);
  void begin(const Row& row);
  void edit(const Row& row, double value);
  void editRelatively(const Row& row, const widgets::NumberExpression& change);
  void end(bool keep);

  model::Composition* m_composition = nullptr;
  QList<model::QuartzComponent*> m_selected;
  std::vector<std::pair<const Row*, widgets::TYNumberField*>> m_fields;
  QCheckBox* m_visible;
  QCheckBox* m_proportions;
  std::unique_ptr<store::UndoStep> m_step;
  std::vector<double> m_before;  ///< of the selected components, when a gesture began
  store::Subscription m_selection;
  std::vector<store::Subscription> m_values;
};

}  // namespace inspector
