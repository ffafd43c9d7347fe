#pragma once

#include <QMap>
#include <QProcess>
#include <QProcessEnvironment>
#include <csignal>

namespace document {

/// A second process: this test program once more, with one of its disabled tests, which reads its
/// arguments from the environment and tells how far it is on standard output.
class ChildProcess {
 public:
  ChildProcess(const QString& test, const QMap<QString, QString>& variables) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : variables.asKeyValueRange()) environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral("/proc/self/exe"),
                    {QStringLiteral("--gtest_filter=") + test,
                     QStringLiteral("--gtest_also_run_disabled_tests")});
  }
  ~ChildProcess() { kill(); }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// False when the process ends without having said so.
  [[nodiscard]] bool waitFor(const QByteArray& text) {
    while (!m_output.contains(text)) {
      if (!m_process.waitForReadyRead(60'000)) return false;
      m_output += m_process.readAllStandardOutput();
    }
    return true;
  }
  /// Ends it at once, without any chance to clean up.
  void kill() {
    if (m_process.state() == QProcess::NotRunning) return;
    ::kill(static_cast<pid_t>(m_process.processId()), SIGKILL);
    m_process.waitForFinished(60'000);
    m_output += m_process.readAllStandardOutput();
  }
  [[nodiscard]] qint64 processId() const { return m_process.processId(); }
  [[nodiscard]] const QByteArray& output() const { return m_output; }

 private:
  QProcess m_process;
  QByteArray m_output;
};

}  // namespace document
