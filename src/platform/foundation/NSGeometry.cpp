#include "platform/foundation/NSGeometry.h"

#include <algorithm>
#include <array>
#include <charconv>

bool NSPointInRect(NSPoint point, NSRect rect)
{
    return point.x >= rect.origin.x && point.x < rect.origin.x + rect.size.width &&
           point.y >= rect.origin.y && point.y < rect.origin.y + rect.size.height;
}

bool NSMouseInRect(NSPoint point, NSRect rect, bool flipped)
{
    if (!flipped) {
        point.y = 2.0 * rect.origin.y + rect.size.height - point.y; // mirrored about the middle
    }
    return NSPointInRect(point, rect);
}

bool NSContainsRect(NSRect outer, NSRect inner)
{
    return inner.origin.x >= outer.origin.x && inner.origin.y >= outer.origin.y &&
           inner.origin.x + inner.size.width <= outer.origin.x + outer.size.width &&
           inner.origin.y + inner.size.height <= outer.origin.y + outer.size.height;
}

void CGRectDivide(NSRect rect, NSRect* slice, NSRect* remainder, double amount, CGRectEdge edge)
{
    const bool across = edge == CGRectEdge::MinX || edge == CGRectEdge::MaxX;
    const bool fromGreatest = edge == CGRectEdge::MaxX || edge == CGRectEdge::MaxY;
    const auto start = across ? &NSPoint::x : &NSPoint::y;
    const auto extent = across ? &NSSize::width : &NSSize::height;
    const double cut = amount > 0.0 ? std::clamp(rect.size.*extent, 0.0, amount) : 0.0;
    const double rest = rect.size.*extent - cut;

    NSRect cutOff = rect;
    NSRect left = rect;
    cutOff.size.*extent = cut;
    left.size.*extent = rest;
    if (fromGreatest) {
        cutOff.origin.*start += rest;
    } else {
        left.origin.*start += cut;
    }
    if (slice != nullptr) {
        *slice = cutOff;
    }
    if (remainder != nullptr) {
        *remainder = left;
    }
}

NSRect NSIntersectionRect(NSRect a, NSRect b)
{
    const double left = std::max(a.origin.x, b.origin.x);
    const double least = std::max(a.origin.y, b.origin.y);
    const double right = std::min(a.origin.x + a.size.width, b.origin.x + b.size.width);
    const double most = std::min(a.origin.y + a.size.height, b.origin.y + b.size.height);
    const NSRect common = NSMakeRect(left, least, right - left, most - least);
    return NSIsEmptyRect(common) ? NSZeroRect : common;
}

NSRect NSUnionRect(NSRect a, NSRect b)
{
    if (NSIsEmptyRect(a)) {
        return NSIsEmptyRect(b) ? NSZeroRect : b;
    }
    if (NSIsEmptyRect(b)) {
        return a;
    }
    const double left = std::min(a.origin.x, b.origin.x);
    const double least = std::min(a.origin.y, b.origin.y);
    const double right = std::max(a.origin.x + a.size.width, b.origin.x + b.size.width);
    const double most = std::max(a.origin.y + a.size.height, b.origin.y + b.size.height);
    return NSMakeRect(left, least, right - left, most - least);
}

std::string NSStringFromNumber(double number)
{
    constexpr std::size_t kLongestDouble = 32;
    std::array<char, kLongestDouble> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

std::string NSStringFromPoint(NSPoint point)
{
    return "{" + NSStringFromNumber(point.x) + ", " + NSStringFromNumber(point.y) + "}";
}

std::string NSStringFromRect(NSRect rect)
{
    return "{" + NSStringFromPoint(rect.origin) + ", {" + NSStringFromNumber(rect.size.width) + ", " +
           NSStringFromNumber(rect.size.height) + "}}";
}
