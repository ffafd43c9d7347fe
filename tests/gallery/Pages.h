#pragma once

#include <QWidget>

// The pages of the gallery: every control in its states, for the eye.
namespace gallery {

/// Rows as an inspector has them, at rest and in every state.
QWidget* inspectorPage();
/// The same fields for several values at once.
QWidget* mixedPage();
/// Standard widgets under the style: lists, tabs, buttons, ranges.
QWidget* standardPage();
/// Toolbar, transport row and an empty panel.
QWidget* barsPage();
QWidget* glyphPage();

}  // namespace gallery
