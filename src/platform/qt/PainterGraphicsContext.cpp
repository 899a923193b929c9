#include "platform/qt/PainterGraphicsContext.h"

#include "platform/foundation/NSAttributedString.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSImage.h"
#include "platform/graphics/NSLayoutManager.h"
#include "platform/graphics/NSTextContainer.h"
#include "platform/graphics/NSTextStorage.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"
#include "platform/qt/TextLayout.h"
#include "platform/qt/TextPictures.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace
{

/// Keeps the painter's state as long as it lives, where that is needed: it takes longer than to draw a word.
class PainterState
{
public:
    explicit PainterState(QPainter& painter, bool needed = true) : _painter(painter), _needed(needed)
    {
        if (_needed) {
            _painter.save();
        }
    }
    ~PainterState()
    {
        if (_needed) {
            _painter.restore();
        }
    }
    PainterState(const PainterState&) = delete;
    PainterState& operator=(const PainterState&) = delete;

private:
    QPainter& _painter;
    bool _needed;
};

/// Turns the painter upside down about the middle of `rect`.
void flipAbout(QPainter& painter, NSRect rect)
{
    painter.translate(0.0, 2.0 * rect.origin.y + rect.size.height);
    painter.scale(1.0, -1.0);
}

/// What of a rectangle lies where a device can be: farther away, and with infinite lengths, the painter
/// loses count.
QRectF inReach(const QRectF& rect)
{
    constexpr double kFarthest = 1 << 24;
    return rect.intersected(QRectF(-kFarthest, -kFarthest, 2.0 * kFarthest, 2.0 * kFarthest));
}

/// Clips to the device's pixels that `rect` touches: the painter itself would round a fraction away, and
/// with it the edge of a glyph.
void clipToPixelsOf(QPainter& painter, NSRect rect)
{
    const QTransform transform = painter.deviceTransform();
    const QRect pixels = inReach(transform.mapRect(toQt(rect))).toAlignedRect();
    painter.setClipRect(transform.inverted().mapRect(QRectF(pixels)), Qt::IntersectClip);
}

QPainterPath toQt(const NSBezierPath& path)
{
    QPainterPath result;
    for (const NSBezierPath::Element& element : path.elements()) {
        switch (element.type) {
        case NSBezierPath::ElementType::MoveTo:
            result.moveTo(toQt(element.points[0]));
            break;
        case NSBezierPath::ElementType::LineTo:
            result.lineTo(toQt(element.points[0]));
            break;
        case NSBezierPath::ElementType::CurveTo:
            result.cubicTo(toQt(element.points[0]), toQt(element.points[1]), toQt(element.points[2]));
            break;
        case NSBezierPath::ElementType::Close:
            result.closeSubpath();
            break;
        }
    }
    return result;
}

} // namespace

PainterGraphicsContext::PainterGraphicsContext(QPainter& painter, bool flipped, double height)
    : _painter(painter), _flipped(flipped)
{
    _painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform |
                            QPainter::TextAntialiasing);
    if (!flipped) {
        flipAbout(_painter, NSMakeRect(0.0, 0.0, 0.0, height));
    }
}

double PainterGraphicsContext::scale() const
{
    return std::sqrt(std::abs(_painter.deviceTransform().determinant()));
}

void PainterGraphicsContext::saveGraphicsState()
{
    _states.push_back(_states.back());
}

void PainterGraphicsContext::restoreGraphicsState()
{
    if (_states.size() > 1) {
        _states.pop_back();
    }
}

void PainterGraphicsContext::setFillColor(const NSColor& color)
{
    state().fill = ::toQt(color);
}

void PainterGraphicsContext::setStrokeColor(const NSColor& color)
{
    state().stroke = ::toQt(color);
}

void PainterGraphicsContext::fillRect(NSRect rect)
{
    _painter.fillRect(::toQt(rect), state().fill);
}

void PainterGraphicsContext::replaceRect(NSRect rect)
{
    const PainterState keep(_painter);
    _painter.setCompositionMode(QPainter::CompositionMode_Source);
    _painter.fillRect(inReach(::toQt(rect)), state().fill);
}

void PainterGraphicsContext::strokeRect(NSRect rect, double lineWidth)
{
    strokePath(*NSBezierPath::bezierPathWithRect(rect), lineWidth);
}

void PainterGraphicsContext::fillPath(const NSBezierPath& path)
{
    QPainterPath shape = toQt(path);
    shape.setFillRule(Qt::WindingFill);
    _painter.fillPath(shape, state().fill);
}

void PainterGraphicsContext::strokePath(const NSBezierPath& path)
{
    strokePath(path, path.lineWidth());
}

