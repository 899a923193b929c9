#include "window/ZuBox.h"

#include "platform/foundation/ClassTable.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"

#include <array>

namespace
{

constexpr double kDefaultGrey = 220.0 / 255.0;
constexpr std::int64_t kDefaultHeight = 1;

constexpr std::array kProperties{
    property<&ZuBox::color, &ZuBox::setColor>("color"),
    property<&ZuBox::height, &ZuBox::setHeight>("height"),
};

} // namespace

constinit const ClassTable ZuBox::table{"ZuBox", &NSBox::table, kProperties, {}, makeObject<ZuBox>};

const ClassTable& ZuBox::classTable() const
{
    return table;
}

ZuBox::ZuBox() = default;

ZuBox::~ZuBox() = default;

ZuBox* ZuBox::initWithFrame(NSRect frame)
{
    NSBox::initWithFrame(frame);
    return this;
}

void ZuBox::awakeFromNib()
{
    setColor(NSColor::colorWithSRGBRed_green_blue_alpha(kDefaultGrey, kDefaultGrey, kDefaultGrey, 1.0));
    setHeight(kDefaultHeight);
}

void ZuBox::drawRect(NSRect rect)
{
    NSBox::drawRect(rect);
    const Ref<NSColor> lineColor = color();
    if (!lineColor) {
        return;
    }
    const Ref<NSBezierPath> line = NSBezierPath::bezierPath();
    line->setLineWidth(static_cast<double>(height()));
    lineColor->setStroke();
    line->moveToPoint({0.0, 0.0});
    line->lineToPoint({rect.size.width, 0.0});
    line->stroke();
}

Ref<NSColor> ZuBox::color() const
{
    return _color.get();
}

void ZuBox::setColor(Ref<NSColor> color)
{
    _color.set(std::move(color));
}
