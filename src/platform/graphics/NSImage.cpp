#include "platform/graphics/NSImage.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/CGImage.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"
#include "platform/qt/PainterGraphicsContext.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>

#include <cmath>
#include <deque>

namespace
{

const NSBitmapImageRep* firstBitmap(const NSImage& image)
{
    for (const Ref<NSImageRep>& representation : image.representations()) {
        if (const auto* bitmap = dynamic_cast<const NSBitmapImageRep*>(representation.get())) {
            return bitmap;
        }
    }
    return nullptr;
}

double pixelsPerPoint()
{
    return qGuiApp == nullptr ? 1.0 : qGuiApp->devicePixelRatio();
}

/// Transparent pixels for a drawing of the given size; null if there are none, or too many.
QImage canvasOf(NSSize size)
{
    constexpr double kMostPixelsInADirection = 16384.0;
    constexpr double kMostPixels = 32.0 * 1024.0 * 1024.0;
    const double width = std::round(size.width * pixelsPerPoint());
    const double height = std::round(size.height * pixelsPerPoint());
    if (!(width >= 1.0 && height >= 1.0 && width <= kMostPixelsInADirection &&
          height <= kMostPixelsInADirection && width * height <= kMostPixels)) {
        return {};
    }
    QImage canvas(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    return canvas;
}

} // namespace

/// A drawing into an image, from its first lock to its last unlock.
struct NSImage::Focus {
    explicit Focus(NSImage& locked) : image(&locked), pixels(canvasOf(locked.size()))
    {
        if (pixels.isNull()) {
            diagnose("lockFocus", "nothing can be drawn into an image of this size");
            nowhere.fill(Qt::transparent);
            painter.begin(&nowhere);
        } else {
            painter.begin(&pixels);
            painter.scale(pixels.width() / image->size().width, pixels.height() / image->size().height);
        }
        context = make<PainterGraphicsContext>(painter, false, image->size().height);
    }

    Ref<NSImage> image;
    QImage pixels;
    QImage nowhere{1, 1, QImage::Format_ARGB32_Premultiplied}; // in place of null pixels
    QPainter painter;
    Ref<NSGraphicsContext> context;
    std::deque<NSGraphicsContext::Scope> locks;
};

NSImage::NSImage() = default;

NSImage::~NSImage() = default;

NSImage* NSImage::initWithSize(NSSize size)
{
    _size = size;
    return this;
}

NSImage* NSImage::initWithContentsOfFile(NSString* path)
{
    if (path == nullptr) {
        return nullptr;
    }
    constexpr qint64 kLargestFile = qint64{512} * 1024 * 1024;
    const QString name = toQt(*path);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly) || file.isSequential() || file.size() > kLargestFile) {
        return nullptr;
    }
    const QByteArray bytes = file.readAll();
    const Ref<NSData> data =
        NSData::dataWithBytes_length(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    if (initWithData(data.get()) == nullptr) {
        return nullptr;
    }
    if (QFileInfo(name).completeBaseName().endsWith(QLatin1String("@2x"))) {
        _size = {_size.width / 2.0, _size.height / 2.0};
    }
    return this;
}

NSImage* NSImage::initByReferencingFile(NSString* path)
{
    if (initWithContentsOfFile(path) == nullptr) {
        return nullptr;
    }
    const QFileInfo file(toQt(*path));
    const QString sharper =
        file.path() + QLatin1Char('/') + file.completeBaseName() + QLatin1String("@2x.") + file.suffix();
    if (const Ref<NSImage> other = make<NSImage>()->initWithContentsOfFile(fromQt(sharper).get())) {
        for (const Ref<NSImageRep>& representation : other->representations()) {
            representation->setSize(_size);
            addRepresentation(representation);
        }
    }
    return this;
}

NSImage* NSImage::initWithData(NSData* data)
{
    _representations = NSBitmapImageRep::imageRepsWithData(data);
    if (_representations.empty()) {
        return nullptr;
    }
    _size = _representations.front()->size();
    return this;
}

