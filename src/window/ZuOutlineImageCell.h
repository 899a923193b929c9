#pragma once

#include "platform/appkit/NSTextFieldCell.h"
#include "platform/foundation/Weak.h"

class NSAttributes;
class ZuOutlineItem;

/// An item's row in an outline with checks (`NSOutlineView`): its logo, the cell's text, and the item's count
/// in parentheses. A press as far right as the cell's image would reach, from the frame's left edge, turns
/// round whether the item of the pressed row is checked; the image itself the cell does not draw.
///
/// What is drawn begins at the indentation of the outline (whole points, less 8) and of the item,
/// in the outline's coordinates, whatever the x of the frame. As one cell serves all rows, the application
/// sets item and text before each is drawn. In other views the text alone is drawn, as by the base class, and
/// presses do nothing.
class TESSALINE_EXPORT ZuOutlineImageCell : public NSTextFieldCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// The item whose row is drawn; not kept alive. Default null: no logo, no indentation, and the count 0.
    Ref<ZuOutlineItem> item() const;
    void setItem(ZuOutlineItem* item);

    /// Draws logo, text and, unless it is negative, the count: white in a selected row of the outline that
    /// has the keyboard, in black "Arial" 12 elsewhere.
    void drawWithFrame_inView(NSRect frame, NSView* view) override;

    /// Draws the count, 10 points right of and 2 below the origin of `rect`.
    void drawRectangle_withAttri(NSRect rect, const NSAttributes& attributes);

    /// Takes a press. Always no: the row is selected as well.
    bool trackMouse_inRect_ofView_untilMouseUp(NSEvent* event, NSRect frame, NSView* view,
                                               bool untilMouseUp) override;

    /// The text and, if it shows, the count.
    Ref<NSString> accessibilityLabel() const override;
    /// Whether the item is checked.
    std::optional<bool> accessibilityChecked() const override;
    /// Turns round whether the row's item is checked. A press on the image calls it.
    void performCheckOfRow_inView(std::int64_t row, NSTableView* view) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    Weak<ZuOutlineItem> _item;
};
