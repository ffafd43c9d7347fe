#include "app/SingleInstance.h"

#include <unistd.h>

#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>

namespace app {

namespace {

constexpr int patience = 2'000;  // milliseconds
constexpr qint64 longestRequest = 1 << 20;

}  // namespace

SingleInstance::SingleInstance(const QString& name, QObject* parent) : QObject(parent) {
  QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (folder.isEmpty()) folder = QDir::tempPath();
  m_socketName = QStringLiteral("%1/%2-%3").arg(folder, name).arg(::getuid());
  m_server.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::connected);
}

bool SingleInstance::handOver(const QStringList& paths) const {
  QLocalSocket socket;
  socket.connectToServer(m_socketName);
  if (!socket.waitForConnected(patience)) return false;
  QStringList absolute;
  for (const QString& path : paths) absolute.append(QFileInfo(path).absoluteFilePath());
  QDataStream stream(&socket);
  stream << absolute;
  // A program that does not answer any more must not keep this one from starting.
  return socket.waitForBytesWritten(patience) && socket.waitForReadyRead(patience);
}

bool SingleInstance::listen() {
  if (m_server.listen(m_socketName)) return true;
  QLocalServer::removeServer(m_socketName);
  return m_server.listen(m_socketName);
}

void SingleInstance::connected() {
  while (QLocalSocket* socket = m_server.nextPendingConnection()) {
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
      if (socket->bytesAvailable() > longestRequest) {
        socket->abort();
        return;
      }
      QDataStream stream(socket);
      stream.startTransaction();
      QStringList paths;
      stream >> paths;
      if (!stream.commitTransaction()) return;
      socket->write("ok");
      socket->flush();
      Q_EMIT filesRequested(paths);
    });
  }
}

}  // namespace app
