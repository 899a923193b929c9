#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>

class NSString;

/// How a drawn image combines with what is under it.
enum class NSCompositingOperation { SourceOver = 2 };

/// A picture with a size in points, which may differ from its size in pixels.
class TESSALINE_EXPORT NSImage : public NSObject
{
public:
    NSImage();

    /// An image of the given size that shows nothing.
    NSImage* initWithSize(NSSize size);

    /// Decodes a picture file. Its size in points is its size in pixels, or half of that if the file's
    /// base name ends in "@2x". Null if it cannot be read, is no picture, or would take more than 128 MiB
    /// decoded.
    NSImage* initWithContentsOfFile(NSString* path);

    /// Decodes the bytes of a picture file; null under the same conditions.
    NSImage* initWithData(std::span<const std::byte> data);

    NSSize size() const;

    /// A name that tells images apart, in the record of a drawing for instance; empty by default.
    const std::string& name() const { return _name; }
    void setName(std::string name) { _name = std::move(name); }

    /// Draws the whole image, which is what a `fromRect` of `NSZeroRect` stands for and all that is
    /// provided for, scaled into `rect` of the current graphics context and faded by `fraction` (1 is
    /// opaque). In a flipped context the image stands upright only if `respectFlipped` is set. No hints
    /// exist.
    void drawInRect_fromRect_operation_fraction_respectFlipped_hints(NSRect rect, NSRect fromRect,
                                                                     NSCompositingOperation operation,
                                                                     double fraction, bool respectFlipped,
                                                                     std::nullptr_t hints) const;

    /// Writes the picture as a PNG file. Returns whether that succeeded.
    bool writePNGToFile(const std::string& path) const;

    /// The toolkit's side of the image; defined inside the platform layer.
    struct Native;
    const Native& native() const { return *_native; }
    explicit NSImage(std::unique_ptr<Native> native);

protected:
    ~NSImage() override;

private:
    std::unique_ptr<Native> _native;
    std::string _name;
};
