#include "platform/graphics/NSBezierPath.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/graphics/NSGraphicsContext.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <span>

Ref<NSBezierPath> NSBezierPath::bezierPath()
{
    return make<NSBezierPath>();
}

Ref<NSBezierPath> NSBezierPath::bezierPathWithRect(NSRect rect)
{
    const auto [x, y] = rect.origin;
    const auto [width, height] = rect.size;
    Ref<NSBezierPath> path = bezierPath();
    path->moveToPoint({x, y});
    path->lineToPoint({x + width, y});
    path->lineToPoint({x + width, y + height});
    path->lineToPoint({x, y + height});
    path->closePath();
    return path;
}

Ref<NSBezierPath> NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(NSRect rect, double xRadius,
                                                                          double yRadius)
{
    const double rx = std::min(xRadius, rect.size.width * 0.5);
    const double ry = std::min(yRadius, rect.size.height * 0.5);
    if (!(rx > 0.0 && ry > 0.0)) {
        return bezierPathWithRect(rect);
    }
    // How far a control point is from the end of its quarter, as a part of the radius.
    constexpr double kFromEnd = 1.0 - 4.0 / 3.0 * (std::numbers::sqrt2 - 1.0);
    const double cx = rx * kFromEnd;
    const double cy = ry * kFromEnd;
    const auto [left, bottom] = rect.origin;
    const double right = left + rect.size.width;
    const double top = bottom + rect.size.height;
    Ref<NSBezierPath> path = bezierPath();
    path->moveToPoint({left + rx, bottom});
    path->lineToPoint({right - rx, bottom});
    path->curveToPoint_controlPoint1_controlPoint2({right, bottom + ry}, {right - cx, bottom},
                                                   {right, bottom + cy});
    path->lineToPoint({right, top - ry});
    path->curveToPoint_controlPoint1_controlPoint2({right - rx, top}, {right, top - cy}, {right - cx, top});
    path->lineToPoint({left + rx, top});
    path->curveToPoint_controlPoint1_controlPoint2({left, top - ry}, {left + cx, top}, {left, top - cy});
    path->lineToPoint({left, bottom + ry});
    path->curveToPoint_controlPoint1_controlPoint2({left + rx, bottom}, {left, bottom + cy},
                                                   {left + cx, bottom});
    path->closePath();
    return path;
}

void NSBezierPath::fillRect(NSRect rect)
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->fillRect(rect);
    }
}

void NSBezierPath::strokeRect(NSRect rect)
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->strokeRect(rect, kDefaultLineWidth);
    }
}

void NSBezierPath::append(ElementType type, std::array<NSPoint, 3> points)
{
    if (_elements.empty() && type != ElementType::MoveTo) {
        const NSPoint start = type == ElementType::CurveTo ? points[2] : points[0];
        _elements.push_back({ElementType::MoveTo, {start}});
    }
    _elements.push_back({type, points});
}

void NSBezierPath::moveToPoint(NSPoint point)
{
    append(ElementType::MoveTo, {point});
}

void NSBezierPath::lineToPoint(NSPoint point)
{
    append(ElementType::LineTo, {point});
}

void NSBezierPath::curveToPoint_controlPoint1_controlPoint2(NSPoint point, NSPoint control1, NSPoint control2)
{
    append(ElementType::CurveTo, {control1, control2, point});
}

void NSBezierPath::closePath()
{
    if (!_elements.empty()) {
        append(ElementType::Close, {});
    }
}

void NSBezierPath::setLineDash_count_phase(const double* lengths, long count, double phase)
{
    const std::span<const double> given(
        lengths, lengths == nullptr || count < 0 ? 0 : static_cast<std::size_t>(count));
    const double period = std::accumulate(given.begin(), given.end(), 0.0);
    const bool usable = std::ranges::all_of(given, [](double length) { return length >= 0.0; }) &&
                        std::isfinite(period) && std::isfinite(phase);
    if (!usable || (period == 0.0 && !given.empty())) {
        diagnose("setLineDash:count:phase:", "dashes are finite lengths, not all 0");
        return;
    }
    _lineDash.assign(given.begin(), given.end());
    _lineDashPhase = phase;
}

void NSBezierPath::fill() const
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->fillPath(*this);
    }
}

void NSBezierPath::stroke() const
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->strokePath(*this);
    }
}
