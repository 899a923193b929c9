#pragma once

#include "platform/appkit/NSView.h"

/// A plain container whose origin is its top-left corner. It draws nothing of its own.
class TESSALINE_EXPORT ZuFlippedView : public NSView
{
public:
    ZuFlippedView* initWithFrame(NSRect frame) override;
    bool isFlipped() const override { return true; }

    const ClassTable& classTable() const override;
    static const ClassTable table;
};
