#include "widgets/Accessibility.h"

#include <QAccessibleWidget>

#include "widgets/TYPathControl.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYSheet.h"
#include "widgets/color/ColorPlane.h"
#include "widgets/color/ColorPopover.h"

namespace widgets {
namespace {

constexpr const char* roleProperty = "accessibleRole";

QAccessibleInterface* make(const QString&, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  if (!widget) return nullptr;
  if (qobject_cast<TYSheet*>(widget)) return new QAccessibleWidget(widget, QAccessible::Dialog);
  if (qobject_cast<TYSegmentedControl*>(widget) || qobject_cast<TYPathControl*>(widget))
    return new QAccessibleWidget(widget, QAccessible::Grouping);
  if (qobject_cast<ColorPlane*>(widget) || qobject_cast<ColorPopover*>(widget))
    return new QAccessibleWidget(widget, QAccessible::ColorChooser);
  if (const QVariant role = widget->property(roleProperty); role.isValid())
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
  return nullptr;
}

}  // namespace

void installAccessibility() {
  static const bool installed = (QAccessible::installFactory(make), true);
  Q_UNUSED(installed)
}

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
  widget.setProperty(roleProperty, static_cast<int>(role));
}

}  // namespace widgets
