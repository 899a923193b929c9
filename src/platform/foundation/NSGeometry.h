#pragma once

#include "platform/foundation/Export.h"

#include <string>

/// Geometry in points. The origin is bottom-left and y grows upwards, unless a view is flipped: then the
/// origin is top-left and y grows downwards.

struct NSPoint {
    double x = 0.0;
    double y = 0.0;

    bool operator==(const NSPoint&) const = default;
};

struct NSSize {
    double width = 0.0;
    double height = 0.0;

    bool operator==(const NSSize&) const = default;
};

using CGSize = NSSize;

struct NSRect {
    NSPoint origin;
    NSSize size;

    bool operator==(const NSRect&) const = default;
};

inline constexpr NSRect NSZeroRect{};

constexpr NSRect NSMakeRect(double x, double y, double width, double height)
{
    return {{x, y}, {width, height}};
}

/// Whether the rectangle has no area (a width or height that is zero, negative or NaN).
constexpr bool NSIsEmptyRect(NSRect rect)
{
    return !(rect.size.width > 0.0 && rect.size.height > 0.0);
}

/// Whether `point` lies in `rect`: edges of least x and y belong to it, those of greatest x and y do not.
TESSALINE_EXPORT bool NSPointInRect(NSPoint point, NSRect rect);

/// The same for a place of the pointer, which is the top-left corner of what it points at: of the
/// horizontal edges the upper one belongs to the rectangle, so in coordinates that are not `flipped` that
/// of greatest y.
TESSALINE_EXPORT bool NSMouseInRect(NSPoint point, NSRect rect, bool flipped);

/// Whether `inner` lies in `outer`, edges included.
TESSALINE_EXPORT bool NSContainsRect(NSRect outer, NSRect inner);

/// The rectangle with its edges moved inwards, or outwards by negative amounts. Edges that pass each other
/// leave a negative width or height, and so no area.
constexpr NSRect NSInsetRect(NSRect rect, double dx, double dy)
{
    return NSMakeRect(rect.origin.x + dx, rect.origin.y + dy, rect.size.width - 2.0 * dx,
                      rect.size.height - 2.0 * dy);
}

constexpr NSRect CGRectInset(NSRect rect, double dx, double dy)
{
    return NSInsetRect(rect, dx, dy);
}

/// An edge of a rectangle, by its coordinates: that of least y is the lower one, or in a flipped view the
/// upper one.
enum class CGRectEdge { MinX = 0, MinY = 1, MaxX = 2, MaxY = 3 };
using NSRectEdge = CGRectEdge;

/// Cuts a rectangle in two: `slice` receives what lies within `amount` points of `edge`, `remainder` the
/// rest. Either may be null. From all of the rectangle on, the remainder has no extent; below 0, and for NaN,
/// the slice has none.
TESSALINE_EXPORT void CGRectDivide(NSRect rect, NSRect* slice, NSRect* remainder, double amount,
                                   CGRectEdge edge);

/// What both have in common; `NSZeroRect` if that has no area.
TESSALINE_EXPORT NSRect NSIntersectionRect(NSRect a, NSRect b);

/// Whether two rectangles have an area in common.
inline bool NSIntersectsRect(NSRect a, NSRect b)
{
    return !NSIsEmptyRect(NSIntersectionRect(a, b));
}

/// The smallest rectangle that holds both; one without area counts for nothing.
TESSALINE_EXPORT NSRect NSUnionRect(NSRect a, NSRect b);

/// "{{x, y}, {width, height}}", with the shortest digits that name each number exactly.
TESSALINE_EXPORT std::string NSStringFromRect(NSRect rect);
/// "{x, y}"
TESSALINE_EXPORT std::string NSStringFromPoint(NSPoint point);
/// The shortest decimal that names the number exactly.
TESSALINE_EXPORT std::string NSStringFromNumber(double number);
