#include "render/RenderJob.h"

#include <cmath>

#include "render/RenderPipeline.h"

namespace render {

namespace {
const QString triggerKey = QStringLiteral("trigger");
const QString waitingKey = QStringLiteral("waitingForTrigger");
const QString activeKey = QStringLiteral("active");
constexpr double longestPlay = 3600;  // seconds, where only the graphic says when it ends
constexpr double slack = 1e-6;        // what happens at a frame's time belongs to that frame
}  // namespace

RenderJob::RenderJob(const RenderSettings& settings, PlayableInput& input, ValueSchedule schedule)
    : m_settings(settings),
      m_input(input),
      m_clock(settings.clock.isValid() ? settings.clock : QDateTime::currentDateTimeUtc()),
      m_schedule(std::move(schedule)) {}

foundation::Result<void> RenderJob::plan() {
  m_size = m_settings.size.value_or(m_input.summary.size.value_or(QSize(1920, 1080)));
  if (!RenderSettings::isDrawable(m_size))
    return foundation::failure(
        QStringLiteral("the file wants pictures of %1 x %2, which is too large; give --size")
            .arg(m_size.width())
            .arg(m_size.height()));
  m_rate = m_settings.rate.value_or(m_input.facts.rate);
  m_isInterlaced =
      m_settings.fields || m_settings.isInterlaced.value_or(m_input.facts.isInterlaced);
  if (const auto movie = target().movie())
    if (auto ok = movie->check(); !ok) return ok;
  if (m_settings.frames) m_frames = *m_settings.frames;
  if (m_settings.duration) m_frames = std::max<qint64>(1, m_rate.framesIn(*m_settings.duration));
  if (m_settings.output.isSinglePicture()) {
    if (m_frames.value_or(1) != 1)
      return foundation::failure(
          QStringLiteral("%1 is one picture; name a sequence such as name_%05d.png for %2 frames")
              .arg(m_settings.output.text)
              .arg(*m_frames));
    m_frames = 1;
  }
  if (!m_frames && !m_input.renderer->outputAttributes(activeKey))
    return foundation::failure(
        QStringLiteral("the file does not say when it ends; give --frames or --duration"));
  if (!m_settings.triggers.empty() && !m_input.renderer->inputAttributes(triggerKey))
    return foundation::failure(
        QStringLiteral("the file has no input '%1' to press").arg(triggerKey));
  return {};
}

FrameTarget RenderJob::target() const {
  return {.output = m_settings.output,
          .alpha = m_settings.alpha,
          .size = m_size,
          .rate = m_rate,
          .isInterlaced = m_isInterlaced,
          .codec = m_settings.codec};
}

bool RenderJob::triggerPressed(double time) {
  if (m_pressed) {
    m_waitingSince.reset();
    return false;  // the next press needs a release before it
  }
  if (std::exchange(m_pressAgain, false)) return true;
  if (m_settings.automaticTrigger && hasHeld(time)) return true;
  if (m_nextTrigger < m_settings.triggers.size() &&
      m_settings.triggers[m_nextTrigger] <= time + slack) {
    ++m_nextTrigger;
    return true;
  }
  return false;
}

bool RenderJob::hasHeld(double time) {
  if (!m_input.renderer->valueForOutputKey(waitingKey).toBoolean()) {
    m_waitingSince.reset();
    return false;
  }
  if (!m_waitingSince) m_waitingSince = time;
  return time - *m_waitingSince >= m_settings.stopHold - slack;
}

runtime::DrawList RenderJob::play(double time) {
  m_updated = m_schedule.apply(time + slack, *m_input.renderer);
  m_arguments.wallClock = m_clock.addMSecs(std::llround(time * 1000));
  if (m_settings.triggers.empty() && !m_settings.automaticTrigger)
    return m_input.renderer->renderAtTime(time, m_size, m_arguments);
  const auto waits = [this] { return m_input.renderer->valueForOutputKey(waitingKey).toBoolean(); };
  const bool waited = waits();
  m_pressed = triggerPressed(time);
  m_input.renderer->setValueForInputKey(m_pressed, triggerKey);
  runtime::DrawList list = m_input.renderer->renderAtTime(time, m_size, m_arguments);
  if (m_pressed && !waited) {
    // A press in the frame that reaches the stop comes too soon to count; it is meant, though.
    m_pressAgain = waits();
    if (!m_pressAgain)
      m_findings.append(
          QStringLiteral("the trigger at %1 s released nothing: no stop frame was waiting")
              .arg(time));
  }
  return list;
}

bool RenderJob::isOver() {
  if (m_frames) return false;
  if (!m_input.renderer->valueForOutputKey(activeKey).toBoolean()) return true;
  if (!m_input.renderer->valueForOutputKey(waitingKey).toBoolean() || m_pressed) return false;
  if (m_settings.automaticTrigger || m_nextTrigger < m_settings.triggers.size()) return false;
  if (m_updated || !m_schedule.isDone()) return false;  // the operator is still at work
  m_findings.append(QStringLiteral(
      "ended at a stop frame that waits for a trigger; see --trigger, --frames and --duration"));
  return true;
}

void RenderJob::preroll() {
  for (qint64 i = 0; m_rate.timeOf(i) < m_settings.from - 1e-9 && !isCancelled(); ++i)
    (void)play(m_rate.timeOf(i));
}

void RenderJob::addFrames(RenderPipeline& pipeline) {
  const bool onBlack = m_settings.background && !m_input.facts.drawsBackground;
  const qint64 last = m_frames.value_or(m_rate.framesIn(longestPlay));
  for (qint64 frame = 0; frame < last && !isCancelled(); ++frame) {
    const double time = m_settings.from + m_rate.timeOf(frame);
    RenderPipeline::Picture picture{.list = play(time), .onBlack = onBlack, .number = frame};
    if (frame > 0 && isOver()) return;
    if (m_settings.fields) picture.lowerField = play(time + m_rate.timeOf(1) / 2);
    if (m_watch.givesWay) pipeline.setGivesWay(m_watch.givesWay());
    if (!pipeline.add(std::move(picture))) return;
    if (m_watch.progress) m_watch.progress(pipeline.delivered());
  }
}

foundation::Result<void> RenderJob::run(FrameWriter& writer, Watch watch) {
  m_watch = std::move(watch);
  m_arguments.interruption = m_watch.interruption;
  preroll();
  RenderPipeline pipeline(writer, m_size,
                          {.threads = m_settings.threads, .inBackground = m_watch.isInBackground});
  if (m_watch.progress) m_watch.progress(0);
  addFrames(pipeline);
  m_findings += m_schedule.unused();
  auto done = pipeline.finish();
  if (m_watch.progress) m_watch.progress(pipeline.delivered());
  if (!done) return done;
  if (isCancelled())
    return foundation::failure(QStringLiteral("stopped before the end"), m_settings.output.text);
  return writer.finish();
}

}  // namespace render
