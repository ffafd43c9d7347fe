#include "canvas/BackgroundEvaluation.h"

namespace canvas {

using runtime::CompositionRenderer;
using runtime::Interruption;

BackgroundEvaluation::Request BackgroundEvaluation::Request::of(
    CompositionRenderer& renderer, double time, const QSize& size,
    const runtime::FrameArguments& arguments, const QRectF& frame) {
  Request request{renderer.sharedProgram(), renderer.userInfo(), {}, time, size, arguments, frame};
  for (const QString& key : renderer.inputKeys())
    request.inputs.emplace_back(key, renderer.valueForInputKey(key));
  return request;
}

BackgroundEvaluation::BackgroundEvaluation(std::chrono::milliseconds mostTime,
                                           std::function<void()> finished)
    : m_mostTime(mostTime), m_finished(std::move(finished)), m_thread([this] { run(); }) {}

BackgroundEvaluation::~BackgroundEvaluation() {
  {
    const std::lock_guard lock(m_mutex);
    m_ends = true;
    if (m_running) m_running->request();
  }
  m_changed.notify_one();
  m_thread.join();
}

void BackgroundEvaluation::ask(Request request) {
  {
    const std::lock_guard lock(m_mutex);
    m_waiting = std::move(request);
  }
  m_changed.notify_one();
}

bool BackgroundEvaluation::isBusy() const {
  const std::lock_guard lock(m_mutex);
  return m_waiting || m_works;
}

std::optional<BackgroundEvaluation::Result> BackgroundEvaluation::takeResult() {
  const std::lock_guard lock(m_mutex);
  return std::exchange(m_result, std::nullopt);
}

void BackgroundEvaluation::run() {
  std::unique_lock lock(m_mutex);
  while (true) {
    m_changed.wait(lock, [this] { return m_ends || m_waiting; });
    if (m_ends) break;
    Request request = *std::exchange(m_waiting, std::nullopt);
    m_works = true;
    lock.unlock();
    Result result = evaluate(std::move(request));
    lock.lock();
    m_works = false;
    m_running.reset();
    m_result = std::move(result);
    lock.unlock();
    m_finished();
    lock.lock();
  }
  lock.unlock();
  m_renderer.reset();  // where its scripts ran
}

void BackgroundEvaluation::prepareRenderer(const Request& request) {
  if (!m_renderer || m_renderer->sharedProgram() != request.compiled) {
    m_renderer = std::make_unique<CompositionRenderer>(request.compiled);
    m_renderer->userInfo() = request.userInfo;
  }
  for (const auto& [key, value] : request.inputs) m_renderer->setValueForInputKey(value, key);
}

std::shared_ptr<const Interruption> BackgroundEvaluation::beginFrame() {
  const std::lock_guard lock(m_mutex);
  m_running = std::make_shared<Interruption>(m_mostTime);
  if (m_ends) m_running->request();
  return m_running;
}

BackgroundEvaluation::Result BackgroundEvaluation::evaluate(Request request) {
  prepareRenderer(request);
  request.arguments.interruption = beginFrame();
  const auto begin = Interruption::Clock::now();
  Result result;
  result.frame = request.frame;
  result.list = m_renderer->renderAtTime(request.time, request.size, request.arguments);
  result.wasInterrupted = m_renderer->wasInterrupted();
  const std::chrono::duration<double> taken = Interruption::Clock::now() - begin;
  result.seconds = taken.count();
  return result;
}

}  // namespace canvas
