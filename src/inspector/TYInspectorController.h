#pragma once

#include <QWidget>

class QStackedWidget;

namespace model {
class Composition;
}

namespace widgets {
class TYSegmentedControl;
}

namespace inspector {

class InspectorContext;
class InspectorPage;

/// The inspector: what is selected, what of it may be changed on air, and the document, as three
/// places behind tabs.
class TYInspectorController : public QWidget {
  Q_OBJECT

 public:
  enum class Place { Properties, Permissions, Document };

  explicit TYInspectorController(QWidget* parent = nullptr);
  ~TYInspectorController() override;

  /// None shows nothing. Must be told before the composition is gone.
  void setComposition(model::Composition* composition);
  [[nodiscard]] Place place() const;
  void showPlace(Place place);
  /// Brings everything up to date now instead of when the event is through.
  void updateNow();
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 private:
  [[nodiscard]] InspectorPage* makeProperties();
  [[nodiscard]] InspectorPage* makePermissions();
  [[nodiscard]] InspectorPage* makeDocument();
  void updateEmpty();

  InspectorContext* m_context;
  widgets::TYSegmentedControl* m_tabs;
  QStackedWidget* m_places;
  QStackedWidget* m_properties;
  QStackedWidget* m_permissions;
};

}  // namespace inspector
