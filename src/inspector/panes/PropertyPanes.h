#pragma once

#include "inspector/panes/InspectorPane.h"
#include "store/Observation.h"

class QLabel;

namespace model {
class Attribute;
class QuartzComponent;
}  // namespace model

namespace inspector {

class CheckRow;
class NumberRow;
class TextRow;
class TimeRow;

/// The title of the selected components, and the file they were made from.
class TitlePane : public InspectorPane {
  Q_OBJECT

 public:
  explicit TitlePane(InspectorContext& context);
  void takeSelection() override;
  void refresh() override;

 private:
  TextRow* m_title;
  QLabel* m_file;
};

/// When the selected components are shown.
class TimingPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit TimingPane(InspectorContext& context);
  void takeSelection() override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void arrange();

  TimeRow* m_span;
  TimeRow* m_start;
  TimeRow* m_end;
  TimeRow* m_duration;
  std::vector<store::Subscription> m_watched;
};

/// How much of the selected components is seen.
class AppearancePane : public InspectorPane {
  Q_OBJECT

 public:
  explicit AppearancePane(InspectorContext& context);
  void takeSelection() override;

 private:
  NumberRow* m_opacity;
  CheckRow* m_visible;
};

}  // namespace inspector
