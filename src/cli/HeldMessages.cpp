#include "cli/HeldMessages.h"

#include <QList>
#include <QMutex>

namespace cli {

namespace {

struct Message {
  QtMsgType type;
  QString text;
};

QMutex mutex;
QList<Message> held;

void hold(QtMsgType type, const QMessageLogContext&, const QString& text) {
  const QMutexLocker lock(&mutex);
  held.append({type, text});
}

}  // namespace

HeldMessages::HeldMessages() : m_before(qInstallMessageHandler(hold)) {}

HeldMessages::~HeldMessages() {
  qInstallMessageHandler(m_before);
  const QMutexLocker lock(&mutex);
  for (const Message& message : std::as_const(held))
    if (m_before) m_before(message.type, QMessageLogContext(), message.text);
  held.clear();
}

void HeldMessages::dropWhatIsIn(const QString& text) {
  const QMutexLocker lock(&mutex);
  held.removeIf([&text](const Message& message) { return text.contains(message.text); });
}

}  // namespace cli
