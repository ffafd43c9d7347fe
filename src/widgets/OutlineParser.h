#pragma once

#include <QPainterPath>
#include <QStringView>
#include <optional>

namespace widgets {

/// Reads an outline in the notation of GlyphSource. Arcs must be circular. Nothing when a command
/// is unknown or its numbers are missing.
[[nodiscard]] std::optional<QPainterPath> parseOutline(QStringView text);

}  // namespace widgets
