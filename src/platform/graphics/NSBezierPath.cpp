#include "platform/graphics/NSBezierPath.h"

#include "platform/graphics/NSGraphicsContext.h"

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
