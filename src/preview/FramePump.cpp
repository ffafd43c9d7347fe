#include "preview/FramePump.h"

#include <QThread>

#include "model/PlayoutArguments.h"

namespace preview {

using runtime::CompositionRenderer;
using Clock = FrameClock::Clock;

/// One playing from the beginning, on the pump's thread.
class FramePump::Run {
 public:
  Run(FramePump& pump, int number, std::shared_ptr<const PreviewProgram> program)
      : m_pump(pump), m_number(number) {
    load(std::move(program));
    for (const Input& input : m_pump.inputs()) {
      m_renderer->setValueForInputKey(input.value, input.key);
      m_log.add(0, input);
    }
  }

  /// False when it took too long.
  bool makeFrame(double time) {
    const Clock::time_point begin = Clock::now();
    if (auto program = m_pump.takeExchanged(); program && !exchange(std::move(program)))
      return false;
    for (const Input& input : m_pump.takePending()) {
      m_renderer->setValueForInputKey(input.value, input.key);
      m_log.add(time, input);
    }
    if (!evaluate(time)) return false;
    const bool isNew = !m_list || m_evaluated != *m_list;
    m_list = std::move(m_evaluated);
    if (isNew) draw(time);
    tellState();
    tellFindings();
    tellOutputs();
    const std::lock_guard lock(m_pump.m_mutex);
    m_pump.m_meter.frameMade(begin, Clock::now(), isNew);
    return true;
  }
  [[nodiscard]] bool standsStill() const { return !m_renderer->isAnimated(); }

 private:
  void load(std::shared_ptr<const PreviewProgram> program) {
    m_program = std::move(program);
    m_renderer = std::make_unique<CompositionRenderer>(m_program->compiled);
    m_outputKeys = m_renderer->outputKeys();
    m_outputs.reset();
    m_renderer->userInfo() = m_program->userInfo;
    for (const auto& [key, value] : m_program->inputs) m_renderer->setValueForInputKey(value, key);
  }
  bool exchange(std::shared_ptr<const PreviewProgram> program) {
    // Another picture, even of the same pixels.
    if (program->isOpaque != m_program->isOpaque) m_list.reset();
    load(std::move(program));
    const auto set = [this](const Input& input) {
      m_renderer->setValueForInputKey(input.value, input.key);
    };
    for (const Input& input : m_pump.inputs())
      if (input.value.type() != runtime::PortType::Boolean) set(input);
    return m_log.playAfter({set, [this](double time) { return evaluate(time); }},
                           1 / m_pump.m_rate);
  }
  bool evaluate(double time) {
    runtime::FrameArguments arguments;
    arguments.wallClock = QDateTime::currentDateTimeUtc();
    arguments.playout = model::PlayoutArguments::argumentsAtTime(time, true);
    arguments.interruption = m_pump.beginFrame(m_number);
    m_evaluated = m_renderer->renderAtTime(time, m_pump.m_size, arguments);
    return !m_renderer->wasInterrupted();
  }
  void draw(double time) {
    std::shared_ptr<Picture> picture = m_pump.m_pool.take();
    picture->canvas.draw(*m_list);
    picture->time = time;
    picture->isOpaque = m_program->isOpaque;
    m_pump.publish(std::move(picture));
  }
  void tellState() {
    const auto isOn = [&](const QString& key) {
      return m_renderer->valueForOutputKey(key).toBoolean();
    };
    const State state{m_number, isOn(QStringLiteral("active")),
                      isOn(QStringLiteral("waitingForTrigger"))};
    if (state == m_state) return;
    m_state = state;
    if (m_pump.m_hooks.stateChanged) m_pump.m_hooks.stateChanged(state);
  }

  void tellFindings() {
    const QStringList findings = m_renderer->findings();
    if (std::exchange(m_foundCount, findings.size()) >= findings.size()) return;
    if (m_pump.m_hooks.found) m_pump.m_hooks.found(findings);
  }
  void tellOutputs() {
    if (!m_pump.m_hooks.outputsReady) return;
    std::vector<runtime::Value> values;
    for (const QString& key : m_outputKeys) values.push_back(m_renderer->valueForOutputKey(key));
    if (values == m_outputs) return;
    m_outputs = values;
    m_pump.publish({m_number, std::move(values)});
  }

