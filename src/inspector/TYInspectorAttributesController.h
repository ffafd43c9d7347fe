#pragma once

#include <optional>

#include "inspector/ShownAttribute.h"
#include "inspector/panes/InspectorPane.h"

class QLabel;

namespace inspector {

class NumberRow;

/// One editing row for each attribute of the selected components, by type. Rows are kept and used
/// again, so that going through components costs no new widgets.
class TYInspectorAttributesController : public InspectorPane {
  Q_OBJECT

 public:
  explicit TYInspectorAttributesController(InspectorContext& context);
  void takeSelection() override;

 private:
  /// What has to be equal for a row to serve another attribute.
  struct Kind {
    model::AttributeType type;
    QStringList choices;
    std::optional<double> minimum = {};
    std::optional<double> maximum = {};
    [[nodiscard]] bool hasRange() const { return minimum && maximum && *minimum < *maximum; }
    friend bool operator==(const Kind&, const Kind&) = default;
  };
  struct Made {
    Kind kind;
    InspectorRow* row;
  };

  [[nodiscard]] static Kind kindOf(const ShownAttribute& shown);
  [[nodiscard]] NumberRow* makeNumberRow(const Kind& kind, const QString& label);
  [[nodiscard]] InspectorRow* makeRow(const Kind& kind, const QString& label);
  [[nodiscard]] InspectorRow* takeRow(std::vector<Made>& spare, const Kind& kind,
                                      const QString& label);
  void layOut(const QList<InspectorRow*>& rows);

  std::vector<Made> m_made;  ///< those in use, in their order, then spare ones
  QLabel* m_none;
};

}  // namespace inspector
