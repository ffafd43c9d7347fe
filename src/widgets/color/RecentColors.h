#pragma once

#include <QColor>
#include <QList>

#include "foundation/UserDefaults.h"

namespace widgets {

/// The colours chosen last, newest first; for the whole program.
class RecentColors {
 public:
  static constexpr int kMost = 10;

  [[nodiscard]] static RecentColors& shared();

  /// Reads them from the settings and keeps them there from now on; without, they last as long as
  /// the program runs.
  void keepIn(foundation::UserDefaults& defaults, const QString& key);
  void add(const QColor& color);
  [[nodiscard]] const QList<QColor>& colors() const { return m_colors; }

 private:
  QList<QColor> m_colors;
  foundation::UserDefaults* m_defaults = nullptr;
  QString m_key;
};

}  // namespace widgets
