#include "platform/appkit/NSTextFieldCell.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"

#include <algorithm>
#include <array>

namespace
{

constexpr double kBezel = 3.0; // at each edge
constexpr double kLineWidth = 1.0;

constexpr std::array kProperties{
    property<&NSTextFieldCell::textColor, &NSTextFieldCell::setTextColor>("textColor"),
    property<&NSTextFieldCell::isBezeled, &NSTextFieldCell::setBezeled>("bezeled"),
    property<&NSTextFieldCell::drawsBackground, &NSTextFieldCell::setDrawsBackground>("drawsBackground"),
    property<&NSTextFieldCell::backgroundColor, &NSTextFieldCell::setBackgroundColor>("backgroundColor"),
    property<&NSTextFieldCell::wraps, &NSTextFieldCell::setWraps>("wraps"),
    property<&NSTextFieldCell::isScrollable, &NSTextFieldCell::setScrollable>("scrollable"),
};

} // namespace

constinit const ClassTable NSTextFieldCell::table{
    "NSTextFieldCell", &NSCell::table, kProperties, {}, makeObject<NSTextFieldCell>};

const ClassTable& NSTextFieldCell::classTable() const
{
    return table;
}

NSTextFieldCell::NSTextFieldCell() : _backgroundColor(NSColor::whiteColor()) {}

NSTextFieldCell::NSTextFieldCell(const NSTextFieldCell& other) = default;

NSTextFieldCell::~NSTextFieldCell() = default;

Ref<NSCell> NSTextFieldCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new NSTextFieldCell(*this));
}

Ref<NSColor> NSTextFieldCell::textColor() const
{
    return _textColor;
}

void NSTextFieldCell::setTextColor(Ref<NSColor> color)
{
    _textColor = std::move(color);
}

Ref<NSColor> NSTextFieldCell::backgroundColor() const
{
    return _backgroundColor;
}

void NSTextFieldCell::setBackgroundColor(Ref<NSColor> color)
{
    _backgroundColor = std::move(color);
}

NSRect NSTextFieldCell::drawingRectForBounds(NSRect bounds) const
{
    if (!_bezeled) {
        return bounds;
    }
    const NSRect inside = NSInsetRect(bounds, kBezel, kBezel);
    return {inside.origin, {std::max(inside.size.width, 0.0), std::max(inside.size.height, 0.0)}};
}

void NSTextFieldCell::drawFaceWithFrame(NSRect frame) const
{
    if (_drawsBackground && _backgroundColor) {
        _backgroundColor->setFill();
        NSBezierPath::fillRect(frame);
    }
    if (_bezeled) {
        NSColor::grayColor()->setStroke();
        NSBezierPath::strokeRect(NSInsetRect(frame, kLineWidth * 0.5, kLineWidth * 0.5));
    }
}

void NSTextFieldCell::drawWithFrame_inView(NSRect frame, NSView* view)
{
    drawFaceWithFrame(frame);
    drawInteriorWithFrame_inView(frame, view);
}

void NSTextFieldCell::drawInteriorWithFrame_inView(NSRect frame, NSView* /*view*/)
{
    const NSRect room = NSInsetRect(drawingRectForBounds(frame), kTextInset, 0.0);
    if (_wraps && !_scrollable) {
        text_inColor(attributedStringValue(), _textColor)->drawInRect(room);
    } else {
        drawText_inFrame(*attributedStringValue(), room, _textColor);
    }
}
