#include "platform/appkit/NSBox.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"

#include <algorithm>
#include <array>

namespace
{

constexpr double kTitleSize = 11.0;
constexpr double kTitleInset = 8.0; // from the left
constexpr double kTitleGap = 3.0;   // between title and frame
constexpr double kFillWhite = 0.97;
constexpr double kBorderWhite = 0.82;

constexpr std::array kProperties{
    property<&NSBox::title, &NSBox::setTitle>("title"),
    property<&NSBox::isTransparent, &NSBox::setTransparent>("transparent"),
    property<&NSBox::fillColor, &NSBox::setFillColor>("fillColor"),
    property<&NSBox::borderColor, &NSBox::setBorderColor>("borderColor"),
    property<&NSBox::borderWidth, &NSBox::setBorderWidth>("borderWidth"),
    property<&NSBox::cornerRadius, &NSBox::setCornerRadius>("cornerRadius"),
};

NSAttributes titleAttributes()
{
    return {{NSFontAttributeName, NSFont::fontWithName_size("Arial", kTitleSize)}};
}

} // namespace

constinit const ClassTable NSBox::table{"NSBox", &NSView::table, kProperties, {}, makeObject<NSBox>};

const ClassTable& NSBox::classTable() const
{
    return table;
}

NSBox::NSBox()
{
    _fillColor.set(NSColor::colorWithCalibratedWhite_alpha(kFillWhite, 1.0));
    _borderColor.set(NSColor::colorWithCalibratedWhite_alpha(kBorderWhite, 1.0));
}

NSBox::~NSBox() = default;

NSBox* NSBox::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}

Ref<NSString> NSBox::title() const
{
    return _title.get();
}

void NSBox::setTitle(Ref<NSString> title)
{
    _title.set(title);
    setNeedsDisplay();
}

Ref<NSString> NSBox::accessibilityLabel() const
{
    Ref<NSString> label = NSView::accessibilityLabel();
    return label ? label : title();
}

void NSBox::setTransparent(bool transparent)
{
    _transparent = transparent;
    setNeedsDisplay();
}

Ref<NSColor> NSBox::fillColor() const
{
    return _fillColor.get();
}

void NSBox::setFillColor(Ref<NSColor> color)
{
    _fillColor.set(std::move(color));
    setNeedsDisplay();
}

Ref<NSColor> NSBox::borderColor() const
{
    return _borderColor.get();
}

void NSBox::setBorderColor(Ref<NSColor> color)
{
    _borderColor.set(std::move(color));
    setNeedsDisplay();
}

void NSBox::setBorderWidth(double width)
{
    _borderWidth = width;
    setNeedsDisplay();
}

void NSBox::setCornerRadius(double radius)
{
    _cornerRadius = radius;
    setNeedsDisplay();
}

struct NSBox::Layout {
    NSRect title; // empty if there is none
    NSRect frame; // the middle of its line
};

NSBox::Layout NSBox::layout() const
{
    const auto [width, height] = bounds().size;
    Layout parts;
    double frameHeight = height;
    if (const Ref<NSString> title = this->title()) {
        const NSSize size = title->sizeWithAttributes(titleAttributes());
        parts.title = NSMakeRect(kTitleInset, height - size.height, size.width, size.height);
        frameHeight = std::max(height - size.height - kTitleGap, 0.0);
    }
    const double half = std::max(0.0, _borderWidth) * 0.5;
    parts.frame = NSInsetRect(NSMakeRect(0.0, 0.0, width, frameHeight), half, half);
    return parts;
}

void NSBox::drawRect(NSRect /*rect*/)
{
    if (_transparent) {
        return;
    }
    const Layout parts = layout();
    const Ref<NSBezierPath> frame =
        NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(parts.frame, _cornerRadius, _cornerRadius);
    frame->setLineWidth(_borderWidth);
    if (const Ref<NSColor> color = fillColor()) {
        color->setFill();
        frame->fill();
    }
    if (const Ref<NSColor> color = borderColor(); color && _borderWidth > 0.0) {
        color->setStroke();
        frame->stroke();
    }
    if (const Ref<NSString> title = this->title()) {
        title->drawInRect_withAttributes(parts.title, titleAttributes());
    }
}
