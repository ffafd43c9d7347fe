#include "preview/DisplayName.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>

namespace preview {

namespace {

/// Connectors of panels that are part of the machine.
bool isBuiltIn(const QString& connector) {
  return connector.startsWith(QLatin1String("eDP")) ||
         connector.startsWith(QLatin1String("LVDS")) || connector.startsWith(QLatin1String("DSI"));
}

QString translated(const char* text) {
  return QCoreApplication::translate("DisplayName", text);
}

}  // namespace

QString DisplayName::name(const QScreen& screen) {
  return name(screen.model(), screen.name(), &screen);
}

QString DisplayName::name(const QString& product, const QString& connector, const void* address) {
  const QString name = product.trimmed().isEmpty() ? connector.trimmed() : product.trimmed();
  if (name.isEmpty())
    return translated("Unknown Display (%1)")
        .arg(QStringLiteral("0x%1").arg(reinterpret_cast<quintptr>(address), 0, 16));
  return isBuiltIn(connector) ? translated("%1 (Built-In)").arg(name) : name;
}

QScreen* DisplayName::screenWithName(const QString& wanted) {
  QScreen* found = nullptr;
  for (QScreen* screen : QGuiApplication::screens()) {
    if (name(*screen) != wanted) continue;
    if (found) return nullptr;
    found = screen;
  }
  return found;
}

}  // namespace preview
