#include "util/ImageUtil.h"

#include "platform/foundation/NSData.h"
#include "platform/foundation/NSNumber.h"
#include "platform/graphics/CGImage.h"
#include "platform/graphics/NSBitmapImageRep.h"
#include "platform/graphics/NSImage.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr std::uint16_t kFull = 0xFFFF;
constexpr std::uint16_t kGray = kFull / 255 * 127;
constexpr NSPixel kGrayedOut{kGray, kGray, kGray, kFull / 5};

/// How many whole numbers from 0 are less than `length`, but no more than `most`.
int countBelow(double length, int most)
{
    return length > 0.0 ? static_cast<int>(std::min<double>(std::ceil(length), most)) : 0;
}

void grayOut(NSBitmapImageRep& bitmap, NSSize size)
{
    const int rows = countBelow(size.height, bitmap.pixelsHigh());
    const int columns = countBelow(size.width, bitmap.pixelsWide());
    for (int y = 0; y < rows; ++y) {
        for (NSPixel& pixel : bitmap.row(y).first(static_cast<std::size_t>(columns))) {
            if (pixel.red != kFull) {
                pixel = kGrayedOut;
            }
        }
    }
}

double inSinglePrecision(double value)
{
    // In memory: GCC 12 takes two such conversions side by side for none, from -O2 on.
    const volatile auto rounded = static_cast<float>(value);
    return static_cast<double>(rounded);
}

} // namespace

Ref<NSImage> ImageUtil::loadData_withLength(const char* data, std::int64_t length)
{
    if (data == nullptr || length <= 0) {
        return nullptr;
    }
    const Ref<NSData> bytes = NSData::dataWithBytes_length(data, static_cast<std::size_t>(length));
    return make<NSImage>()->initWithData(bytes.get());
}

Ref<NSImage> ImageUtil::resizeImage_size(NSImage* image, CGSize size)
{
    const NSRect rect{{}, size};
    Ref<NSImage> resized = make<NSImage>()->initWithSize(size);
    const Ref<NSImageRep> best =
        image == nullptr ? nullptr : image->bestRepresentationForRect_context_hints(rect, nullptr, nullptr);
    if (best) {
        resized->lockFocus();
        best->drawInRect(rect);
        resized->unlockFocus();
    }
    return resized;
}

CGSize ImageUtil::getEqualScaleImageSize_imageSize(CGSize bounds, CGSize imageSize)
{
    if (bounds.width >= imageSize.width && bounds.height >= imageSize.height) {
        return imageSize;
    }
    const auto factor = [](double extent, double room) {
        return extent > room ? static_cast<float>(extent / room) : 1.0F;
    };
    const float horizontal = factor(imageSize.width, bounds.width);
    const float vertical = factor(imageSize.height, bounds.height);
    const CGSize fitting = horizontal >= vertical
                               ? CGSize{bounds.width, imageSize.height / static_cast<double>(horizontal)}
                               : CGSize{imageSize.width / static_cast<double>(vertical), bounds.height};
    return {inSinglePrecision(fitting.width), inSinglePrecision(fitting.height)};
}

Ref<NSImage> ImageUtil::convertToGray(NSImage* image)
{
    if (image == nullptr) {
        return nullptr;
    }
    const Ref<NSBitmapImageRep> bitmap =
        NSBitmapImageRep::imageRepWithData(image->TIFFRepresentation().get());
    if (bitmap) {
        grayOut(*bitmap, image->size());
    }
    Ref<NSImage> gray = make<NSImage>()->initWithSize(image->size());
    gray->addRepresentation(bitmap);
    return gray;
}

Ref<CGImage> ImageUtil::nsImageToCGImageRef(NSImage* image)
{
    const Ref<NSData> data = image == nullptr ? nullptr : image->TIFFRepresentation();
    return CGImageSourceCreateImageAtIndex(CGImageSourceCreateWithData(data.get()).get(), 0);
}

void ImageUtil::sepatateGifAnimation_withFrameCount(NSImage* image, int* frame)
{
    if (image == nullptr || frame == nullptr) {
        return;
    }
    for (const Ref<NSImageRep>& representation : image->representations()) {
        auto* bitmap = dynamic_cast<NSBitmapImageRep*>(representation.get());
        if (bitmap == nullptr) {
            continue;
        }
        const Ref<NSNumber> count = bitmap->valueForProperty(NSImageFrameCount);
        if (!count) {
            return;
        }
        bitmap->setProperty_withValue(NSImageCurrentFrame, NSNumber::numberWithInteger(*frame).get());
        // Wraps from the greatest number to the least, where a signed sum would overflow.
        *frame = static_cast<int>(static_cast<unsigned>(*frame) + 1U);
        if (*frame == count->integerValue()) {
            *frame = 0;
        }
    }
}
