#include "platform/appkit/NSButtonCell.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSImage.h"

#include <array>

namespace
{

constexpr double kFaceWhite = 0.96;
constexpr double kPressedFaceWhite = 0.85;
constexpr double kTitleGap = 4.0; // between image and title

constexpr std::array kProperties{
    property<&NSButtonCell::title, &NSButtonCell::setTitle>("title"),
    property<&NSButtonCell::isBordered, &NSButtonCell::setBordered>("bordered"),
};

} // namespace

constinit const ClassTable NSButtonCell::table{
    "NSButtonCell", &NSCell::table, kProperties, {}, makeObject<NSButtonCell>};

const ClassTable& NSButtonCell::classTable() const
{
    return table;
}

Ref<NSCell> NSButtonCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new NSButtonCell(*this));
}

Ref<NSString> NSButtonCell::title() const
{
    return stringValue();
}

void NSButtonCell::setTitle(Ref<NSString> title)
{
    setStringValue(std::move(title));
}

Ref<NSAttributedString> NSButtonCell::attributedTitle() const
{
    return attributedStringValue();
}

void NSButtonCell::setAttributedTitle(Ref<NSAttributedString> title)
{
    setAttributedStringValue(std::move(title));
}

void NSButtonCell::drawBezelWithFrame(NSRect frame, bool pressed)
{
    NSColor::colorWithCalibratedWhite_alpha(pressed ? kPressedFaceWhite : kFaceWhite, 1.0)->setFill();
    NSBezierPath::fillRect(frame);
    NSColor::grayColor()->setStroke();
    NSBezierPath::strokeRect(frame);
}

void NSButtonCell::drawWithFrame_inView(NSRect frame, NSView* view)
{
    if (_bordered) {
        drawBezelWithFrame(frame, false);
    }
    drawInteriorWithFrame_inView(frame, view);
}

void NSButtonCell::drawInteriorWithFrame_inView(NSRect frame, NSView* view)
{
    NSRect titleFrame = frame;
    if (const Ref<NSImage> shown = image()) {
        const auto [width, height] = shown->size();
        const double middle = frame.origin.y + (frame.size.height - height) * 0.5;
        drawImage_withFrame_inView(shown.get(), NSMakeRect(frame.origin.x, middle, width, height), view);
        titleFrame.origin.x += width + kTitleGap;
        titleFrame.size.width = std::max(0.0, titleFrame.size.width - width - kTitleGap);
    }
    drawTitle_withFrame_inView(attributedTitle().get(), titleFrame, view);
}

void NSButtonCell::drawImage_withFrame_inView(NSImage* image, NSRect frame, NSView* /*view*/)
{
    image->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
        frame, NSZeroRect, NSCompositingOperation::SourceOver, 1.0, true, nullptr);
}

NSRect NSButtonCell::drawTitle_withFrame_inView(NSAttributedString* title, NSRect frame, NSView* /*view*/)
{
    const double height = std::min(title->size().height, frame.size.height);
    const double top = frame.origin.y + (frame.size.height - height) * 0.5;
    drawText_inFrame(*title, NSMakeRect(frame.origin.x, top, frame.size.width, height), nullptr);
    return frame;
}
