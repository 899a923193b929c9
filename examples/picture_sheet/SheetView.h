#pragma once

#include <platform/appkit/NSView.h>

#include <vector>

struct Look;

/// Looks of a control beside and below each other, each over its name.
class SheetView final : public NSView
{
public:
    /// Takes the size that `looks` need; their views become subviews.
    SheetView* initWithLooks(const std::vector<Look>& looks);

    bool isFlipped() const override { return true; }
    void drawRect(NSRect rect) override;

private:
    struct Caption {
        const char* text;
        NSRect rect;
    };

    std::vector<Caption> _captions;
};
