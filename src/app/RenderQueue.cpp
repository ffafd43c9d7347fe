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
  // What was found is not gone only because nobody has looked yet.
  m_notices.removeIf([](const Notice& notice) { return notice.findings.isEmpty(); });
  m_tasks.front()->start();
}

void RenderQueue::take(const RenderTask* task) {
  // What was cancelled with all others may still be told of.
  if (task != current() || task->state() == RenderTask::State::Running) return;
  const std::unique_ptr<RenderTask> ended = std::move(m_tasks.front());
  m_tasks.pop_front();
  ended->wait();
  takeNotice(*ended);
  startNext();
  Q_EMIT changed();
  if (ended->state() == RenderTask::State::Failed) Q_EMIT failed(ended->error());
}

void RenderQueue::takeNotice(const RenderTask& ended) {
  const QString path = pathOf(ended.settings());
  // The file is another one now.
  m_notices.removeIf([&path](const Notice& notice) { return notice.path == path; });
  if (ended.state() == RenderTask::State::Failed) return;
  m_notices.append({.path = path,
                    .isCancelled = ended.state() == RenderTask::State::Cancelled,
                    .findings = ended.findings()});
}

void RenderQueue::setGivesWay(bool givesWay) {
  if (!m_tasks.empty()) m_tasks.front()->setGivesWay(givesWay);
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

void RenderQueue::dismissNotices() {
  m_notices.clear();
  Q_EMIT changed();
}

QString RenderQueue::pathOf(const render::RenderSettings& settings) {
  const render::OutputName& output = settings.output;
  return output.name.isSequence ? output.folder() : output.text;
}

}  // namespace app
