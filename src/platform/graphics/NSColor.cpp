#include "platform/graphics/NSColor.h"

#include "platform/foundation/NSGeometry.h"
#include "platform/graphics/NSGraphicsContext.h"

Ref<NSColor> NSColor::colorWithSRGBRed_green_blue_alpha(double red, double green, double blue, double alpha)
{
    return make<NSColor>(Space::SRGB, std::array{red, green, blue, alpha});
}

Ref<NSColor> NSColor::colorWithCalibratedRed_green_blue_alpha(double red, double green, double blue,
                                                              double alpha)
{
    return make<NSColor>(Space::CalibratedRGB, std::array{red, green, blue, alpha});
}

Ref<NSColor> NSColor::colorWithCalibratedWhite_alpha(double white, double alpha)
{
    return make<NSColor>(Space::CalibratedWhite, std::array{white, white, white, alpha});
}

Ref<NSColor> NSColor::colorWithDeviceWhite_alpha(double white, double alpha)
{
    return make<NSColor>(Space::DeviceWhite, std::array{white, white, white, alpha});
}

Ref<NSColor> NSColor::blackColor()
{
    static const Ref<NSColor> color = colorWithCalibratedWhite_alpha(0.0, 1.0);
    return color;
}

Ref<NSColor> NSColor::whiteColor()
{
    static const Ref<NSColor> color = colorWithCalibratedWhite_alpha(1.0, 1.0);
    return color;
}

Ref<NSColor> NSColor::grayColor()
{
    static const Ref<NSColor> color = colorWithCalibratedWhite_alpha(0.5, 1.0);
    return color;
}

Ref<NSColor> NSColor::redColor()
{
    static const Ref<NSColor> color = colorWithCalibratedRed_green_blue_alpha(1.0, 0.0, 0.0, 1.0);
    return color;
}

Ref<NSColor> NSColor::blueColor()
{
    static const Ref<NSColor> color = colorWithCalibratedRed_green_blue_alpha(0.0, 0.0, 1.0, 1.0);
    return color;
}

Ref<NSColor> NSColor::alternateSelectedControlColor()
{
    static const Ref<NSColor> color = colorWithSRGBRed_green_blue_alpha(0.25, 0.5, 0.85, 1.0);
    return color;
}

Ref<NSColor> NSColor::secondarySelectedControlColor()
{
    static const Ref<NSColor> color = colorWithCalibratedWhite_alpha(0.55, 1.0);
    return color;
}

void NSColor::setFill() const
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->setFillColor(*this);
    }
}

void NSColor::setStroke() const
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->setStrokeColor(*this);
    }
}

void NSColor::set() const
{
    setFill();
    setStroke();
}

std::string NSColor::description() const
{
    const auto [red, green, blue, alpha] = _components;
    const std::string tail = ", " + NSStringFromNumber(alpha) + ")";
    const std::string rgb =
        NSStringFromNumber(red) + ", " + NSStringFromNumber(green) + ", " + NSStringFromNumber(blue) + tail;
    switch (_space) {
    case Space::SRGB:
        return "sRGB(" + rgb;
    case Space::CalibratedRGB:
        return "calibratedRGB(" + rgb;
    case Space::CalibratedWhite:
        return "white(" + NSStringFromNumber(red) + tail;
    case Space::DeviceWhite:
        break;
    }
    return "deviceWhite(" + NSStringFromNumber(red) + tail;
}

bool NSColor::isEqual(const NSObject* other) const
{
    const auto* color = dynamic_cast<const NSColor*>(other);
    return color != nullptr && _space == color->_space && _components == color->_components;
}
