#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

class NSColor;

/// How a shadow falls. Whoever is given one keeps a copy.
class TESSALINE_EXPORT NSShadow final : public NSObject
{
public:
    NSShadow();

    /// Default: black of which a third shows. Null for no shadow.
    Ref<NSColor> shadowColor() const;
    void setShadowColor(Ref<NSColor> color);

    /// From what casts the shadow, in points to the right and up, whichever way a view is flipped. Default 0.
    NSSize shadowOffset() const { return _offset; }
    void setShadowOffset(NSSize offset) { _offset = offset; }

    /// How far the shadow's edge is spread to either side, in points: about twice the standard deviation of
    /// the blur. Default 0 for a sharp edge, as are negative values and NaN.
    double shadowBlurRadius() const { return _blurRadius; }
    void setShadowBlurRadius(double radius) { _blurRadius = radius; }

    Ref<NSShadow> copy() const;

protected:
    ~NSShadow() override;

private:
    Ref<NSColor> _color;
    NSSize _offset;
    double _blurRadius = 0.0;
};
