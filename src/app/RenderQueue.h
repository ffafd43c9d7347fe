#pragma once

#include <QObject>
#include <deque>
#include <memory>

#include "render/RenderTask.h"

namespace app {

/// What the program renders, one graphic after the other: all of them together would be no faster.
class RenderQueue : public QObject {
  Q_OBJECT

 public:
  /// How a task that ended came out.
  struct Notice {
    QString path;  ///< of the file or the folder
    bool isCancelled = false;
    QStringList findings = {};
  };

  using QObject::QObject;
  /// Cancels all and waits for their end.
  ~RenderQueue() override;

  void add(std::unique_ptr<render::RenderTask> task);
  /// None when nothing is rendered.
  [[nodiscard]] const render::RenderTask* current() const;
  /// How many come after the current one.
  [[nodiscard]] qsizetype waiting() const;
  [[nodiscard]] bool isBusy() const { return !m_tasks.empty(); }
  /// While something plays that must not stutter. Of what is rendered now.
  void setGivesWay(bool givesWay);
  void cancelCurrent();
  /// Waits for their end, which is soon.
  void cancelAll();
  /// Whether the file, or folder, is what one of the tasks writes.
  [[nodiscard]] bool writes(const QString& path) const;
  /// Of tasks that ended, the last one at the end, until they are dismissed; where nothing was
  /// found, until the next one begins.
  [[nodiscard]] const QList<Notice>& notices() const { return m_notices; }
  void dismissNotices();
  /// The file of the settings; the folder where there are many.
  [[nodiscard]] static QString pathOf(const render::RenderSettings& settings);

 Q_SIGNALS:
  void changed();
  void failed(const foundation::Error& error);

 private:
  void startNext();
  void take(const render::RenderTask* task);
  void takeNotice(const render::RenderTask& ended);

  std::deque<std::unique_ptr<render::RenderTask>> m_tasks;  ///< the first one runs
  QList<Notice> m_notices;
};

}  // namespace app
