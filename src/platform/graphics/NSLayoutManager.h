#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/NSRange.h"

#include <memory>
#include <vector>

class NSTextContainer;
class NSTextStorage;
class TextLayout;

/// Lays the text of a storage out in a container, and tells where everything came to stand, in the
/// container's coordinates (origin top-left, y downwards). Whatever is asked, the answer is up to date with
/// the storage and the container. Without either, everything answers zero.
///
/// One glyph stands for each UTF-16 unit of the text, so that glyph indexes are character indexes. Units
/// that are shown as one (surrogate pairs, combining marks) share their place: a range that begins or ends
/// within them is taken for the range around them.
///
/// A text that ends with a line end has one more, empty line; an empty text has one empty line in the
/// height of its font.
class TESSALINE_EXPORT NSLayoutManager final : public NSObject
{
public:
    NSLayoutManager();

    /// Borrowed from the storage, which owns the layout manager; null before and after.
    NSTextStorage* textStorage() const { return _textStorage; }

    /// Takes the container that the text is laid out in. There is one only: another takes its place.
    void addTextContainer(Ref<NSTextContainer> container);
    NSTextContainer* textContainer() const { return _textContainer.get(); }

    std::size_t numberOfGlyphs() const;

    /// The glyphs whose lines are within the container's height; lays the text out.
    NSRange glyphRangeForTextContainer(const NSTextContainer* container) const;
    /// The rectangle around these lines: as wide as they are, with the padding at their ends.
    NSRect usedRectForTextContainer(const NSTextContainer* container) const;

    /// The range widened to whole characters as they are shown. `actual`, unless null, receives the same.
    NSRange glyphRangeForCharacterRange_actualCharacterRange(NSRange characters, NSRange* actual) const;
    std::size_t characterIndexForGlyphAtIndex(std::size_t glyph) const { return glyph; }

    /// The line that a glyph is on, over the container's whole width, or as far as it is used (with the
    /// padding). `effective`, unless null, receives the line's glyphs, with its line end. An index behind
    /// the last glyph means the last line.
    NSRect lineFragmentRectForGlyphAtIndex_effectiveRange(std::size_t glyph, NSRange* effective) const;
    NSRect lineFragmentUsedRectForGlyphAtIndex_effectiveRange(std::size_t glyph, NSRange* effective) const;

    /// The rectangles around the glyphs of a range, in the height of their lines: one or, in text of both
    /// directions, several for each line. Line ends take no room, nor do spaces where a line is wrapped.
    std::vector<NSRect> enclosingRectsForGlyphRange_inTextContainer(NSRange glyphs,
                                                                    const NSTextContainer* container) const;
    /// The rectangle around all of these; `NSZeroRect` if there is none.
    NSRect boundingRectForGlyphRange_inTextContainer(NSRange glyphs, const NSTextContainer* container) const;

    /// The glyph at a point, or else the nearest on the nearest line within the container's height. 0 for
    /// an empty text.
    std::size_t glyphIndexForPoint_inTextContainer(NSPoint point, const NSTextContainer* container) const;

    /// Draws glyphs into the current graphics context. The layout's top-left corner comes to stand at
    /// `origin`, and the lines follow downwards on the screen, whichever way y grows.
    void drawGlyphsForGlyphRange_atPoint(NSRange glyphs, NSPoint origin) const;

    /// The shaped text, borrowed until the next question; defined inside the platform layer.
    const TextLayout& layout() const;

private:
    friend class NSTextStorage;

    ~NSLayoutManager() override;

    /// How many lines are within the container's height.
    std::size_t linesIn(const NSTextContainer* container) const;

    NSTextStorage* _textStorage = nullptr; // borrowed: cleared by the storage
    Ref<NSTextContainer> _textContainer;

    // The last layout, and what it was made from.
    mutable std::shared_ptr<const TextLayout> _layout;
    mutable std::size_t _changeCount = 0;
    mutable double _width = 0.0;
};
