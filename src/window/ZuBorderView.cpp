#include "window/ZuBorderView.h"

#include "platform/foundation/ClassTable.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSShadow.h"

#include <array>

namespace
{

constexpr double kDefaultWidth = 1.0;
constexpr NSSize kShadowOffset{0.0, -4.0};
constexpr double kShadowBlurRadius = 2.0;

constexpr std::array kProperties{
    property<&ZuBorderView::color_border_, &ZuBorderView::setColor_border_>("color_border_"),
    property<&ZuBorderView::width_border_, &ZuBorderView::setWidth_border_>("width_border_"),
};

} // namespace

constinit const ClassTable ZuBorderView::table{
    "ZuBorderView", &NSView::table, kProperties, {}, makeObject<ZuBorderView>};

const ClassTable& ZuBorderView::classTable() const
{
    return table;
}

ZuBorderView::ZuBorderView() = default;

ZuBorderView::~ZuBorderView() = default;

ZuBorderView* ZuBorderView::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    setColor_border_(NSColor::blackColor());
    setWidth_border_(kDefaultWidth);
    setFlipped(false);
    return this;
}

void ZuBorderView::setShadow()
{
    const Ref<NSShadow> shadow = make<NSShadow>();
    shadow->setShadowColor(NSColor::grayColor());
    shadow->setShadowOffset(kShadowOffset);
    shadow->setShadowBlurRadius(kShadowBlurRadius);
    setWantsLayer(true);
    setShadow(shadow);
}

void ZuBorderView::setFlipped(bool flipped)
{
    _is_flipped = flipped;
}

void ZuBorderView::drawRect(NSRect rect)
{
    NSView::drawRect(rect);
    const Ref<NSColor> color = color_border_();
    if (!color) {
        return;
    }
    const Ref<NSBezierPath> border = NSBezierPath::bezierPathWithRect(bounds());
    border->setLineWidth(width_border_());
    color->set();
    border->stroke();
}

Ref<NSColor> ZuBorderView::color_border_() const
{
    return _color_border_.get();
}

void ZuBorderView::setColor_border_(Ref<NSColor> color)
{
    _color_border_.set(std::move(color));
}
