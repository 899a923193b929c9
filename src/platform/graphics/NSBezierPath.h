#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

#include <array>
#include <vector>

/// A path of lines and curves, with the width and the dashes of the line that strokes it. Lines end at their
/// ends, and corners are sharp. A point alone shows nothing.
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
    /// A rectangle whose corners are quarters of ellipses. Radii are limited to half of the rectangle's
    /// width and height; if one of them is 0, negative or NaN, the corners are square.
    static Ref<NSBezierPath> bezierPathWithRoundedRect_xRadius_yRadius(NSRect rect, double xRadius,
                                                                       double yRadius);

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

    /// Dashes: `count` lengths in points, painted and left out in turn and then over again, beginning
    /// `phase` points into them; an odd number of lengths goes on with the opposite. None, the default, is
    /// a solid line, as is one over more than 10000 times all lengths. Lengths that are negative or not
    /// finite, or all 0, are reported and change nothing.
    void setLineDash_count_phase(const double* lengths, long count, double phase);
    const std::vector<double>& lineDash() const { return _lineDash; }
    double lineDashPhase() const { return _lineDashPhase; }

    void fill() const;
    void stroke() const;

    const std::vector<Element>& elements() const { return _elements; }

private:
    void append(ElementType type, std::array<NSPoint, 3> points);

    std::vector<Element> _elements;
    double _lineWidth = kDefaultLineWidth;
    std::vector<double> _lineDash;
    double _lineDashPhase = 0.0;
};
