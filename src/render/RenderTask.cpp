#include "render/RenderTask.h"

#include <chrono>

#include "render/BackgroundThread.h"

namespace render {

namespace {

/// What ends a frame is the person, not the time.
constexpr std::chrono::hours anyFrame(24 * 20);
constexpr qint64 tellInterval = 50;     // milliseconds
constexpr qint64 firstEstimate = 1000;  // milliseconds

/// The threads that a writer starts, such as those of an encoder, are in the background as the one
/// that makes it; this one must not be, since the pool's threads are started from it.
foundation::Result<std::unique_ptr<FrameWriter>> writerInBackground(const FrameTarget& target) {
  foundation::Result<std::unique_ptr<FrameWriter>> writer;
  std::thread([&] {
    BackgroundThread::enter();
    writer = FrameWriter::forOutput(target);
  }).join();
  return writer;
}

}  // namespace

RenderTask::RenderTask(RenderSource source, RenderSettings settings, playout::ValueSet values)
    : m_source(std::move(source)),
      m_settings(std::move(settings)),
      m_values(std::move(values)),
      m_interruption(std::make_shared<runtime::Interruption>(anyFrame)) {}

RenderTask::~RenderTask() {
  cancel();
  wait();
}

void RenderTask::start() {
  {
    const QMutexLocker lock(&m_mutex);
    if (m_state != State::Waiting) return;
    m_state = State::Running;
  }
  m_thread = std::thread([this] { run(); });
}

void RenderTask::cancel() {
  m_cancelled = true;
  m_interruption->request();
  const QMutexLocker lock(&m_mutex);
  if (m_state == State::Waiting) m_state = State::Cancelled;
}

void RenderTask::wait() {
  if (m_thread.joinable()) m_thread.join();
}

RenderTask::State RenderTask::state() const {
  const QMutexLocker lock(&m_mutex);
  return m_state;
}

RenderTask::Progress RenderTask::progress() const {
  const QMutexLocker lock(&m_mutex);
  Progress progress{.frames = m_frames, .total = m_total, .timeLeft = {}};
  if (!m_clock.isValid() || m_frames == 0 || !m_total) return progress;
  const qint64 elapsed = m_clock.elapsed();
  if (elapsed >= firstEstimate)
    progress.timeLeft = static_cast<double>(elapsed) / 1000 *
                        static_cast<double>(std::max<qint64>(*m_total - m_frames, 0)) /
                        static_cast<double>(m_frames);
  return progress;
}

foundation::Error RenderTask::error() const {
  const QMutexLocker lock(&m_mutex);
  return m_error;
}

QStringList RenderTask::findings() const {
  const QMutexLocker lock(&m_mutex);
  return m_findings;
}

void RenderTask::run() {
  const auto done = render();
  {
    const QMutexLocker lock(&m_mutex);
    m_state = done ? State::Done : m_cancelled ? State::Cancelled : State::Failed;
    if (!done) m_error = done.error();
    if (done) m_total = m_frames;
    if (!done && m_error.file.isEmpty()) m_error.file = m_settings.output.text;
  }
  Q_EMIT finished();
}

foundation::Result<void> RenderTask::render() {
  auto input = m_source.open(m_settings.passesStops ? PlayableInput::Stops::Pass
                                                    : PlayableInput::Stops::Wait);
  if (!input) return tl::unexpected(input.error());
  if (auto set = setValues(*input->renderer); !set) return set;
  RenderJob job(m_settings, *input, {});
  if (auto planned = job.plan(); !planned) return planned;
  {
    const QMutexLocker lock(&m_mutex);
    m_total = job.frames() ? job.frames() : expectedFrames(*input);
  }
  auto writer = writerInBackground(job.target());
  if (!writer) return tl::unexpected(writer.error());
  auto done = job.run(**writer, {.progress = [this](qint64 frames) { tell(frames); },
                                 .isCancelled = [this] { return m_cancelled.load(); },
                                 .interruption = m_interruption,
                                 .givesWay = [this] { return m_givesWay.load(); },
                                 .isInBackground = true});
  const QMutexLocker lock(&m_mutex);
  m_findings = input->facts.findings + input->renderer->findings() + job.findings();
  return done;
}

foundation::Result<void> RenderTask::setValues(runtime::CompositionRenderer& renderer) const {
  const auto values =
      playout::InputValues::fromObject(m_values.values, renderer, m_source.folder());
  if (!values) return tl::unexpected(toldOfSet(values.error().error));
  for (const playout::InputValue& input : *values)
    renderer.setValueForInputKey(input.value, input.key);
  return {};
}

foundation::Error RenderTask::toldOfSet(foundation::Error error) const {
  if (error.file.isEmpty()) {
    error.message = QStringLiteral("the set of values \"%1\" does not fit the graphic: %2")
                        .arg(m_values.name, error.message);
    error.file = m_source.document();
  } else {
    error.message = QStringLiteral("%1 (in the set of values \"%2\" of %3)")
                        .arg(error.message, m_values.name, m_source.document());
  }
  return error;
}

void RenderTask::tell(qint64 frames) {
  {
    const QMutexLocker lock(&m_mutex);
    m_frames = frames;
    if (!m_clock.isValid()) m_clock.start();
    if (frames > 0 && m_clock.elapsed() - m_lastTold < tellInterval) return;
    m_lastTold = m_clock.elapsed();
  }
  Q_EMIT advanced();
}

std::optional<qint64> RenderTask::expectedFrames(const PlayableInput& input) const {
  if (!input.summary.duration) return {};
  const double held = static_cast<double>(input.summary.stopFrames.size()) * m_settings.stopHold;
  const FrameRate rate = m_settings.rate.value_or(input.facts.rate);
  return std::max<qint64>(rate.framesIn(*input.summary.duration + held - m_settings.from), 1);
}

}  // namespace render
