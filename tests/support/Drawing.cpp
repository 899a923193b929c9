#include "support/Drawing.h"

#include "platform/appkit/NSView.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSRecordingGraphicsContext.h"
#include "platform/qt/Native.h"

#include <QColor>
#include <QImage>

Operations operationsOf(NSView& view, NSRect rect)
{
    const auto context = make<NSRecordingGraphicsContext>(view.isFlipped());
    view.displayRectIgnoringOpacity_inContext(rect, *context);
    return context->operations();
}

Operations operationsOf(NSView& view)
{
    return operationsOf(view, view.bounds());
}

std::string roundedRect(NSRect rect, double xRadius, double yRadius)
{
    const auto context = make<NSRecordingGraphicsContext>(false);
    context->fillPath(*NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(rect, xRadius, yRadius));
    return context->operations()[0].substr(std::string_view("fillPath").size());
}

Canvas::Canvas(NSSize size, bool flipped, std::function<void()> draw)
    : _flipped(flipped), _draw(std::move(draw))
{
    initWithFrame({{}, size});
}

QImage pixelsOf(const NSImage& image)
{
    return dynamic_cast<const NSBitmapImageRep&>(*image.representations().at(0)).native().pixels;
}

std::string pixel(const NSImage& image, int x, int y)
{
    return pixelsOf(image).pixelColor(x, y).name(QColor::HexArgb).toStdString();
}

QRect inkOf(const QImage& picture)
{
    QRect ink;
    for (int i = 0; i < picture.width() * picture.height(); ++i) {
        const QPoint place(i % picture.width(), i / picture.width());
        if (qAlpha(picture.pixel(place)) != 0) {
            ink |= QRect(place, QSize(1, 1));
        }
    }
    return ink;
}

Ref<NSString> text(const char* utf8)
{
    return NSString::stringWithUTF8String(utf8);
}

std::string utf8(const Ref<NSString>& string)
{
    return string ? string->UTF8String() : "null";
}

Ref<NSImage> blankImage(const char* name, double width, double height)
{
    Ref<NSImage> image = make<NSImage>()->initWithSize({width, height});
    image->setName(name);
    return image;
}
