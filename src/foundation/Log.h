#pragma once

#include <QString>

namespace foundation {

/// A failure that someone should look at; shown as a warning of the log category "tessary".
void logError(const QString& message);
/// A fact that was asked for; always shown.
void logInfo(const QString& message);
/// For developers; silent unless QT_LOGGING_RULES switches "tessary.debug" on.
void logDebug(const QString& message);

}  // namespace foundation
