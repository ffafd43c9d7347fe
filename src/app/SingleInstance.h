#pragma once

#include <QLocalServer>
#include <QObject>

namespace app {

/// Lets the first start of the program know what later starts were asked to open.
class SingleInstance : public QObject {
  Q_OBJECT

 public:
  /// One program for each name and user.
  explicit SingleInstance(const QString& name, QObject* parent = nullptr);

  /// Hands the files to the program that is running. False when none is: then this is the first.
  [[nodiscard]] bool handOver(const QStringList& paths) const;
  /// Begins to listen. A socket that a program which is gone left behind is taken over.
  bool listen();

 Q_SIGNALS:
  /// Absolute paths; none when the program was only started again.
  void filesRequested(const QStringList& paths);

 private:
  void connected();

  QString m_socketName;
  QLocalServer m_server;
};

}  // namespace app
