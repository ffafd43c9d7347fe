#pragma once

#include <QStringList>

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"

namespace canvas {

/// The components that the toolbar offers, from the resource "ToolbarComponents" (a property list),
/// and the order of the toolbar's items. An entry without a component of its own is a menu of
/// subcomponents.
class ToolbarComponents {
 public:
  struct Entry {
    QString identifier;
    QString title;
    QString component;  ///< name of the standard component; empty for menus and separators
    QString icon;       ///< of a subcomponent; may be empty
    double width = 0;   ///< points of a menu's button; 0: menuWidth
    QList<Entry> subcomponents;

    [[nodiscard]] bool isSeparator() const { return title == QLatin1String("SEPARATOR"); }
    /// The drawing of the toolbar's item.
    [[nodiscard]] QString imageName() const;
  };
  static constexpr double menuWidth = 43;

  /// Read once; without the resource there are no entries, and the log says why.
  [[nodiscard]] static const ToolbarComponents& shared();
  [[nodiscard]] static foundation::Result<ToolbarComponents> fromFile(const QString& path);

  [[nodiscard]] const QList<Entry>& entries() const { return m_entries; }
  /// The identifiers of all entries, in their order.
  [[nodiscard]] QStringList toolbarComponentIdentifier() const;
  [[nodiscard]] static QStringList standardToolbarIdentifier();
  /// Those of the components, then the standard ones.
  [[nodiscard]] QStringList allToolbarIdentifier() const;
  /// The standard component of an item, or of an entry of its menu; empty when there is none.
  [[nodiscard]] QString componentFor(const QString& identifier, int subcomponent = -1) const;

  static const QString& space();
  static const QString& flexibleSpace();

 private:
  QList<Entry> m_entries;
};

}  // namespace canvas
