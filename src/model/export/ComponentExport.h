#pragma once

#include "model/export/PlayoutExport.h"
#include "model/export/TimeLineExport.h"

namespace model {

/// Adds one component to the export: its own composition's node, the renderer node that places it,
/// what animates and times it, and its published keys.
class ComponentExport {
 public:
  /// The row counts from 1, the lowest component first.
  ComponentExport(ExportContext& context, const QuartzComponent& component, int row);
  [[nodiscard]] foundation::Result<void> add();

 private:
  [[nodiscard]] foundation::Result<void> addNodes();
  void addAttribute(const Attribute& attribute);
  void addAnimated(const Attribute& attribute, const QString& port,
                   const foundation::PropertyValue& curve);
  void addAnimatedColor(const Attribute& attribute, const QString& port);
  void publishInput(const QString& port, const foundation::PropertyValue& value);
  void addGeometry(const Attribute& attribute);
  void connectRenderer();
  [[nodiscard]] foundation::Result<void> addTimer();
  [[nodiscard]] foundation::Result<void> addVisibility();
  [[nodiscard]] foundation::Result<quartz::QuartzPatch*> addCopyOf(const QString& name,
                                                                   const QString& key,
                                                                   const QPointF& position);
  void setTimes(quartz::QuartzPatch& patch) const;
  [[nodiscard]] double rowPosition() const { return 250.0 * m_row + 500; }

  ExportContext& m_context;
  const QuartzComponent& m_component;
  int m_row;
  std::unique_ptr<quartz::QuartzComposition> m_componentFile;
  quartz::QuartzPatch* m_node = nullptr;      ///< draws the component
  quartz::QuartzPatch* m_renderer = nullptr;  ///< places it
  TimeLineExport m_timeLine;
};

}  // namespace model
