#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

/// One of the forms that an image has: a size in points, and a number of pixels. The base class shows
/// nothing; a class that draws by commands overrides `drawInRect` and leaves the pixels at 0.
class TESSALINE_EXPORT NSImageRep : public NSObject
{
public:
    NSSize size() const { return _size; }
    void setSize(NSSize size) { _size = size; }

    /// 0 means as many as there is need for.
    int pixelsWide() const { return _pixelsWide; }
    int pixelsHigh() const { return _pixelsHigh; }
    void setPixelsWide(int pixels) { _pixelsWide = pixels; }
    void setPixelsHigh(int pixels) { _pixelsHigh = pixels; }

    /// Draws the whole, stretched to `rect`, into the current graphics context. It stands upright there
    /// whether the context is flipped or not. Returns whether there was something to draw and a context
    /// to draw it into.
    virtual bool drawInRect(NSRect rect);

    /// What a copy of its image takes along: this one itself, unless it has pixels that can change.
    virtual Ref<NSImageRep> copy();

private:
    NSSize _size;
    int _pixelsWide = 0;
    int _pixelsHigh = 0;
};
