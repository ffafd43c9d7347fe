#include "canvas/ComponentPicture.h"

#include "canvas/CanvasDrawing.h"
#include "canvas/ComponentProblem.h"
#include "model/Composition.h"
#include "runtime/draw/ItemGeometry.h"

namespace canvas {

using model::QuartzComponent;
using runtime::DrawList;
using runtime::Interruption;
using Clock = Interruption::Clock;

namespace {

/// A component that answered so often within a quarter of what is waited for is asked directly
/// again, once: first frames often take longer than all others.
constexpr int quickAnswersToReturn = 3;
constexpr double quickShare = 0.25;
constexpr int mostReturns = 1;
/// While nobody changes anything a slow component rests so many times as long as it worked.
constexpr double restShare = 4;

std::chrono::milliseconds milliseconds(double seconds) {
  return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

/// Units of the destination.
void translate(runtime::DrawItem& item, const QVector3D& by) {
  QMatrix4x4 moved;
  moved.translate(by);
  if (auto* quad = std::get_if<runtime::QuadItem>(&item)) quad->matrix = moved * quad->matrix;
  if (auto* mesh = std::get_if<runtime::MeshItem>(&item)) mesh->matrix = moved * mesh->matrix;
  if (auto* line = std::get_if<runtime::LineItem>(&item)) {
    line->start += by;
    line->end += by;
  }
}

}  // namespace

bool ComponentPicture::isToBeAsked(Reason reason) const {
  if (m_dirty) return true;
  if (m_isGivenUp || reason == Reason::Nothing) return false;
  const bool rests = m_background && (m_background->isBusy() || Clock::now() < m_restsUntil);
  return reason == Reason::Everything || !rests;
}

bool ComponentPicture::follow(QuartzComponent& component, Reason reason, Moment& moment,
                              const Limits& limits) {
  if (m_background) takeAnswer(component, limits);
  if (!isToBeAsked(reason)) return false;
  // Before it is asked, since what it is asked for may make it want to be asked again.
  component.setNeedsUpdate(false);
  m_dirty = false;
  if (!component.visible() || !component.visibleInCompositionEditor()) {
    m_problem.clear();
    setList({});
    return true;
  }
  if (m_background)
    askInBackground(component, moment);
  else
    ask(component, moment, limits);
  return true;
}

void ComponentPicture::ask(QuartzComponent& component, Moment& moment, const Limits& limits) {
  m_problem.clear();
  if (!component.renderer()) {
    m_problem = componentProblem(component);
    setList({});
    return;
  }
  const double most = m_isNew ? limits.first : limits.next;
  const double left = (m_isNew ? 4 * limits.first : limits.all) - moment.spent;
  runtime::FrameArguments arguments = moment.arguments;
  arguments.interruption = std::make_shared<const Interruption>(
      milliseconds(std::clamp(left, std::min(limits.next, most) / 8, most)));
  m_isNew = false;
  const auto begin = Clock::now();
  // At the picture's own size, as on air; the list is drawn at any other.
  DrawList list = component.renderForView(moment.size, moment.time, arguments);
  moment.spent += std::chrono::duration<double>(Clock::now() - begin).count();
  if (!component.renderer()->wasInterrupted()) return setList(std::move(list));
  m_background =
      std::make_unique<BackgroundEvaluation>(milliseconds(limits.evaluation), moment.ready);
  m_answer = {*m_list, component.drawingFrame()};
  askInBackground(component, moment);
}

void ComponentPicture::askInBackground(QuartzComponent& component, const Moment& moment) {
  if (runtime::CompositionRenderer* renderer = component.rendererForView(moment.size)) {
    m_background->ask(BackgroundEvaluation::Request::of(*renderer, component.ownTime(moment.time),
                                                        moment.size, moment.arguments,
                                                        component.drawingFrame()));
    followPlace(component);
    return;
  }
  m_background.reset();
  m_problem = componentProblem(component);
  setList({});
}

void ComponentPicture::takeAnswer(const QuartzComponent& component, const Limits& limits) {
  auto answer = m_background->takeResult();
  if (!answer) return;
  m_restsUntil = Clock::now() + milliseconds(answer->seconds * restShare);
  if (answer->wasInterrupted) return giveUp(tooSlowProblem(answer->seconds));
  const bool quick = answer->seconds < limits.next * quickShare;
  m_quickAnswers = quick ? m_quickAnswers + 1 : 0;
  m_problem.clear();
  m_answer = std::move(*answer);
  followPlace(component);
  if (m_quickAnswers < quickAnswersToReturn || m_returns >= mostReturns) return;
  ++m_returns;
  m_quickAnswers = 0;
  m_isNew = true;
  m_background.reset();
}

void ComponentPicture::followPlace(const QuartzComponent& component) {
  if (m_isGivenUp) return;
  const QRectF frame = component.drawingFrame();
  DrawList list = m_answer.list;
  const QPointF moved = frame.center() - m_answer.frame.center();
  if (!moved.isNull() && component.composition()) {
    const double unit = 2 / component.composition()->width();
    for (runtime::DrawItem& item : list.items)
      translate(item, QVector3D(QVector2D(moved) * static_cast<float>(unit)));
  }
  setList(std::move(list));
}

void ComponentPicture::setList(DrawList list) {
  if (list != *m_list) m_list = std::make_shared<const DrawList>(std::move(list));
}

void ComponentPicture::giveUp(const QString& problem) {
  m_isGivenUp = true;
  m_answer = {};
  m_problem = problem;
  setList({});
}

void ComponentPicture::measure(const PictureTarget& target, const Limits& limits) {
  const runtime::Viewport viewport =
      CanvasDrawing::viewportOf(target, QRect(QPoint(), target.pixels));
  const double canvas = 1.0 * target.pixels.width() * target.pixels.height();
  double filled = 0;
  m_touched = {};
  for (const runtime::DrawItem& item : m_list->items) {
    const QRect touched = touchedPixels(item, viewport);
    m_touched |= touched;
    filled += 1.0 * touched.width() * touched.height();
  }
  if (filled <= limits.coverage * canvas) return;
  giveUp(tooMuchProblem(filled / canvas));
  m_touched = {};
}

}  // namespace canvas
