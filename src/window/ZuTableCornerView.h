#pragma once

#include "platform/appkit/NSView.h"

/// A flat light-grey patch for the corner where a table's header meets its vertical scroller.
class TESSALINE_EXPORT ZuTableCornerView : public NSView
{
public:
    ZuTableCornerView* initWithFrame(NSRect frame) override;

    /// Fills `rect`, and draws its lower and upper edges in the same grey.
    void drawRect(NSRect rect) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;
};
