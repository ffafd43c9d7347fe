#pragma once

#include <QPointer>

#include "timeline/KeyFrameSelection.h"

class QLineEdit;
class QWidget;

namespace model {
class QuartzComponent;
class StopFrame;
}  // namespace model

namespace timeline {

class KeyFramePanel;
class TYTimelineView;

/// The fields that open on the timeline: titles, trigger texts, key frames. At most one is open;
/// Return and a click elsewhere keep what was typed as one undo step, Escape drops it.
class TimelineEditors {
 public:
  explicit TimelineEditors(TYTimelineView& view) : m_view(view) {}
  ~TimelineEditors() { close(); }

  void rename(model::QuartzComponent& component);
  void editTriggerText(model::StopFrame& stopFrame);
  void editKeyFrame(const KeyFrameReference& keyFrame);
  /// Drops what is being typed.
  void close();
  /// Keeps what is being typed, because its place goes away.
  void finish();
  /// Fields go along with the rows and the ruler. Logical pixels.
  void scrolled(const QPoint& moved);
  /// The open field or panel, if any.
  [[nodiscard]] QWidget* open() const;

 private:
  TYTimelineView& m_view;
  QPointer<QWidget> m_open;
};

}  // namespace timeline
