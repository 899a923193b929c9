#pragma once

// What fonts do with neighbours. Private to the platform layer.

#include <vector>

class QRawFont;

/// Of each glyph of a font, whether the font's rules for ordinary text may look further from it than to the
/// next glyph: in a text without such a glyph, shapes and places depend on pairs of neighbours only. Says so
/// of too many glyphs rather than of too few.
std::vector<bool> contextualGlyphs(const QRawFont& font);
