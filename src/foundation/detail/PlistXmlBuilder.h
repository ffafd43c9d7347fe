#pragma once

#include <QByteArrayView>

#include "foundation/PropertyValue.h"

namespace foundation::detail {

/// The value of XML text that checkPlistXml() accepted; anything else is undefined behaviour.
/// A dictionary with the one key CF$UID becomes the reference that it spells.
[[nodiscard]] PropertyValue buildCheckedXml(QByteArrayView text);

}  // namespace foundation::detail
