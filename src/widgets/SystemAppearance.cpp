#include "widgets/SystemAppearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace widgets {
namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kGroup = QStringLiteral("org.freedesktop.appearance");

// Long enough for a portal that runs, short enough not to hold up the first window.
constexpr int kPatienceInMilliseconds = 200;

// The older of the two calls wraps the value twice.
QVariant unwrapped(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value;
}

}  // namespace

SystemAppearance::SystemAppearance(QObject* parent) : QObject(parent) {
  m_dark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return;
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  for (const char* key : {"color-scheme", "contrast", "reduced-motion"})
    read(QString::fromLatin1(key));
  bus.connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
              SLOT(settingChanged(QString, QString, QDBusVariant)));
}

void SystemAppearance::read(const QString& key) {
  QDBusMessage call =
      QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Read"));
  call << kGroup << key;
  const QDBusMessage reply =
      QDBusConnection::sessionBus().call(call, QDBus::Block, kPatienceInMilliseconds);
  if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
    take(key, unwrapped(reply.arguments().constFirst()));
}

bool SystemAppearance::take(const QString& key, const QVariant& value) {
  bool ok = false;
  const uint number = value.toUInt(&ok);
  if (!ok) return false;
  if (key == QLatin1String("color-scheme")) {
    if (number == 0) return false;  // no preference: as the palette has it
    m_dark = number == 1;
  } else if (key == QLatin1String("contrast")) {
    m_highContrast = number == 1;
  } else if (key == QLatin1String("reduced-motion")) {
    m_reducedMotion = number == 1;
  } else {
    return false;
  }
  return true;
}

void SystemAppearance::settingChanged(const QString& group, const QString& key,
                                      const QDBusVariant& value) {
  if (group == kGroup && take(key, unwrapped(value.variant()))) Q_EMIT changed();
}

}  // namespace widgets
