#include "platform/appkit/NSTableHeaderCell.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"

#include <algorithm>

namespace
{

constexpr double kFaceWhite = 0.95;
constexpr double kPressedFaceWhite = 0.85;
constexpr double kLineWhite = 0.8;
constexpr double kLineWidth = 1.0;
constexpr double kTitleInset = 4.0; // beyond that of the text

} // namespace

constinit const ClassTable NSTableHeaderCell::table{
    "NSTableHeaderCell", &NSTextFieldCell::table, {}, {}, makeObject<NSTableHeaderCell>};

const ClassTable& NSTableHeaderCell::classTable() const
{
    return table;
}

Ref<NSCell> NSTableHeaderCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new NSTableHeaderCell(*this));
}

void NSTableHeaderCell::drawWithFrame_highlighted_inView(NSRect frame, bool highlighted, NSView* view)
{
    NSColor::colorWithCalibratedWhite_alpha(highlighted ? kPressedFaceWhite : kFaceWhite, 1.0)->setFill();
    NSBezierPath::fillRect(frame);
    NSColor::colorWithCalibratedWhite_alpha(kLineWhite, 1.0)->setFill();
    const double right = frame.origin.x + frame.size.width - kLineWidth;
    const double bottom = frame.origin.y + frame.size.height - kLineWidth;
    NSBezierPath::fillRect(NSMakeRect(right, frame.origin.y, kLineWidth, frame.size.height));
    NSBezierPath::fillRect(NSMakeRect(frame.origin.x, bottom, frame.size.width, kLineWidth));
    drawInteriorWithFrame_inView(frame, view);
}

void NSTableHeaderCell::drawWithFrame_inView(NSRect frame, NSView* view)
{
    drawWithFrame_highlighted_inView(frame, false, view);
}

void NSTableHeaderCell::drawInteriorWithFrame_inView(NSRect frame, NSView* view)
{
    const double height = std::min(attributedStringValue()->size().height, frame.size.height);
    const double top = frame.origin.y + (frame.size.height - height) * 0.5;
    NSTextFieldCell::drawInteriorWithFrame_inView(
        NSInsetRect(NSMakeRect(frame.origin.x, top, frame.size.width, height), kTitleInset, 0.0), view);
}
