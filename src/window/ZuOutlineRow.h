#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/Ref.h"

#include <cstdint>
#include <optional>

class NSAttributes;
class NSCell;
class NSEvent;
class NSOutlineView;
class NSString;
class NSView;
class ZuOutlineItem;

/// What the cells of outlines with checks have in common: where the parts of an item's row are, its logo and
/// count, and what a press does. Made by a cell for one call.
class ZuOutlineRow
{
public:
    /// Without an item there is no logo, nothing is indented, and the count is 0.
    ZuOutlineRow(const NSCell& cell, Ref<ZuOutlineItem> item);
    ~ZuOutlineRow();

    /// Draws the logo, if there is one, where the row is in `frame`, and answers the place of a text of that
    /// size behind it.
    NSRect drawLogo(NSRect frame, NSSize textSize, const NSOutlineView& view) const;

    /// The place of the count, which is as large as that of the text; without a value if it does not show.
    std::optional<NSRect> placeOfCount(NSRect text) const;
    /// Of a row in `frame`.
    NSAttributes attributesOfCount(NSRect frame, NSOutlineView& view) const;
    void drawCount(NSRect rect, const NSAttributes& attributes) const;

    /// The cell's text and, if it shows, the count.
    Ref<NSString> label() const;
    /// Without a value if there is no item.
    std::optional<bool> isChecked() const;

    /// Has the cell toggle the check of the pressed row if the press is as far right of the left edge of
    /// `frame` as the cell's image reaches.
    static void takePress(NSCell& cell, const NSEvent& event, NSRect frame, NSView* view);
    /// Turns round whether the item of a row is checked. Nothing happens if there is none, or if `view` is no
    /// outline.
    static void toggle(std::int64_t row, const NSView* view);

private:
    std::int64_t number() const;

    const NSCell& _cell;
    Ref<ZuOutlineItem> _item;
};
