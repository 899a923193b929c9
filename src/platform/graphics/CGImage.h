#pragma once

#include "platform/foundation/NSObject.h"

#include <cstddef>
#include <memory>

class NSData;
class PictureFile;

/// An immutable picture of pixels.
class TESSALINE_EXPORT CGImage final : public NSObject
{
public:
    /// In pixels.
    std::size_t width() const;
    std::size_t height() const;

    /// The toolkit's side of the picture; defined inside the platform layer.
    struct Native;
    const Native& native() const { return *_native; }

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit CGImage(std::unique_ptr<Native> native);
    ~CGImage() override;

    std::unique_ptr<Native> _native;
};

/// Reads the pictures of a file's bytes.
class TESSALINE_EXPORT CGImageSource final : public NSObject
{
public:
    /// As `CGImageSourceCreateImageAtIndex`.
    Ref<CGImage> imageAtIndex(std::size_t index);

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit CGImageSource(Ref<NSData> data);
    ~CGImageSource() override;

    std::unique_ptr<PictureFile> _file; // null if the bytes are no picture
};

/// A source of the given bytes, which it keeps; null without data. Bytes that are no picture make a
/// source without images.
TESSALINE_EXPORT Ref<CGImageSource> CGImageSourceCreateWithData(NSData* data);

/// Decodes one of the source's pictures, counted from 0: the pages, sizes or frames of a file, of the
/// formats and within the limits of `NSBitmapImageRep`. Null if there is none, or no source.
TESSALINE_EXPORT Ref<CGImage> CGImageSourceCreateImageAtIndex(CGImageSource* source, std::size_t index);
