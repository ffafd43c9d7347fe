#pragma once

#include <QByteArray>

namespace foundation {

// Texts in the manner of the programs that write most RTF, with what they surround texts with.
[[nodiscard]] QByteArray cocoaRtf();
[[nodiscard]] QByteArray wordRtf();
[[nodiscard]] QByteArray officeRtf();

}  // namespace foundation
