#pragma once

#include "platform/appkit/NSCell.h"

/// Where an image stands in its frame; in the middle of its height in any case.
enum class NSImageAlignment : unsigned long { Center = 0, Left = 4 };

/// A cell that shows its image, made smaller where the frame has not enough room for it.
class TESSALINE_EXPORT NSImageCell : public NSCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// Takes an `NSImage` as image, all else as none.
    void setObjectValue(NSObject* value) override;

    /// Default `Center`.
    NSImageAlignment imageAlignment() const { return _imageAlignment; }
    void setImageAlignment(NSImageAlignment alignment) { _imageAlignment = alignment; }

    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    NSImageAlignment _imageAlignment = NSImageAlignment::Center;
};
