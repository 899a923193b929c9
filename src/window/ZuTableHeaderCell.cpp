#include "window/ZuTableHeaderCell.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSLog.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGradient.h"
#include "platform/graphics/NSGraphics.h"
#include "platform/graphics/NSImage.h"

namespace
{

constexpr double kFaceEndWhite = 0.9;
constexpr double kDownwards = 90.0; // degrees
constexpr double kPressedShade = 0.1;
constexpr double kLineWidth = 1.0;
constexpr double kLineWhite = 0.8;
constexpr double kTitleInset = 1.0; // above and below

} // namespace

constinit const ClassTable ZuTableHeaderCell::table{
    "ZuTableHeaderCell", &NSTableHeaderCell::table, {}, {}, makeObject<ZuTableHeaderCell>};

const ClassTable& ZuTableHeaderCell::classTable() const
{
    return table;
}

Ref<NSCell> ZuTableHeaderCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new ZuTableHeaderCell(*this));
}

void ZuTableHeaderCell::drawWithFrame_highlighted_inView(NSRect frame, bool highlighted, NSView* view)
{
    NSLog("ZuTableHeaderCell drawWithFrame %f:%f:%f:%f", frame.origin.x, frame.origin.y, frame.size.width,
          frame.size.height);
    NSRect line;
    NSRect face;
    CGRectDivide(frame, &line, &face, kLineWidth, CGRectEdge::MaxY);
    const Ref<NSGradient> gradient = make<NSGradient>()->initWithStartingColor_endingColor(
        NSColor::whiteColor(), NSColor::colorWithDeviceWhite_alpha(kFaceEndWhite, 1.0));
    gradient->drawInRect_angle(face, kDownwards);
    if (highlighted) {
        NSColor::colorWithDeviceWhite_alpha(0.0, kPressedShade)->set();
        NSRectFillUsingOperation(face, NSCompositingOperation::SourceOver);
    }
    NSColor::colorWithDeviceWhite_alpha(kLineWhite, 1.0)->set();
    NSRectFill(line);
    drawInteriorWithFrame_inView(CGRectInset(face, 0.0, kTitleInset), view);
}
