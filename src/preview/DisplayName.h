#pragma once

#include <QString>

class QScreen;

namespace preview {

/// Screens by the names that people know them by.
class DisplayName {
 public:
  /// The product's name; "… (Built-In)" for the panel of a laptop. Where the display tells none,
  /// the connector, and where there is none either, "Unknown Display (address)".
  [[nodiscard]] static QString name(const QScreen& screen);
  [[nodiscard]] static QString name(const QString& product, const QString& connector,
                                    const void* address);
  /// The screen whose name this is; none when several have it.
  [[nodiscard]] static QScreen* screenWithName(const QString& name);
};

}  // namespace preview
