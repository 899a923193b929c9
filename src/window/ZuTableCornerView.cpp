#include "window/ZuTableCornerView.h"

#include "platform/foundation/ClassTable.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGraphics.h"

namespace
{

constexpr double kGrey = 242.0 / 255.0;
constexpr double kEdgeWidth = 1.0;

Ref<NSColor> grey()
{
    return NSColor::colorWithCalibratedRed_green_blue_alpha(kGrey, kGrey, kGrey, 1.0);
}

} // namespace

constinit const ClassTable ZuTableCornerView::table{
    "ZuTableCornerView", &NSView::table, {}, {}, makeObject<ZuTableCornerView>};

const ClassTable& ZuTableCornerView::classTable() const
{
    return table;
}

ZuTableCornerView* ZuTableCornerView::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}

void ZuTableCornerView::drawRect(NSRect rect)
{
    const auto [x, y] = rect.origin;
    const auto [width, height] = rect.size;
    grey()->setFill();
    NSRectFill(rect);

    const Ref<NSBezierPath> edges = NSBezierPath::bezierPath();
    edges->setLineWidth(kEdgeWidth);
    grey()->setStroke();
    edges->moveToPoint({x, y});
    edges->lineToPoint({x + width, y});
    edges->stroke();
    edges->moveToPoint({x, y + height});
    edges->lineToPoint({x + width, y + height});
    edges->stroke();
}
