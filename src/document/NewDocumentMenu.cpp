#include "document/NewDocumentMenu.h"

#include <algorithm>

namespace document {

NewDocumentMenu::NewDocumentMenu(const model::VideoModes& modes) {
  QString group;
  modes.enumerateSupportedModes([&](const model::VideoMode& mode, bool&) {
    if (mode.pixelFormat != model::VideoMode::rgba || (mode.scan != 0 && mode.scan != 1)) return;
    if (!m_items.isEmpty() && mode.group != group) m_items.append(Item{});
    m_items.append(Item{mode.name});
    group = mode.group;
  });
}

qsizetype NewDocumentMenu::indexOf(const QString& title) const {
  const auto found = std::find_if(m_items.begin(), m_items.end(), [&](const Item& item) {
    return !item.isSeparator() && item.title == title;
  });
  return found == m_items.end() ? -1 : found - m_items.begin();
}

}  // namespace document
