#pragma once

#include "platform/appkit/NSTableHeaderCell.h"

/// The header of a column with a face that passes from white at the top to a light grey, and a grey line
/// below, a point high.
class TESSALINE_EXPORT ZuTableHeaderCell : public NSTableHeaderCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// Draws the face, a tenth darker while it is pressed (`highlighted`), the line, and the title. Each
    /// call writes a line with the frame to standard error.
    void drawWithFrame_highlighted_inView(NSRect frame, bool highlighted, NSView* view) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;
};
