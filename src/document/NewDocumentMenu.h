#pragma once

#include <QList>
#include <QString>

#include "model/VideoModes.h"

namespace document {

/// The formats from which new documents are chosen, as menus list them.
class NewDocumentMenu {
 public:
  struct Item {
    QString title;  ///< the format's name; empty: a separator
    [[nodiscard]] bool isSeparator() const { return title.isEmpty(); }
  };

  /// The formats with pixels of red, green, blue and alpha; a separator between groups.
  explicit NewDocumentMenu(const model::VideoModes& modes = model::VideoModes::standard());

  [[nodiscard]] const QList<Item>& items() const { return m_items; }
  /// Of the item that the shortcut for new documents belongs to; -1 when the format is not listed.
  [[nodiscard]] qsizetype indexOf(const QString& title) const;

 private:
  QList<Item> m_items;
};

}  // namespace document
