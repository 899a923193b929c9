#include "platform/graphics/NSGradient.h"

#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGraphicsContext.h"

#include <cmath>

NSGradient::NSGradient() = default;

NSGradient::~NSGradient() = default;

NSGradient* NSGradient::initWithStartingColor_endingColor(Ref<NSColor> startingColor,
                                                          Ref<NSColor> endingColor)
{
    _startingColor = std::move(startingColor);
    _endingColor = std::move(endingColor);
    return this;
}

void NSGradient::drawInRect_angle(NSRect rect, double angle) const
{
    NSGraphicsContext* context = NSGraphicsContext::currentContext();
    if (context != nullptr && _startingColor && _endingColor && !NSIsEmptyRect(rect) &&
        std::isfinite(angle)) {
        context->drawGradient(*_startingColor, *_endingColor, rect, angle);
    }
}
