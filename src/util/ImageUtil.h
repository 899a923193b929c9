#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

#include <cstdint>

class CGImage;
class NSImage;

/// Decodes, scales, fits, greys out and converts images, and steps through animations.
class TESSALINE_EXPORT ImageUtil final : public NSObject
{
public:
    /// Decodes `length` bytes of a picture file, which are copied. Null if they are no whole picture (see
    /// `NSImage`), and for null bytes or a length that is not positive.
    static Ref<NSImage> loadData_withLength(const char* data, std::int64_t length);

    /// A new image of the given size in points, with the content stretched to it on each axis: fit the
    /// size first to keep proportions. It shows nothing for an image that shows nothing, for null, and
    /// for a size that no image can be drawn in (see `NSImage::lockFocus`).
    static Ref<NSImage> resizeImage_size(NSImage* image, CGSize size);

    /// The size in which an image fits `bounds` with its proportions kept; one that fits as it is keeps
    /// its size. Factors and results have single precision.
    static CGSize getEqualScaleImageSize_imageSize(CGSize bounds, CGSize imageSize);

    /// A new image of the same size in points in which every pixel is the same translucent grey, but for
    /// those whose red component is exactly 1: these keep their colour. Pixels are counted by the size in
    /// points from the top-left, so of an image with more pixels than points only that part changes. It
    /// shows nothing for an image without a bitmap; null for null.
    static Ref<NSImage> convertToGray(NSImage* image);

    /// The image's first bitmap as a new picture of pixels; null without a bitmap, and for null.
    static Ref<CGImage> nsImageToCGImageRef(NSImage* image);

    /// Shows the frame `*frame` of an animated image and advances `*frame` to the next one: to 0 after the
    /// last, by one from a value outside of the frames, which leaves the frame that shows. Start at 0 and
    /// redraw the image after each call. Each animated bitmap of the image takes one frame, up to the
    /// first bitmap that is not animated; `*frame` stays if that comes first. Null does nothing.
    static void sepatateGifAnimation_withFrameCount(NSImage* image, int* frame);
};
