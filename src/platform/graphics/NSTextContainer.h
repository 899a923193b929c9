#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

/// The room that a text is laid out in: its origin is the top-left corner, y grows downwards.
class TESSALINE_EXPORT NSTextContainer final : public NSObject
{
public:
    static constexpr double kDefaultLineFragmentPadding = 5.0;

    /// A width beyond eight million points does not wrap, but for lines that are longer than can be set
    /// (some hundred thousand points, or more); lines then stand aligned in the width of the widest. A height
    /// without bound is given by any great number.
    NSTextContainer* initWithContainerSize(NSSize size);

    NSSize containerSize() const { return _size; }
    void setContainerSize(NSSize size) { _size = size; }

    /// Room that is left free at both ends of each line. Where that leaves none, a character stands on
    /// each line.
    double lineFragmentPadding() const { return _lineFragmentPadding; }
    void setLineFragmentPadding(double padding) { _lineFragmentPadding = padding; }

private:
    NSSize _size;
    double _lineFragmentPadding = kDefaultLineFragmentPadding;
};
