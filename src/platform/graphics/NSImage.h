#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class CGImage;
class NSData;
class NSGraphicsContext;
class NSImageRep;
class NSString;

/// How a drawn image combines with what is under it.
enum class NSCompositingOperation { SourceOver = 2 };

/// A picture with a size in points, in one or several representations: forms of it with different numbers
/// of pixels, the pages of its file, or a drawing by commands. Drawing takes the representation that fits
/// best and stretches it to the size.
class TESSALINE_EXPORT NSImage : public NSObject
{
public:
    NSImage();

    /// An image of the given size that shows nothing.
    NSImage* initWithSize(NSSize size);

    /// Decodes a picture file, with all pictures that are in it as `NSBitmapImageRep` does. The size in
    /// points is the first one's size in pixels, whatever resolution the file tells, or half of that if
    /// the file's base name ends in "@2x". Null if it cannot be read, is no whole picture, or would take
    /// more than 512 MiB, decoded or as it is.
    NSImage* initWithContentsOfFile(NSString* path);

    /// Decodes a picture file as `initWithContentsOfFile` does, at once, and if there is a file of that name
    /// with "@2x" before the extension beside it, that one, too, for screens with more pixels to the point.
    NSImage* initByReferencingFile(NSString* path);

    /// Decodes the bytes of a picture file; null under the same conditions.
    NSImage* initWithData(NSData* data);

    /// An image of the given pixels; a size of zero stands for that in pixels. Null without pixels.
    NSImage* initWithCGImage_size(CGImage* image, NSSize size);

    NSSize size() const { return _size; }

    /// Whether there is something to show: a representation.
    bool isValid() const { return !_representations.empty(); }

    const std::vector<Ref<NSImageRep>>& representations() const { return _representations; }
    /// Adds one behind the others. Null adds nothing.
    void addRepresentation(Ref<NSImageRep> representation);

    /// The representation with the fewest pixels that are enough for `rect` in the given context, or with
    /// one pixel to the point where that is null; else one that draws with any number of pixels, else that
    /// with the most. Null for an image without any. No hints exist.
    Ref<NSImageRep> bestRepresentationForRect_context_hints(NSRect rect, NSGraphicsContext* context,
                                                            std::nullptr_t hints) const;

    /// Has drawing go into the image, over what it shows, up to `unlockFocus`: the origin is bottom-left
    /// and y grows upwards. The result, a bitmap with as many pixels to the point as the screen shows,
    /// replaces the representations. Each lock has its unlock, the last lock first, whichever image it
    /// belongs to; the image lives until then. The drawing into an image that comes to no pixels, to more
    /// than 16384 in a direction or to more than 128 MiB is lost, with a line on standard error.
    void lockFocus();
    void unlockFocus();

    /// The first bitmap representation, an animation's current frame, as a TIFF file; see
    /// `NSBitmapImageRep`. Null without one.
    Ref<NSData> TIFFRepresentation() const;

    /// A name that tells images apart, in the record of a drawing for instance; empty by default.
    const std::string& name() const { return _name; }
    void setName(std::string name) { _name = std::move(name); }

    /// An image that shows the same, with pixels of its own: what is drawn into this one later, or another
    /// frame of its animation, does not show there.
    Ref<NSImage> copy() const;

    /// Draws the whole image, which is what a `fromRect` of `NSZeroRect` stands for and all that is
    /// provided for, scaled into `rect` of the current graphics context and faded by `fraction` (1 is
    /// opaque). In a flipped context the image stands upright only if `respectFlipped` is set. No hints
    /// exist.
    void drawInRect_fromRect_operation_fraction_respectFlipped_hints(NSRect rect, NSRect fromRect,
                                                                     NSCompositingOperation operation,
                                                                     double fraction, bool respectFlipped,
                                                                     std::nullptr_t hints) const;

    /// Writes the first bitmap representation as a PNG file. Returns whether that succeeded.
    bool writePNGToFile(const std::string& path) const;

protected:
    ~NSImage() override;

private:
    struct Focus;

    NSSize _size;
    std::vector<Ref<NSImageRep>> _representations;
    std::unique_ptr<Focus> _focus; // null unless locked
    std::string _name;
};
