#pragma once

#include "platform/appkit/NSCell.h"

/// A cell that shows its text from the top of its frame, unwrapped: with 2 points of room at either side,
/// and an ellipsis where there is not enough. The text is black, white in a highlighted row, grey while the
/// cell is disabled, if it has no colour of its own.
class TESSALINE_EXPORT NSTextFieldCell : public NSCell
{
public:
    NSTextFieldCell();

    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// The colour of a text that comes without one. Default null, for those above.
    Ref<NSColor> textColor() const;
    void setTextColor(Ref<NSColor> color);

    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    NSTextFieldCell(const NSTextFieldCell& other);
    ~NSTextFieldCell() override;

private:
    Ref<NSColor> _textColor;
};
