#pragma once

#include "platform/appkit/NSTextFieldCell.h"

/// The header of a column: its text in the middle of the height of a light face with a line below and at its
/// right edge.
class TESSALINE_EXPORT NSTableHeaderCell : public NSTextFieldCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// Draws the header, darker while it is pressed (`highlighted`), in the header view's coordinates.
    virtual void drawWithFrame_highlighted_inView(NSRect frame, bool highlighted, NSView* view);
    /// Draws one that is not pressed.
    void drawWithFrame_inView(NSRect frame, NSView* view) override;
    /// Draws the text.
    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;
};