NSImage* NSImage::initWithCGImage_size(CGImage* image, NSSize size)
{
    if (image == nullptr) {
        return nullptr;
    }
    addRepresentation(
        make<NSBitmapImageRep>(std::make_unique<NSBitmapImageRep::Native>(image->native().pixels)));
    _size = size == NSSize{} ? _representations.front()->size() : size;
    return this;
}

void NSImage::addRepresentation(Ref<NSImageRep> representation)
{
    if (representation) {
        _representations.push_back(std::move(representation));
    }
}

Ref<NSImageRep> NSImage::bestRepresentationForRect_context_hints(NSRect rect, NSGraphicsContext* context,
                                                                 std::nullptr_t /*hints*/) const
{
    const double scale = context == nullptr ? 1.0 : context->scale();
    const double wide = rect.size.width * scale;
    const double high = rect.size.height * scale;
    const auto area = [](const NSImageRep& one) {
        return static_cast<double>(one.pixelsWide()) * one.pixelsHigh();
    };
    const auto isFree = [](const NSImageRep& one) { return one.pixelsWide() <= 0 || one.pixelsHigh() <= 0; };
    const auto isEnough = [&](const NSImageRep& one) {
        return !isFree(one) && one.pixelsWide() >= wide && one.pixelsHigh() >= high;
    };
    /// Whether `one` is the better choice.
    const auto isBetter = [&](const NSImageRep& one, const NSImageRep& other) {
        if (isEnough(one) || isEnough(other)) {
            return isEnough(one) && (!isEnough(other) || area(one) < area(other));
        }
        return !isFree(other) && (isFree(one) || area(one) > area(other));
    };
    Ref<NSImageRep> best;
    for (const Ref<NSImageRep>& representation : _representations) {
        if (!best || isBetter(*representation, *best)) {
            best = representation;
        }
    }
    return best;
}

void NSImage::lockFocus()
{
    if (_focus != nullptr) {
        _focus->locks.emplace_back(*_focus->context);
        return;
    }
    _focus = std::make_unique<Focus>(*this);
    _focus->locks.emplace_back(*_focus->context);
    _focus->context->drawImage(*this, {{}, _size}, NSZeroRect, NSCompositingOperation::SourceOver, 1.0, true);
}

void NSImage::unlockFocus()
{
    if (_focus == nullptr || NSGraphicsContext::currentContext() != _focus->context.get()) {
        diagnose("unlockFocus", "the image is not the one that was locked last");
        return;
    }
    _focus->locks.pop_back();
    if (!_focus->locks.empty()) {
        return;
    }
    const std::unique_ptr<Focus> ended = std::move(_focus);
    ended->painter.end();
    if (!ended->pixels.isNull()) {
        const auto bitmap = make<NSBitmapImageRep>(std::make_unique<NSBitmapImageRep::Native>(ended->pixels));
        bitmap->setSize(_size);
        _representations = {bitmap};
    }
}

Ref<NSImage> NSImage::copy() const
{
    Ref<NSImage> image = make<NSImage>()->initWithSize(_size);
    image->setName(_name);
    for (const Ref<NSImageRep>& representation : _representations) {
        image->addRepresentation(representation->copy());
    }
    return image;
}

Ref<NSData> NSImage::TIFFRepresentation() const
{
    const NSBitmapImageRep* bitmap = firstBitmap(*this);
    return bitmap == nullptr ? nullptr : bitmap->TIFFRepresentation();
}

void NSImage::drawInRect_fromRect_operation_fraction_respectFlipped_hints(NSRect rect, NSRect fromRect,
                                                                          NSCompositingOperation operation,
                                                                          double fraction,
                                                                          bool respectFlipped,
                                                                          std::nullptr_t /*hints*/) const
{
    if (fromRect != NSZeroRect) {
        diagnose("drawInRect:fromRect:", "only whole images are drawn");
        return;
    }
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->drawImage(*this, rect, fromRect, operation, fraction, respectFlipped);
    }
}

bool NSImage::writePNGToFile(const std::string& path) const
{
    const NSBitmapImageRep* bitmap = firstBitmap(*this);
    return bitmap != nullptr && bitmap->native().pixels.save(QString::fromStdString(path), "PNG");
}
