#include "platform/graphics/NSShadow.h"

#include "platform/graphics/NSColor.h"

NSShadow::NSShadow() : _color(NSColor::colorWithCalibratedWhite_alpha(0.0, 1.0 / 3.0)) {}

NSShadow::~NSShadow() = default;

Ref<NSColor> NSShadow::shadowColor() const
{
    return _color;
}

void NSShadow::setShadowColor(Ref<NSColor> color)
{
    _color = std::move(color);
}

Ref<NSShadow> NSShadow::copy() const
{
    Ref<NSShadow> copy = make<NSShadow>();
    copy->_color = _color;
    copy->_offset = _offset;
    copy->_blurRadius = _blurRadius;
    return copy;
}
