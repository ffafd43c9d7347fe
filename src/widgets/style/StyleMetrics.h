#pragma once

#include <QStyleOption>
#include <optional>

class QWidget;

// The measures of TYStyle; nothing where Qt's own count.
namespace widgets {

/// What surrounds the content of a frame. Text areas have rounded corners, which their viewports
/// must keep clear of.
[[nodiscard]] int frameWidth(const QWidget* widget);
[[nodiscard]] std::optional<int> styleMetric(QStyle::PixelMetric metric, const QWidget* widget);
[[nodiscard]] std::optional<int> styleHintValue(QStyle::StyleHint hint);
/// From the size of what is in the control; `base` is what Qt would make of it.
[[nodiscard]] std::optional<QSize> contentsSize(QStyle::ContentsType type,
                                                const QStyleOption* option, const QSize& size,
                                                const QSize& base, const QWidget* widget);

}  // namespace widgets