  FramePump& m_pump;
  int m_number;
  std::shared_ptr<const PreviewProgram> m_program;
  std::unique_ptr<CompositionRenderer> m_renderer;
  SwitchLog m_log;
  runtime::DrawList m_evaluated;
  std::optional<runtime::DrawList> m_list;  ///< that is shown
  std::optional<State> m_state;
  qsizetype m_foundCount = 0;
  QStringList m_outputKeys;
  std::optional<std::vector<runtime::Value>> m_outputs;
};

FramePump::FramePump(PreviewProgram program, Hooks hooks, std::chrono::milliseconds mostTime)
    : m_size(program.size),
      m_rate(program.framesPerSecond),
      m_hooks(std::move(hooks)),
      m_mostTime(mostTime),
      m_pool(m_size, QThread::idealThreadCount()),
      m_program(std::make_shared<const PreviewProgram>(std::move(program))),
      m_thread([this] { work(); }) {}

FramePump::~FramePump() {
  {
    const std::lock_guard lock(m_mutex);
    m_ends = true;
    if (m_running) m_running->request();
  }
  m_changed.notify_one();
  m_thread.join();
}

int FramePump::restart() {
  const std::lock_guard lock(m_mutex);
  m_pending.clear();
  if (m_running) m_running->request();
  m_changed.notify_one();
  return ++m_run;
}

void FramePump::exchangeProgram(PreviewProgram program) {
  auto exchanged = std::make_shared<const PreviewProgram>(std::move(program));
  const std::lock_guard lock(m_mutex);
  m_program = std::move(exchanged);
  m_isExchanged = true;
  m_changed.notify_one();
}

void FramePump::setInput(const QString& key, const runtime::Value& value) {
  const std::lock_guard lock(m_mutex);
  const auto replaceIn = [&](auto& inputs) {
    const auto known = std::find_if(inputs.begin(), inputs.end(),
                                    [&key](const Input& input) { return input.key == key; });
    if (known == inputs.end())
      inputs.push_back({key, value});
    else
      known->value = value;
  };
  if (value.type() == runtime::PortType::Boolean)
    m_pending.push_back({key, value});
  else
    replaceIn(m_pending);
  if (key != QLatin1String("trigger")) replaceIn(m_inputs);
  m_changed.notify_one();
}

std::shared_ptr<const Picture> FramePump::takePicture() {
  const std::lock_guard lock(m_mutex);
  return std::exchange(m_picture, nullptr);
}

std::optional<FramePump::Outputs> FramePump::takeOutputs() {
  const std::lock_guard lock(m_mutex);
  return std::exchange(m_outputs, std::nullopt);
}

FrameMeter::Reading FramePump::reading() const {
  const std::lock_guard lock(m_mutex);
  return m_meter.reading(Clock::now());
}

void FramePump::work() {
  std::unique_lock lock(m_mutex);
  while (!m_ends) {
    const int run = m_run;
    lock.unlock();
    play(run);
    lock.lock();
    m_changed.wait(lock, [&] { return !isCurrent(run); });
  }
}

void FramePump::play(int run) {
  std::shared_ptr<const PreviewProgram> program;
  {
    const std::lock_guard lock(m_mutex);
    program = m_program;
    m_isExchanged = false;
    m_meter.beginRun();
  }
  Run playing(*this, run, std::move(program));
  int slowFrames = 0;
  double time = 0;
  // The first frame reads files and lays out texts; time begins when it is there.
  std::optional<FrameClock> clock;
  while (true) {
    slowFrames = playing.makeFrame(time) ? 0 : slowFrames + 1;
    if (!clock) clock.emplace(m_rate, Clock::now());
    if (!waitForFrame(*clock, slowFrames == 0 && playing.standsStill(), run)) return;
    if (slowFrames == 2) {
      if (m_hooks.stalled) m_hooks.stalled(run);
      return;
    }
    time = clock->timeOf(clock->next(Clock::now()));
    const std::lock_guard lock(m_mutex);
    m_meter.setDropped(clock->dropped());
  }
}

bool FramePump::waitForFrame(FrameClock& clock, bool standsStill, int run) {
  std::unique_lock lock(m_mutex);
  m_running.reset();
  const auto hasNews = [this] { return !m_pending.empty() || m_isExchanged; };
  if (standsStill && !hasNews()) {
    m_changed.wait(lock, [&] { return !isCurrent(run) || hasNews(); });
    clock.resume(Clock::now());
  }
  m_changed.wait_until(lock, clock.dueTimeOf(clock.frame() + 1), [&] { return !isCurrent(run); });
  return isCurrent(run);
}

std::vector<playout::InputValue> FramePump::inputs() const {
  const std::lock_guard lock(m_mutex);
  return m_inputs;
}

std::vector<playout::InputValue> FramePump::takePending() {
  std::vector<Input> due;
  const std::lock_guard lock(m_mutex);
  const auto isDue = [&due](const Input& input) {
    return std::none_of(due.begin(), due.end(),
                        [&input](const Input& other) { return other.key == input.key; });
  };
  for (auto input = m_pending.begin(); input != m_pending.end();) {
    if (!isDue(*input)) {
      ++input;
      continue;
    }
    due.push_back(std::move(*input));
    input = m_pending.erase(input);
  }
  return due;
}

std::shared_ptr<const PreviewProgram> FramePump::takeExchanged() {
  const std::lock_guard lock(m_mutex);
  return std::exchange(m_isExchanged, false) ? m_program : nullptr;
}

std::shared_ptr<const runtime::Interruption> FramePump::beginFrame(int run) {
  const std::lock_guard lock(m_mutex);
  m_running = std::make_shared<runtime::Interruption>(m_mostTime);
  if (!isCurrent(run)) m_running->request();
  return m_running;
}

void FramePump::publish(std::shared_ptr<const Picture> picture) {
  bool tells = false;
  std::shared_ptr<const Picture> replaced;  // goes back to its pool outside the lock
  {
    const std::lock_guard lock(m_mutex);
    tells = !m_picture;
    if (m_picture) m_meter.pictureUnseen();
    replaced = std::exchange(m_picture, std::move(picture));
  }
  if (tells && m_hooks.pictureReady) m_hooks.pictureReady();
}

void FramePump::publish(Outputs outputs) {
  {
    const std::lock_guard lock(m_mutex);
    if (std::exchange(m_outputs, std::move(outputs))) return;
  }
  m_hooks.outputsReady();
}

}  // namespace preview
