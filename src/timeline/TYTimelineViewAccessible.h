#pragma once

#include <QAccessibleWidget>
#include <QHash>

namespace timeline {

class TYTimelineView;
struct TimelineItem;

/// The timeline as screen readers see it: a tree whose children are the stop frames, by time, and
/// then the rows; a row's children are its key frames.
class TYTimelineViewAccessible : public QAccessibleWidget {
 public:
  /// Makes Qt ask for these; may be called again.
  static void install();

  explicit TYTimelineViewAccessible(TYTimelineView* view);
  ~TYTimelineViewAccessible() override;

  [[nodiscard]] int childCount() const override;
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
  [[nodiscard]] QAccessibleInterface* focusChild() const override;
  [[nodiscard]] QString text(QAccessible::Text text) const override;

  /// Made when it is first asked for, kept while the view lives.
  [[nodiscard]] QAccessibleInterface* interfaceOf(const TimelineItem& item) const;

 private:
  [[nodiscard]] TYTimelineView* view() const;
  [[nodiscard]] int stopFrameCount() const;
  void forgetGone() const;

  mutable QHash<TimelineItem, QAccessible::Id> m_children;
};

}  // namespace timeline
