#pragma once

#include <QRect>
#include <QVariantHash>
#include <functional>
#include <memory>

#include "canvas/BackgroundEvaluation.h"
#include "canvas/PictureTarget.h"

namespace model {
class QuartzComponent;
}

namespace canvas {

/// What one component drew last. It is asked at once as long as it answers quickly; one that does
/// not is asked on a thread, and what it drew before is shown meanwhile, at its place of now.
class ComponentPicture {
 public:
  /// A component that exceeds one of the last three is marked and left alone until it changes, so
  /// that the canvas stays usable. Seconds.
  struct Limits {
    double first = 0.09;      ///< to be waited for at its first frame
    double next = 0.04;       ///< and at those that follow
    double all = 0.06;        ///< for all components of one display together
    int drawing = 60;         ///< to be waited for until all is drawn; milliseconds
    double evaluation = 0.9;  ///< to say what it draws; less than what a single script may take
    double painting = 1.5;    ///< to be drawn
    double coverage = 100;    ///< how often what it draws would fill the canvas
  };
  /// What all components are asked for in one display.
  struct Moment {
    double time = 0;
    QSize size;  ///< of the picture
    runtime::FrameArguments arguments;
    double spent = 0;             ///< seconds that components were waited for so far
    std::function<void()> ready;  ///< called on any thread when a later answer is there
  };

  explicit ComponentPicture(const model::QuartzComponent* component) : m_component(component) {}

  [[nodiscard]] bool isOf(const model::QuartzComponent* other) const {
    return m_component == other;
  }
  void setNeedsDisplay() {
    m_dirty = true;
    m_isGivenUp = false;
  }
  /// What may have changed besides the component itself.
  enum class Reason { Nothing, Refresh, Everything };
  /// Asks the component if it may look different, and takes what it answered. True when it was
  /// asked.
  bool follow(model::QuartzComponent& component, Reason reason, Moment& moment,
              const Limits& limits);

  [[nodiscard]] const std::shared_ptr<const runtime::DrawList>& list() const { return m_list; }
  [[nodiscard]] const QString& problem() const { return m_problem; }
  /// It draws nothing until it changes.
  void giveUp(const QString& problem);

  /// Device pixels that the list reaches.
  [[nodiscard]] const QRect& touched() const { return m_touched; }
  /// Measures that; gives a list up that fills the target too often.
  void measure(const PictureTarget& target, const Limits& limits);

 private:
  [[nodiscard]] bool isToBeAsked(Reason reason) const;
  void ask(model::QuartzComponent& component, Moment& moment, const Limits& limits);
  void askInBackground(model::QuartzComponent& component, const Moment& moment);
  void takeAnswer(const model::QuartzComponent& component, const Limits& limits);
  /// Moves what was drawn before to where the component is now.
  void followPlace(const model::QuartzComponent& component);
  void setList(runtime::DrawList list);

  const model::QuartzComponent* m_component;  ///< for comparing only
  std::shared_ptr<const runtime::DrawList> m_list = std::make_shared<runtime::DrawList>();
  QRect m_touched;
  QString m_problem;
  bool m_dirty = true;
  bool m_isNew = true;
  bool m_isGivenUp = false;

  std::unique_ptr<BackgroundEvaluation> m_background;
  BackgroundEvaluation::Result m_answer;  ///< the last one that came to its end
  int m_quickAnswers = 0;                 ///< in a row
  int m_returns = 0;                      ///< from the background
  runtime::Interruption::Clock::time_point m_restsUntil;
};

}  // namespace canvas
