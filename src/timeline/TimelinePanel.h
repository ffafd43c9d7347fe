#pragma once

#include <QWidget>
#include <vector>

#include "store/Observation.h"

namespace model {
class Attribute;
class Composition;
}  // namespace model

namespace timeline {

class TYTimelineView;
class TimelineHost;
class TransportBar;

/// The timeline as windows show it: the transport above the view. The arrow keys that the view does
/// not use step through the frames.
class TimelinePanel : public QWidget {
  Q_OBJECT
 public:
  explicit TimelinePanel(QWidget* parent = nullptr);

  /// Shows another composition, or none. It must outlive the panel or be taken away before it ends.
  void setComposition(model::Composition* composition);
  /// The host must outlive the panel.
  void setHost(TimelineHost& host);
  [[nodiscard]] TransportBar& transport() const { return *m_transport; }
  [[nodiscard]] TYTimelineView& view() const { return *m_view; }

  /// Of all attributes that can be animated.
  void selectAllKeyFrames();
  /// At the editor time, in the row that the keyboard is in: adds one or deletes the one there.
  void toggleKeyFrame();
  /// The attribute in whose row the keyboard is; none in the row of a component.
  [[nodiscard]] model::Attribute* pasteTarget() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  model::Composition* m_composition = nullptr;
  TransportBar* m_transport;
  TYTimelineView* m_view;
};

}  // namespace timeline
