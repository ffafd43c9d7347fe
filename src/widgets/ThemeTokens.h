#pragma once

#include <QMetaType>
#include <QtGlobal>

namespace widgets {

// Every colour of the interface: token, dark, light (RRGGBBAA), what it is for.
// clang-format off
#define TESSARY_THEME_TOKENS(X) \
  X(Window, 0x121316FF, 0xDFE1E6FF, "frame, menu bar, gaps between panels") \
  X(Panel, 0x1B1C20FF, 0xF3F4F6FF, "panels, sheets") \
  X(Raised, 0x222328FF, 0xFAFAFBFF, "toolbar, pane headers, table headers") \
  X(Field, 0x111215FF, 0xFFFFFFFF, "fields, wells") \
  X(Control, 0x2C2E35FF, 0xFFFFFFFF, "buttons, pop-ups, segments") \
  X(ControlHover, 0x373A43FF, 0xECEDF1FF, "the same under the pointer") \
  X(ControlPressed, 0x17181BFF, 0xD8DAE0FF, "the same while pressed") \
  X(ControlOn, 0x474A57FF, 0xD3D6DEFF, "chosen segment, tab, place") \
  X(Separator, 0x2D2F36FF, 0xD6D8DEFF, "hairlines inside panels (decoration)") \
  X(Border, 0x6B6E7AFF, 0x868A95FF, "outline of controls, ticks") \
  X(Text, 0xE7E8ECFF, 0x191A1EFF, "values, titles, menu items") \
  X(Text2, 0xA9ACB7FF, 0x545762FF, "row labels, column titles, glyphs at rest") \
  X(Text3, 0x8F939FFF, 0x5F626DFF, "placeholders, units, secondary lines") \
  X(TextDisabled, 0x686B76FF, 0x9A9DA7FF, "disabled (exempt)") \
  X(Accent, 0x8C95FFFF, 0x4550E0FF, "focus ring, links, active glyph") \
  X(AccentFill, 0x4F5AE2FF, 0x4550E0FF, "default button, checked box") \
  X(AccentHover, 0x5964E8FF, 0x3B45CCFF, "default button under the pointer") \
  X(OnAccent, 0xFFFFFFFF, 0xFFFFFFFF, "text and glyphs on accentFill") \
  X(SelectionRow, 0x2B2F57FF, 0xD9DCFBFF, "selected rows") \
  X(DropTarget, 0x8C95FF26, 0x4550E01F, "wash over a drop target") \
  X(CanvasSurround, 0x0F0F0FFF, 0xA4A4A4FF, "around the picture; neutral on purpose") \
  X(Chess1, 0xC9C9C9FF, 0xC9C9C9FF, "Chessboard1") \
  X(Chess2, 0xB9B9B9FF, 0xB9B9B9FF, "Chessboard2") \
  X(CanvasSelection, 0xFFFFFFB3, 0xFFFFFFB3, "outline and handles of a component") \
  X(CanvasSelectionEdge, 0x0000008C, 0x0000008C, "1 px dark contour outside them") \
  X(RubberBand, 0xFFFFFFFF, 0xFFFFFFFF, "RubberBand, over a dark 1 px") \
  X(Guide, 0x00C0FFFF, 0x00C0FFFF, "guides, outer safe area (fixed)") \
  X(SafeInner, 0xFF0000FF, 0xFF0000FF, "inner safe area (fixed)") \
  X(CanvasRuler, 0x1F2024FF, 0xECEDF0FF, "ruler strips of the canvas") \
  X(TimelineRuler, 0x222328FF, 0xFAFAFBFF, "rulerBackgroundColor") \
  X(TimelineRow, 0x1B1C20FF, 0xF3F4F6FF, "even rows") \
  X(TimelineRowAlt, 0x1F2025FF, 0xEBECF0FF, "odd rows, corner of time ruler") \
  X(TimelineGrid, 0x2B2D34FF, 0xDCDEE4FF, "second lines in the rows") \
  X(Bar, 0x676C83FF, 0x7F859CFF, "component bar") \
  X(BarSelected, 0x7F89FAFF, 0x4F59E2FF, "component bar, selected") \
  X(BarHidden, 0x6B6E7AFF, 0x868A95FF, "hidden component: outline only") \
  X(Keyframe, 0xBDC1CEFF, 0x5B5F6EFF, "componentKeyframeColor") \
  X(KeyframeSelected, 0xFFC53DFF, 0xCC6600FF, "componentKeyframeSelectedColor") \
  X(Marker, 0xFF5B52FF, 0xDB2B22FF, "editorMarkerColor") \
  X(StopFrame, 0x2FD0C0FF, 0x00776DFF, "stopFrameColor") \
  X(Playing, 0x46D17FFF, 0x14763FFF, "play control, status while playing") \
  X(Warning, 0xFFB547FF, 0x8F5200FF, "findings, missing fonts") \
  X(WarningSoft, 0x3A2E18FF, 0xFBEBD0FF, "ground of a warning strip") \
  X(Broken, 0xFF7D93FF, 0xBC1F4BFF, "missing file, errors") \
  X(BrokenSoft, 0x40212AFF, 0xFADDE4FF, "ground of a broken component") \
  X(Shadow, 0x00000099, 0x0A0C1440, "under pop-ups and sheets")
// clang-format on

#define TESSARY_TOKEN_NAME(name, dark, light, use) name,
/// The colours of the interface by their use.
enum class Token { TESSARY_THEME_TOKENS(TESSARY_TOKEN_NAME) };
#undef TESSARY_TOKEN_NAME

#define TESSARY_TOKEN_COUNT(name, dark, light, use) +1
inline constexpr int kTokenCount = 0 TESSARY_THEME_TOKENS(TESSARY_TOKEN_COUNT);
#undef TESSARY_TOKEN_COUNT

}  // namespace widgets
