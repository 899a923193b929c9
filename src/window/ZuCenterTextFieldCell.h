#pragma once

#include "platform/appkit/NSTextFieldCell.h"

/// A text field's cell with its text in the middle of the height. A text higher than the cell begins at the
/// top.
class TESSALINE_EXPORT ZuCenterTextFieldCell : public NSTextFieldCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// Draws the cell into what is left of `frame` below the text's upper edge.
    void drawWithFrame_inView(NSRect frame, NSView* view) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;
};
