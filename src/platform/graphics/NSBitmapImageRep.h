#pragma once

#include "platform/graphics/NSImageRep.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

class NSData;
class NSNumber;

/// Properties of a bitmap. `NSImageFrameCount`, which cannot be set, is the number of frames of a picture
/// in a format with animations (GIF, WebP), at least 1. `NSImageCurrentFrame` is the frame that shows, 0
/// at first. Other pictures have neither.
enum NSBitmapImageProperty { NSImageFrameCount, NSImageCurrentFrame };

/// The components of a pixel: from 0 to 0xFFFF, colours not multiplied by alpha.
struct NSPixel {
    std::uint16_t red = 0;
    std::uint16_t green = 0;
    std::uint16_t blue = 0;
    std::uint16_t alpha = 0;

    bool operator==(const NSPixel&) const = default;
};

/// A picture of pixels. Its components keep the values that they were read with, save in TIFF files with
/// 8 bits to the component and alpha: those come multiplied by alpha from the system's reader, so that
/// the colours of translucent pixels are rounded (255 stays 255). Of 16 bits to the component, 8 are kept
/// in a picture of more than 64 Mi pixels.
class TESSALINE_EXPORT NSBitmapImageRep final : public NSImageRep
{
public:
    /// Decodes the first picture of a file in one of the formats PNG, JPEG, GIF, TIFF, BMP, ICO, CUR and
    /// WebP; BigTIFF is not known. Its size in points is its size in pixels. Null if the bytes are no
    /// whole file, save that of ICO and CUR the picture itself has to be whole, or if it would take more
    /// than 512 MiB decoded. An animation keeps the data and decodes a frame when it is set.
    static Ref<NSBitmapImageRep> imageRepWithData(NSData* data);

    /// All pictures of a file (the pages of TIFF, the sizes of ICO and CUR): those before the first
    /// that cannot be decoded, at most 256, and as many as take 512 MiB together. Empty if there are none.
    static std::vector<Ref<NSImageRep>> imageRepsWithData(NSData* data);

    /// The shown pixels as a TIFF file. Null if the system has no writer of TIFF. It restores every
    /// component, unless the picture has alpha and more than 64 Mi pixels: then as with files of 8 bits.
    Ref<NSData> TIFFRepresentation() const;

    /// Null for a property that the bitmap does not have.
    Ref<NSNumber> valueForProperty(NSBitmapImageProperty property) const;

    /// A current frame outside of 0 to the number of frames less 1, or one that cannot be decoded, leaves
    /// the one that shows. Going on to the next frame is cheap; going back decodes all from the first.
    void setProperty_withValue(NSBitmapImageProperty property, NSNumber* value);

    /// The pixels of a row, to read and write; row 0 is the topmost. Empty if there is no such row. They
    /// are valid until this object is used otherwise. The first use gives the bitmap 16 bits to the
    /// component, in which 255 of 8 bits becomes 0xFFFF and no value is rounded. Setting a current frame
    /// undoes what was written.
    std::span<NSPixel> row(int y);

    bool drawInRect(NSRect rect) override;
    /// A bitmap with pixels of its own, which show the same frame.
    Ref<NSImageRep> copy() override;

    /// The toolkit's side of the bitmap; defined inside the platform layer.
    struct Native;
    const Native& native() const { return *_native; }
    explicit NSBitmapImageRep(std::unique_ptr<Native> native);

private:
    ~NSBitmapImageRep() override;

    std::unique_ptr<Native> _native;
};
