#include "platform/graphics/CGImage.h"

#include "platform/foundation/NSData.h"
#include "platform/qt/Native.h"
#include "platform/qt/PictureFile.h"

#include <utility>

CGImage::CGImage(std::unique_ptr<Native> native) : _native(std::move(native)) {}

CGImage::~CGImage() = default;

std::size_t CGImage::width() const
{
    return static_cast<std::size_t>(_native->pixels.width());
}

std::size_t CGImage::height() const
{
    return static_cast<std::size_t>(_native->pixels.height());
}

CGImageSource::CGImageSource(Ref<NSData> data) : _file(PictureFile::open(std::move(data))) {}

CGImageSource::~CGImageSource() = default;

Ref<CGImage> CGImageSource::imageAtIndex(std::size_t index)
{
    if (_file == nullptr || !std::in_range<int>(index)) {
        return nullptr;
    }
    QImage pixels = _file->picture(static_cast<int>(index));
    if (pixels.isNull()) {
        return nullptr;
    }
    return make<CGImage>(std::make_unique<CGImage::Native>(std::move(pixels)));
}

Ref<CGImageSource> CGImageSourceCreateWithData(NSData* data)
{
    if (data == nullptr) {
        return nullptr;
    }
    return make<CGImageSource>(data);
}

Ref<CGImage> CGImageSourceCreateImageAtIndex(CGImageSource* source, std::size_t index)
{
    if (source == nullptr) {
        return nullptr;
    }
    return source->imageAtIndex(index);
}