void PainterGraphicsContext::strokePath(const NSBezierPath& path, double lineWidth)
{
    const double width = lineWidth > 0.0 ? lineWidth : 1.0 / scale(); // the thinnest line
    // Through its outline: the painter's own thin lines do not fill the corners of a frame.
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::FlatCap);
    stroker.setJoinStyle(Qt::MiterJoin);
    if (!path.lineDash().empty()) {
        QList<qreal> dashes; // in widths of the line, painted and left out in pairs
        do {
            for (const double length : path.lineDash()) {
                dashes << length / width;
            }
        } while (dashes.size() % 2 != 0);
        stroker.setDashPattern(dashes);
        stroker.setDashOffset(path.lineDashPhase() / width);
    }
    _painter.fillPath(stroker.createStroke(toQt(path)), state().stroke);
}

void PainterGraphicsContext::drawGradient(const NSColor& starting, const NSColor& ending, NSRect rect,
                                          double angle)
{
    const QRectF area = inReach(::toQt(rect));
    const double radians = qDegreesToRadians(angle);
    const QPointF direction(std::cos(radians), std::sin(radians));
    // From the middle to what lies outermost.
    const double reach =
        (std::abs(direction.x()) * area.width() + std::abs(direction.y()) * area.height()) / 2.0;
    QLinearGradient gradient(area.center() - reach * direction, area.center() + reach * direction);
    gradient.setColorAt(0.0, ::toQt(starting));
    gradient.setColorAt(1.0, ::toQt(ending));
    _painter.fillRect(area, gradient);
}

void PainterGraphicsContext::drawImage(const NSImage& image, NSRect rect, NSRect /*fromRect*/,
                                       NSCompositingOperation /*operation*/, double fraction,
                                       bool respectFlipped)
{
    const Ref<NSImageRep> shown = image.bestRepresentationForRect_context_hints(rect, this, nullptr);
    if (!shown || NSIsEmptyRect(rect)) {
        return;
    }
    const bool turned = _flipped && !respectFlipped;
    const PainterState keep(_painter, turned || fraction != 1.0);
    if (fraction != 1.0) {
        _painter.setOpacity(_painter.opacity() * fraction);
    }
    if (turned) {
        flipAbout(_painter, rect);
    }
    const Scope scope(*this);
    saveGraphicsState();
    shown->drawInRect(rect);
    restoreGraphicsState();
}

void PainterGraphicsContext::drawBitmap(const NSBitmapImageRep& bitmap, NSRect rect)
{
    if (NSIsEmptyRect(rect)) {
        return;
    }
    QImage pixels = bitmap.native().forPainting();
    const QSizeF device = _painter.deviceTransform().mapRect(::toQt(rect)).size();
    if (device.width() < pixels.width() / 2.0 || device.height() < pixels.height() / 2.0) {
        // The painter looks at four pixels for one of the device, and would pass over the others.
        const auto reduced = [](double extent, int most) {
            return static_cast<int>(std::ceil(std::min<double>(extent, most)));
        };
        pixels =
            pixels.scaled(reduced(device.width(), pixels.width()), reduced(device.height(), pixels.height()),
                          Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    const PainterState keep(_painter, !_flipped);
    if (!_flipped) {
        flipAbout(_painter, rect);
    }
    _painter.drawImage(::toQt(rect), pixels);
}

void PainterGraphicsContext::drawText(const NSAttributedString& text, NSRect rect)
{
    if (NSIsEmptyRect(rect)) {
        return;
    }
    const auto layout = TextLayout::of(text, rect.size.width);
    const auto [width, height] = layout->size();
    const bool fits = width <= rect.size.width && height <= rect.size.height;
    const PainterState keep(_painter, !_flipped || !fits);
    if (!_flipped) {
        flipAbout(_painter, rect);
    }
    if (!fits) {
        clipToPixelsOf(_painter, rect);
    }
    ::drawText(_painter, ::toQt(rect.origin), *layout, text);
}

void PainterGraphicsContext::drawTextAtPoint(const NSAttributedString& text, NSPoint point)
{
    const auto layout = TextLayout::of(text, TextLayout::kUnlimited);
    const PainterState keep(_painter, !_flipped);
    if (!_flipped) {
        flipAbout(_painter, {point, layout->size()});
    }
    ::drawText(_painter, ::toQt(point), *layout, text);
}

void PainterGraphicsContext::drawGlyphs(const NSLayoutManager& layout, NSRange glyphs, NSPoint origin)
{
    const PainterState keep(_painter, !_flipped);
    if (!_flipped) {
        flipAbout(_painter, {origin, {}});
    }
    const QPointF padding(layout.textContainer()->lineFragmentPadding(), 0.0);
    layout.layout().draw(_painter, ::toQt(origin) + padding, *layout.textStorage(), glyphs);
}
