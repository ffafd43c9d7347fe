#pragma once

#include <QCoreApplication>
#include <functional>

namespace model {
class Attribute;
class Composition;
}  // namespace model

namespace document {

/// Commands about the editor time of a composition and what stands at it. Each that changes
/// something is one undo step with a name.
class TimeCommands {
  Q_DECLARE_TR_FUNCTIONS(TimeCommands)

 public:
  explicit TimeCommands(model::Composition& composition) : m_composition(composition) {}

  /// While playing, playback begins there anew.
  void jumpToBeginning();
  /// Stops playback, as stepping does.
  void jumpToEnd();
  /// Starts and stops playback.
  void play();
  void jumpToNextFrame() { jumpByFrames(1); }
  void jumpToPreviousFrame() { jumpByFrames(-1); }
  /// Whole frames, onto frames; negative ones go back.
  void jumpByFrames(int frames);
  /// Of the selected components; nothing happens where there is none.
  void jumpToNextKeyframe();
  /// To the beginning where there is none.
  void jumpToPreviousKeyframe();
  /// Nothing happens where there is none.
  void jumpToNextStopFrame();
  void jumpToPreviousStopFrame();

  void addStopFrame();
  void toggleStopframe();
  /// Takes the time as that of the poster frame; a second time does not take it away.
  void togglePosterframe();

  /// The nearest of these times (ascending) after the given one, else that one.
  [[nodiscard]] static double nextOf(const QList<double>& times, double time);
  [[nodiscard]] static double previousOf(const QList<double>& times, double time);

 private:
  void moveTo(double timepoint);
  void forKeyFrames(const std::function<void(const model::Attribute&)>& visit) const;

  model::Composition& m_composition;
};

}  // namespace document
