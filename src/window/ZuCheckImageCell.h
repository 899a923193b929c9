#pragma once

#include "platform/appkit/NSButtonCell.h"
#include "platform/foundation/Weak.h"

class NSAttributes;
class ZuOutlineItem;

/// An item's row in an outline with checks (`NSOutlineView`), as a button: the cell's image, which the
/// application makes show whether the item is checked, at the left of the frame; then the item's logo, the
/// title, and the item's count in parentheses. A press on the image, at any height of the row, turns round
/// whether the item of the pressed row is checked.
///
/// Logo, title and count begin at the indentation of the outline (whole points, less 8) and of the
/// item, in the outline's coordinates, whatever the x of the frame: the item's has to leave room for the
/// image. As one cell serves all rows, the application sets item, title and image before each is drawn. In
/// other views there is the base class's button, and presses do nothing.
class TESSALINE_EXPORT ZuCheckImageCell : public NSButtonCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// The item whose row is drawn; not kept alive. Default null: no logo, no indentation, and the count 0.
    Ref<ZuOutlineItem> item() const;
    void setItem(ZuOutlineItem* item);

    /// For the application. Default no.
    bool flagValue() const { return _flagValue; }
    void setFlagValue(bool flag) { _flagValue = flag; }

    /// Does nothing.
    void SetContactCheck() {}

    /// Draws logo, title and, unless it is negative, the count: white in a selected row of the outline that
    /// has the keyboard, in black "Arial" 12 elsewhere. Answers the place of the count, or if that does not
    /// show, of the title.
    NSRect drawTitle_withFrame_inView(NSAttributedString* title, NSRect frame, NSView* view) override;

    /// Draws the count, 10 points right of and 2 below the origin of `rect`.
    void drawRectangle_withAttri(NSRect rect, const NSAttributes& attributes);

    /// Takes a press. Always no: the row is selected as well.
    bool trackMouse_inRect_ofView_untilMouseUp(NSEvent* event, NSRect frame, NSView* view,
                                               bool untilMouseUp) override;

    /// The title and, if it shows, the count.
    Ref<NSString> accessibilityLabel() const override;
    /// Whether the item is checked.
    std::optional<bool> accessibilityChecked() const override;
    /// Turns round whether the row's item is checked. A press on the image calls it.
    void performCheckOfRow_inView(std::int64_t row, NSTableView* view) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    bool _flagValue = false;
    Weak<ZuOutlineItem> _item;
};
