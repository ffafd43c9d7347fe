#pragma once

#include <QLocalServer>
#include <QObject>

class QLocalSocket;

namespace app {

/// Lets the first start of the program know what later starts were asked to open.
class SingleInstance : public QObject {
  Q_OBJECT

 public:
  /// One program for each name, user and display.
  explicit SingleInstance(const QString& name, QObject* parent = nullptr);

  /// True when the program that is running has taken the files, so that this one may end. Else this
  /// is the first, and listens; of several that start at once, one is. A socket that a program
  /// which is gone left behind is taken over, and so is that of one which does not answer.
  [[nodiscard]] bool handOverOrListen(const QStringList& paths);

 Q_SIGNALS:
  /// Absolute paths; none when the program was only started again.
  void filesRequested(const QStringList& paths);

 private:
  [[nodiscard]] bool handOver(const QStringList& paths) const;
  void connected();
  void read(QLocalSocket& socket);

  QString m_socketName;
  QLocalServer m_server;
};

}  // namespace app
