#pragma once

#include <span>

namespace widgets {

/// A glyph as text: parts divided by '|', each "ink:outline" on a grid of 16 units, y down.
/// Inks: s stroke of 1 unit, f fill, h half-tone fill, o fill with a gap around it, g outline whose
/// inside is cleared, k cleared stroke. Outlines: the path commands M L H V C S Q A Z of SVG
/// (absolute), R x y w h radius, E cx cy rx ry.
struct GlyphSource {
  const char* name;
  const char* parts;
};

/// A glyph that is another one mirrored at the diagonal.
struct GlyphMirror {
  const char* name;
  const char* original;
};

[[nodiscard]] std::span<const GlyphSource> glyphSources();
[[nodiscard]] std::span<const GlyphMirror> mirroredGlyphs();

}  // namespace widgets
