#pragma once

#include <QStringList>

#include "foundation/UserDefaults.h"

namespace app {

/// The documents that were opened or saved lately, kept in the user's settings.
class RecentDocuments {
 public:
  static constexpr qsizetype most = 12;

  explicit RecentDocuments(foundation::UserDefaults& defaults) : m_defaults(defaults) {}

  /// The last one first. Those that are gone are left out, but not forgotten: their disk may be.
  [[nodiscard]] QStringList paths() const;
  void add(const QString& path);
  void clear();

 private:
  [[nodiscard]] QStringList stored() const;

  foundation::UserDefaults& m_defaults;
};

}  // namespace app
