#pragma once

#include <QAccessible>
#include <QPointer>

#include "timeline/KeyFrameSelection.h"
#include "timeline/TimelineRows.h"

namespace model {
class StopFrame;
}

namespace timeline {

class TYTimelineView;

/// Something on the timeline, by the numbers of its objects, since these come and go.
struct TimelineItem {
  enum class Kind { StopFrame, Row, KeyFrame };
  Kind kind = Kind::Row;
  store::ObjectId object = 0;  ///< stop frame, component or attribute
  double time = 0;             ///< of a key frame
  friend bool operator==(const TimelineItem&, const TimelineItem&) = default;
  friend size_t qHash(const TimelineItem& item, size_t seed = 0) {
    return qHashMulti(seed, static_cast<int>(item.kind), item.object, item.time);
  }
};

/// One of these as screen readers see it. It can be focused, pressed (edits it, or opens and closes
/// a row) and moved by a frame.
class TimelineItemAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  TimelineItemAccessible(TYTimelineView* view, const TimelineItem& item)
      : m_view(view), m_item(item) {}

  [[nodiscard]] const TimelineItem& item() const { return m_item; }
  [[nodiscard]] bool isValid() const override;
  [[nodiscard]] QObject* object() const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* parent() const override;
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
  [[nodiscard]] int childCount() const override;
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QAccessible::Role role() const override;
  [[nodiscard]] QAccessible::State state() const override;
  [[nodiscard]] QString text(QAccessible::Text text) const override;
  /// Renames a component, gives a stop frame its trigger text.
  void setText(QAccessible::Text kind, const QString& text) override;
  [[nodiscard]] QRect rect() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  [[nodiscard]] QStringList actionNames() const override;
  void doAction(const QString& name) override;
  [[nodiscard]] QStringList keyBindingsForAction(const QString& name) const override;

 private:
  [[nodiscard]] store::ManagedObject* managed() const;
  [[nodiscard]] TimelineRow row() const;
  [[nodiscard]] model::StopFrame* stopFrame() const;
  [[nodiscard]] KeyFrameReference keyFrame() const;
  void focus();

  QPointer<TYTimelineView> m_view;
  TimelineItem m_item;
};

}  // namespace timeline
