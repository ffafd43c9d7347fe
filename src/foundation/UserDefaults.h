#pragma once

#include <QSettings>
#include <QVariantMap>

namespace foundation {

/// The user's settings: what was stored, else the registered default. Keys are unique strings;
/// values are what QSettings keeps.
class UserDefaults {
 public:
  /// Kept in the file (INI format), which need not exist.
  explicit UserDefaults(const QString& path);
  /// The user's own, under the XDG configuration folder.
  [[nodiscard]] static UserDefaults& standard();

  /// Adds to the registered defaults; a later registration of a key wins.
  void registerDefaults(const QVariantMap& defaults);
  /// Invalid when neither stored nor registered.
  [[nodiscard]] QVariant value(const QString& key) const;
  void setValue(const QVariant& value, const QString& key);
  /// Back to the registered default.
  void remove(const QString& key);

 private:
  QSettings m_settings;
  QVariantMap m_registered;
};

}  // namespace foundation
