#pragma once

#include <QByteArray>
#include <QList>

#include "foundation/PropertyValue.h"
#include "foundation/Result.h"

namespace model {

class QuartzComponent;

/// Components as a clipboard holds them: a non-keyed archive of an array with one component
/// dictionary each.
class ComponentClipboard {
 public:
  [[nodiscard]] static QString type() { return QStringLiteral("ComponentPBoardType"); }
  [[nodiscard]] static foundation::Result<QByteArray> dataForComponents(
      const QList<QuartzComponent*>& components);
  /// Fails for bytes that hold no such array.
  [[nodiscard]] static foundation::Result<QList<foundation::PropertyDictionary>>
  dictionariesFromData(const QByteArray& data);
};

}  // namespace model
