#include "foundation/Log.h"

#include <QLoggingCategory>

namespace foundation {

namespace {
Q_LOGGING_CATEGORY(category, "tessary", QtInfoMsg)
}

void logError(const QString& message) {
  qCWarning(category).noquote() << message;
}
void logInfo(const QString& message) {
  qCInfo(category).noquote() << message;
}

void logDebug(const QString& message) {
  qCDebug(category).noquote() << message;
}

}  // namespace foundation
