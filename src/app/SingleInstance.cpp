#include "app/SingleInstance.h"

#include <unistd.h>

#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QLockFile>
#include <QRegularExpression>
#include <QStandardPaths>

namespace app {

namespace {

// Milliseconds: for the system to connect two programs, and for one that is still starting.
constexpr int patience = 2'000;
constexpr int startPatience = 5'000;
constexpr qint64 longestRequest = 1 << 20;
/// What the desktop gives a program that a person starts, so that it may come to the front.
constexpr const char* activationVariable = "XDG_ACTIVATION_TOKEN";

/// A folder that only this user can write.
QString privateFolder() {
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (!runtime.isEmpty()) return runtime;
  QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                  QStringLiteral("/tessary");
  QDir().mkpath(cache);
  return cache;
}

/// A window must not come up on a display that the person does not sit at.
QString displayName() {
  QString name = qEnvironmentVariable("WAYLAND_DISPLAY");
  if (name.isEmpty())
    name = qEnvironmentVariable("DISPLAY").remove(QRegularExpression(QStringLiteral("\\.\\d+$")));
  return name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9]")), QStringLiteral("_"));
}

}  // namespace

SingleInstance::SingleInstance(const QString& name, QObject* parent)
    : QObject(parent),
      m_socketName(QStringLiteral("%1/%2-%3-%4")
                       .arg(privateFolder(), name, QString::number(::getuid()), displayName())) {
  m_server.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::connected);
}

bool SingleInstance::handOverOrListen(const QStringList& paths) {
  // Between finding nobody and listening nobody else may do the same. Where the lock cannot be had
  // starting is better than not.
  QLockFile lock(m_socketName + QStringLiteral(".lock"));
  static_cast<void>(lock.tryLock(patience));
  if (handOver(paths)) return true;
  QLocalServer::removeServer(m_socketName);
  static_cast<void>(m_server.listen(m_socketName));
  return false;
}

bool SingleInstance::handOver(const QStringList& paths) const {
  QLocalSocket socket;
  socket.connectToServer(m_socketName);
  if (!socket.waitForConnected(patience)) return false;
  QStringList absolute;
  for (const QString& path : paths) absolute.append(QFileInfo(path).absoluteFilePath());
  QDataStream stream(&socket);
  stream << absolute << qgetenv(activationVariable);
  // A program that does not answer any more must not keep this one from starting.
  return socket.waitForBytesWritten(patience) && socket.waitForReadyRead(startPatience);
}

void SingleInstance::connected() {
  while (QLocalSocket* socket = m_server.nextPendingConnection()) {
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] { read(*socket); });
    // What came before is not announced again.
    if (socket->bytesAvailable() > 0) read(*socket);
  }
}

void SingleInstance::read(QLocalSocket& socket) {
  if (socket.bytesAvailable() > longestRequest) {
    socket.abort();
    return;
  }
  QDataStream stream(&socket);
  stream.startTransaction();
  QStringList paths;
  QByteArray activation;
  stream >> paths >> activation;
  if (!stream.commitTransaction()) return;
  socket.write("ok");
  socket.flush();
  // Windows that are raised from now on do so on behalf of the start that asked.
  if (!activation.isEmpty()) qputenv(activationVariable, activation);
  Q_EMIT filesRequested(paths);
}

}  // namespace app
