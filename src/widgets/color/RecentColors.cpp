#include "widgets/color/RecentColors.h"

namespace widgets {

RecentColors& RecentColors::shared() {
  static RecentColors recent;
  return recent;
}

void RecentColors::keepIn(foundation::UserDefaults& defaults, const QString& key) {
  m_defaults = &defaults;
  m_key = key;
  m_colors.clear();
  const QStringList names = defaults.value(key).toStringList().mid(0, kMost);
  for (const QString& name : names)
    if (QColor::isValidColor(name)) m_colors.append(QColor(name));
}

void RecentColors::add(const QColor& color) {
  m_colors.removeAll(color);
  m_colors.prepend(color);
  if (m_colors.size() > kMost) m_colors.resize(kMost);
  if (!m_defaults) return;
  QStringList names;
  for (const QColor& kept : std::as_const(m_colors)) names.append(kept.name(QColor::HexArgb));
  m_defaults->setValue(names, m_key);
}

}  // namespace widgets
