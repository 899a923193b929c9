#include "window/ZuLine.h"

#include "platform/foundation/ClassTable.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"

#include <array>

namespace
{

constexpr std::array kDash{3.0, 1.0}; // painted, left out
constexpr double kDashPhase = 0.0;

constexpr std::array kProperties{
    property<&ZuLine::type_, &ZuLine::setType_>("type_"),
    property<&ZuLine::style_, &ZuLine::setStyle_>("style_"),
    property<&ZuLine::color_, &ZuLine::setColor_>("color_"),
};

} // namespace

constinit const ClassTable ZuLine::table{"ZuLine", &NSView::table, kProperties, {}, makeObject<ZuLine>};

const ClassTable& ZuLine::classTable() const
{
    return table;
}

ZuLine::ZuLine() = default;

ZuLine::~ZuLine() = default;

ZuLine* ZuLine::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}

void ZuLine::awakeFromNib()
{
    setColor_(NSColor::blackColor());
    setStyle_(kSolid);
    setType_(kHorizontal);
}

void ZuLine::drawRect(NSRect rect)
{
    const Ref<NSColor> color = color_();
    if (!color) {
        return;
    }
    const Ref<NSBezierPath> path = NSBezierPath::bezierPath();
    color->setStroke();
    path->moveToPoint({0.0, 0.0});
    switch (type_()) {
    case kHorizontal:
        path->setLineWidth(rect.size.height);
        path->lineToPoint({rect.size.width, 0.0});
        break;
    case kVertical:
        path->setLineWidth(rect.size.height);
        path->lineToPoint({0.0, rect.size.height});
        break;
    default:
        break; // a point alone, which does not show
    }
    if (style_() == kDashed) {
        path->setLineDash_count_phase(kDash.data(), kDash.size(), kDashPhase);
    }
    path->stroke();
}

Ref<NSColor> ZuLine::color_() const
{
    return _color_.get();
}

void ZuLine::setColor_(Ref<NSColor> color)
{
    _color_.set(std::move(color));
}
