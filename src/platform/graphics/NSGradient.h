#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

class NSColor;

/// An even passage from one colour to another.
class TESSALINE_EXPORT NSGradient final : public NSObject
{
public:
    NSGradient();

    NSGradient* initWithStartingColor_endingColor(Ref<NSColor> startingColor, Ref<NSColor> endingColor);

    /// Fills a rectangle of the current graphics context. The passage goes in the direction of `angle`, in
    /// degrees from growing x towards growing y, so at 90 from the bottom to the top, or from the top to the
    /// bottom of a flipped view. The edges or corners that lie farthest back and farthest ahead in that
    /// direction have the pure colours. Draws nothing if a colour is null, the rectangle has no area or the
    /// angle is not finite.
    void drawInRect_angle(NSRect rect, double angle) const;

protected:
    ~NSGradient() override;

private:
    Ref<NSColor> _startingColor;
    Ref<NSColor> _endingColor;
};
