#include "foundation/UserDefaults.h"

#include <QStandardPaths>

namespace foundation {

UserDefaults::UserDefaults(const QString& path) : m_settings(path, QSettings::IniFormat) {}

UserDefaults& UserDefaults::standard() {
  static UserDefaults defaults(
      QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
      QStringLiteral("/tessary/tessary.conf"));
  return defaults;
}

void UserDefaults::registerDefaults(const QVariantMap& defaults) {
  m_registered.insert(defaults);
}

QVariant UserDefaults::value(const QString& key) const {
  return m_settings.value(key, m_registered.value(key));
}

void UserDefaults::setValue(const QVariant& value, const QString& key) {
  m_settings.setValue(key, value);
}

void UserDefaults::remove(const QString& key) {
  m_settings.remove(key);
}

}  // namespace foundation
