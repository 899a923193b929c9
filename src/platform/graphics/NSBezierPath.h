#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

#include <array>
#include <vector>

/// A path of lines and curves, with the width of the line that strokes it.
class TESSALINE_EXPORT NSBezierPath final : public NSObject
{
public:
    /// Line width of a new path and of `strokeRect`, in points.
    static constexpr double kDefaultLineWidth = 1.0;

    enum class ElementType { MoveTo, LineTo, CurveTo, Close };
    struct Element {
        ElementType type;
        /// The end point, or for a curve its two control points and then its end point.
        std::array<NSPoint, 3> points;

        bool operator==(const Element&) const = default;
    };

    static Ref<NSBezierPath> bezierPath();
    static Ref<NSBezierPath> bezierPathWithRect(NSRect rect);

    /// Fill or stroke a rectangle in the current colours of the current graphics context; the line is
    /// centred on the rectangle's edge.
    static void fillRect(NSRect rect);
    static void strokeRect(NSRect rect);

    /// A line or curve without a point before it starts where it ends.
    void moveToPoint(NSPoint point);
    void lineToPoint(NSPoint point);
    void curveToPoint_controlPoint1_controlPoint2(NSPoint point, NSPoint control1, NSPoint control2);
    void closePath();

    /// A width of 0 or less means the thinnest line that the device shows.
    double lineWidth() const { return _lineWidth; }
    void setLineWidth(double width) { _lineWidth = width; }

    void fill() const;
    void stroke() const;

    const std::vector<Element>& elements() const { return _elements; }

private:
    void append(ElementType type, std::array<NSPoint, 3> points);

    std::vector<Element> _elements;
    double _lineWidth = kDefaultLineWidth;
};
