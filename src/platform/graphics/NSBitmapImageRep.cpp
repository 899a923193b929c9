#include "platform/graphics/NSBitmapImageRep.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/qt/Native.h"

#include <QBuffer>
#include <QImageWriter>

#include <algorithm>
#include <climits>
#include <string>
#include <utility>

NSBitmapImageRep::Native::Native(const QImage& image)
{
    setPixels(image);
}

NSBitmapImageRep::Native::~Native() = default;

namespace
{

/// Whether a picture may have 16 bits to the component.
bool fitsDeep(const QImage& image)
{
    return qint64{image.width()} * image.height() <= kMostPictureBytes / qint64{sizeof(NSPixel)};
}

} // namespace

void NSBitmapImageRep::Native::setPixels(const QImage& image)
{
    const bool isDeep = image.pixelFormat().redSize() > 8 && fitsDeep(image);
    const bool hasAlpha = image.hasAlphaChannel();
    const auto deep = hasAlpha ? QImage::Format_RGBA64 : QImage::Format_RGBX64;
    const auto shallow = hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    pixels = image.convertToFormat(isDeep ? deep : shallow);
    pixels.setDevicePixelRatio(1.0);
    painted = {};
}

const QImage& NSBitmapImageRep::Native::forPainting() const
{
    if (painted.isNull()) {
        painted = pixels.convertToFormat(pixels.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                  : QImage::Format_RGB32);
    }
    return painted;
}

NSBitmapImageRep::NSBitmapImageRep(std::unique_ptr<Native> native) : _native(std::move(native))
{
    setPixelsWide(_native->pixels.width());
    setPixelsHigh(_native->pixels.height());
    setSize({static_cast<double>(pixelsWide()), static_cast<double>(pixelsHigh())});
}

NSBitmapImageRep::~NSBitmapImageRep() = default;

namespace
{

/// The pictures of a file up to a number, or the one that its animation is.
std::vector<Ref<NSBitmapImageRep>> decoded(NSData* data, int most)
{
    std::vector<Ref<NSBitmapImageRep>> bitmaps;
    std::unique_ptr<PictureFile> file = PictureFile::open(data);
    if (file == nullptr) {
        return bitmaps;
    }
    std::vector<std::unique_ptr<NSBitmapImageRep::Native>> natives;
    const int count = file->isAnimation() ? 1 : std::min(most, file->count());
    qint64 room = kMostPictureBytes;
    for (int i = 0; i < count; ++i) {
        auto native = std::make_unique<NSBitmapImageRep::Native>(file->picture(i, room));
        room -= native->pixels.sizeInBytes(); // converted, which may be many times what was read
        if (native->pixels.isNull() || room < 0) {
            break;
        }
        natives.push_back(std::move(native));
    }
    if (file->isAnimation() && !natives.empty()) {
        natives.front()->animation = std::move(file);
    }
    for (auto& native : natives) {
        bitmaps.push_back(make<NSBitmapImageRep>(std::move(native)));
    }
    return bitmaps;
}

} // namespace

Ref<NSBitmapImageRep> NSBitmapImageRep::imageRepWithData(NSData* data)
{
    const auto bitmaps = decoded(data, 1);
    return bitmaps.empty() ? nullptr : bitmaps.front();
}

std::vector<Ref<NSImageRep>> NSBitmapImageRep::imageRepsWithData(NSData* data)
{
    const auto bitmaps = decoded(data, INT_MAX);
    return {bitmaps.begin(), bitmaps.end()};
}

Ref<NSData> NSBitmapImageRep::TIFFRepresentation() const
{
    // The reader of TIFF multiplies 8-bit colours by alpha; 16-bit ones it leaves alone.
    QImage image = _native->pixels;
    if (image.hasAlphaChannel()) {
        image =
            std::move(image).convertToFormat(fitsDeep(image) ? QImage::Format_RGBA64 : QImage::Format_ARGB32);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!QImageWriter(&buffer, "tiff").write(image)) {
        return nullptr;
    }
    return NSData::dataWithBytes_length(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

Ref<NSNumber> NSBitmapImageRep::valueForProperty(NSBitmapImageProperty property) const
{
    if (_native->animation == nullptr) {
        return nullptr;
    }
    return NSNumber::numberWithInteger(property == NSImageFrameCount ? _native->animation->count()
                                                                     : _native->currentFrame);
}

void NSBitmapImageRep::setProperty_withValue(NSBitmapImageProperty property, NSNumber* value)
{
    if (property != NSImageCurrentFrame || _native->animation == nullptr || value == nullptr ||
        !std::in_range<int>(value->integerValue())) {
        return;
    }
    const auto index = static_cast<int>(value->integerValue());
    const QImage frame = _native->animation->picture(index);
    if (!frame.isNull()) {
        _native->setPixels(frame);
        _native->currentFrame = index;
    }
}

std::span<NSPixel> NSBitmapImageRep::row(int y)
{
    QImage& pixels = _native->pixels;
    if (y < 0 || y >= pixels.height()) {
        diagnose("row", "there is no row " + std::to_string(y));
        return {};
    }
    // In memory the format has the components of NSPixel, in that order on every machine.
    pixels.convertTo(QImage::Format_RGBA64);
    _native->painted = {};
    return {reinterpret_cast<NSPixel*>(pixels.scanLine(y)), static_cast<std::size_t>(pixels.width())};
}

bool NSBitmapImageRep::drawInRect(NSRect rect)
{
    NSGraphicsContext* context = NSGraphicsContext::currentContext();
    if (context == nullptr) {
        return false;
    }
    context->drawBitmap(*this, rect);
    return true;
}

Ref<NSImageRep> NSBitmapImageRep::copy()
{
    auto native = std::make_unique<Native>(_native->pixels);
    native->currentFrame = _native->currentFrame;
    if (_native->animation != nullptr) {
        native->animation = PictureFile::open(_native->animation->data());
    }
    Ref<NSBitmapImageRep> bitmap = make<NSBitmapImageRep>(std::move(native));
    bitmap->setSize(size());
    return bitmap;
}
