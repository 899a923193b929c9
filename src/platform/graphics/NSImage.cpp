#include "platform/graphics/NSImage.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace
{

constexpr qint64 kMostPixels = 128 * 1024 * 1024 / 4; // of four bytes

QImage decode(QIODevice& device)
{
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    // Formats that tell no size beforehand are left to the same limit in the readers, Qt's default.
    const QSize size = reader.size();
    const bool tooLarge = qint64(size.width()) * size.height() > kMostPixels;
    return tooLarge ? QImage() : reader.read();
}

} // namespace

NSImage::NSImage() : _native(std::make_unique<Native>()) {}

NSImage::NSImage(std::unique_ptr<Native> native) : _native(std::move(native)) {}

NSImage::~NSImage() = default;

NSImage* NSImage::initWithSize(NSSize size)
{
    _native->size = size;
    return this;
}

NSImage* NSImage::initWithContentsOfFile(NSString* path)
{
    if (path == nullptr) {
        return nullptr;
    }
    const QString name = toQt(*path);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        return nullptr;
    }
    _native->image = decode(file);
    const double scale = QFileInfo(name).completeBaseName().endsWith(QLatin1String("@2x")) ? 2.0 : 1.0;
    _native->size = {_native->image.width() / scale, _native->image.height() / scale};
    return _native->image.isNull() ? nullptr : this;
}

NSImage* NSImage::initWithData(std::span<const std::byte> data)
{
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                               static_cast<qsizetype>(data.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    _native->image = decode(buffer);
    _native->size = {static_cast<double>(_native->image.width()),
                     static_cast<double>(_native->image.height())};
    return _native->image.isNull() ? nullptr : this;
}

NSSize NSImage::size() const
{
    return _native->size;
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
    return _native->image.save(QString::fromStdString(path), "PNG");
}
