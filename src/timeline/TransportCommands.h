#pragma once

#include <QCoreApplication>

#include "timeline/TYTimelineControlButtons.h"

namespace model {
class Attribute;
class Composition;
class StopFrame;
}  // namespace model

namespace timeline {

/// What the transport, the buttons for stop frames and those for key frames do to a composition.
/// Times are seconds.
class TransportCommands {
  Q_DECLARE_TR_FUNCTIONS(TransportCommands)

 public:
  explicit TransportCommands(model::Composition& composition) : m_composition(composition) {}

  enum Segment { Beginning, PreviousFrame, Play, NextFrame, End };
  /// Other segments do nothing.
  void controlAction(int segment);
  void togglePlay();
  /// Playing goes on from there. With the attributes updated, fields that show animated values
  /// follow at once.
  enum class Updated { Nothing, Attributes };
  void setTime(double time, Updated attributes);

  [[nodiscard]] ControlFlags stopFrameControlFlagsAtTime(double time) const;
  /// Ascending.
  [[nodiscard]] QList<double> sortedStopFrames() const;
  /// The editor time where there is none.
  [[nodiscard]] double nextStopFrame() const;
  [[nodiscard]] double previousStopFrame() const;
  /// Moves it to where the editor time can be that is nearest to the time. One that stands there
  /// is replaced, as key frames are.
  void moveStopFrame(model::StopFrame& stopFrame, double time);
  void addStopFrame();
  void removeStopFrame();
  void perform(TYTimelineControlButtons::Action action);

  [[nodiscard]] static ControlFlags keyFrameControlFlagsAtTime(double time,
                                                               const model::Attribute& attribute);
  /// Ascending; none while the attribute is not animated.
  [[nodiscard]] static QList<double> sortedKeyFramesForAttribute(const model::Attribute& attribute);
  /// The editor time where there is none.
  [[nodiscard]] double nextKeyFrameForAttribute(const model::Attribute& attribute) const;
  [[nodiscard]] double previousKeyFrameForAttribute(const model::Attribute& attribute) const;
  /// At the editor time: adds one with the current value, or deletes the one that is there.
  void toggleKeyFrameOnAttribute(model::Attribute& attribute);
  void addKeyFrameToAttribute(model::Attribute& attribute);
  void removeKeyFrameFromAttribute(model::Attribute& attribute);
  void performOnAttribute(TYTimelineControlButtons::Action action, model::Attribute& attribute);

 private:
  model::Composition& m_composition;
};

}  // namespace timeline
