#include "app/RenderQueue.h"

#include <QSignalBlocker>

namespace app {

using render::RenderTask;

RenderQueue::~RenderQueue() {
  const QSignalBlocker silence(this);
  cancelAll();
}

void RenderQueue::add(std::unique_ptr<RenderTask> task) {
  connect(task.get(), &RenderTask::advanced, this, &RenderQueue::changed);
  connect(
      task.get(), &RenderTask::finished, this, [this, raw = task.get()] { take(raw); },
      Qt::QueuedConnection);
  m_tasks.push_back(std::move(task));
  if (m_tasks.size() == 1) startNext();
  Q_EMIT changed();
}

const RenderTask* RenderQueue::current() const {
  return m_tasks.empty() ? nullptr : m_tasks.front().get();
}

qsizetype RenderQueue::waiting() const {
  return m_tasks.empty() ? 0 : static_cast<qsizetype>(m_tasks.size()) - 1;
}

void RenderQueue::startNext() {
  if (m_tasks.empty()) return;
  m_notice.reset();
  m_tasks.front()->start();
}

void RenderQueue::take(const RenderTask* task) {
  // What was cancelled with all others may still be told of.
  if (task != current() || task->state() == RenderTask::State::Running) return;
  const std::unique_ptr<RenderTask> ended = std::move(m_tasks.front());
  m_tasks.pop_front();
  ended->wait();
  startNext();
  if (ended->state() == RenderTask::State::Failed) {
    Q_EMIT changed();
    Q_EMIT failed(ended->error());
    return;
  }
  m_notice = Notice{.path = pathOf(ended->settings()),
                    .isCancelled = ended->state() == RenderTask::State::Cancelled,
                    .findings = ended->findings()};
  Q_EMIT changed();
}

void RenderQueue::cancelCurrent() {
  if (!m_tasks.empty()) m_tasks.front()->cancel();
}

void RenderQueue::cancelAll() {
  for (const auto& task : m_tasks) task->cancel();
  m_tasks.clear();
  Q_EMIT changed();
}

bool RenderQueue::writes(const QString& path) const {
  for (const auto& task : m_tasks)
    if (pathOf(task->settings()) == path) return true;
  return false;
}

void RenderQueue::dismissNotice() {
  m_notice.reset();
  Q_EMIT changed();
}

QString RenderQueue::pathOf(const render::RenderSettings& settings) {
  const render::OutputName& output = settings.output;
  return output.name.isSequence ? output.folder() : output.text;
}

}  // namespace app
