#include "window/ZuToolButton.h"

#include "platform/appkit/NSTrackingArea.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"

#include <array>
#include <cmath>

namespace
{

constexpr std::int32_t kDefaultOffset = 4;
constexpr double kSmallSize = 12.0; // badge and description
constexpr double kNameSize = 14.0;
constexpr double kDescriptionGrey = 127.0 / 255.0;

constexpr double kFrameRoom = 1.0;         // of the content, at the top and at the right
constexpr double kPressShift = 1.0;        // of the content, to the right and up
constexpr double kBadgeTextInset = 8.0;    // from the badge's left edge
constexpr double kBadgeTextRise = 2.0;     // above the badge's top edge
constexpr double kBadgeTextTrim = 2.0;     // off the badge's width and height
constexpr double kIconGap = 18.0;          // between icon and text column
constexpr double kNameRise = 4.0;          // above the icon's top edge
constexpr double kDescriptionGap = 4.0;    // under the name
constexpr double kDescriptionMargin = 2.0; // right of the description

constexpr std::array kProperties{
    property<&ZuToolButton::str_url, &ZuToolButton::setStr_url>("str_url"),
    property<&ZuToolButton::color_border, &ZuToolButton::setColor_border>("color_border"),
    property<&ZuToolButton::color_background, &ZuToolButton::setColor_background>("color_background"),
    property<&ZuToolButton::color_desc, &ZuToolButton::setColor_desc>("color_desc"),
    property<&ZuToolButton::color_border_normal, &ZuToolButton::setColor_border_normal>(
        "color_border_normal"),
    property<&ZuToolButton::offset, &ZuToolButton::setOffset>("offset"),
    property<&ZuToolButton::color_name_hover, &ZuToolButton::setColor_name_hover>("color_name_hover"),
    property<&ZuToolButton::color_desc_hover, &ZuToolButton::setColor_desc_hover>("color_desc_hover"),
};

void drawImage(const NSImage* image, NSRect rect)
{
    if (image != nullptr) {
        image->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
            rect, NSZeroRect, NSCompositingOperation::SourceOver, 1.0, true, nullptr);
    }
}

void drawText(const NSString* text, NSRect rect, const Ref<NSFont>& font, const Ref<NSColor>& color)
{
    if (text != nullptr) {
        text->drawInRect_withAttributes(
            rect, {{NSFontAttributeName, font}, {NSForegroundColorAttributeName, color}});
    }
}

void setFill(const Ref<NSColor>& color)
{
    if (color) {
        color->setFill();
    }
}

void setStroke(const Ref<NSColor>& color)
{
    if (color) {
        color->setStroke();
    }
}

NSSize sizeOf(const NSImage* image)
{
    return image == nullptr ? NSSize{} : image->size();
}

} // namespace

constinit const ClassTable ZuToolButton::table{
    "ZuToolButton", &NSButton::table, kProperties, {}, makeObject<ZuToolButton>};

const ClassTable& ZuToolButton::classTable() const
{
    return table;
}

ZuToolButton::ZuToolButton()
{
    setFocusRingType(NSFocusRingType::None);
}

ZuToolButton::~ZuToolButton()
{
    removeTrackingArea(_area.get());
}

void ZuToolButton::awakeFromNib()
{
    initData();
}

void ZuToolButton::mouseEntered(NSEvent* /*event*/)
{
    _entered = true;
    setNeedsDisplay();
}

void ZuToolButton::mouseExited(NSEvent* /*event*/)
{
    _entered = false;
    _leftDown = false;
    setNeedsDisplay();
}

void ZuToolButton::mouseDown(NSEvent* event)
{
    _leftDown = true;
    NSButton::mouseDown(event);
}

void ZuToolButton::mouseUp(NSEvent* event)
{
    _leftDown = false;
    NSButton::mouseUp(event);
}

void ZuToolButton::viewDidHide()
{
    NSButton::viewDidHide();
    _leftDown = false;
}

void ZuToolButton::initData()
{
    removeTrackingArea(_area.get());
    _area = make<NSTrackingArea>()->initWithRect_options_owner_userInfo(
        bounds(), NSTrackingMouseEnteredAndExited | NSTrackingActiveInKeyWindow, this, nullptr);
    addTrackingArea(_area);
    _entered = false;
    _leftDown = false;
    setOffset(kDefaultOffset);

    _font_hot = NSFont::fontWithName_size("Arial", kSmallSize);
    _font_name = NSFont::fontWithName_size("Arial Bold", kNameSize);
    _font_desc = NSFont::fontWithName_size("Arial", kSmallSize);

    setColor_desc(NSColor::colorWithSRGBRed_green_blue_alpha(kDescriptionGrey, kDescriptionGrey,
                                                             kDescriptionGrey, 1.0));
    setColor_border(NSColor::colorWithSRGBRed_green_blue_alpha(0.0, 0.0, 1.0, 1.0));
    setColor_background(NSColor::colorWithSRGBRed_green_blue_alpha(0.0, 0.0, 1.0, 1.0));
    setColor_name_hover(NSColor::whiteColor());
    setColor_desc_hover(color_desc());
    setColor_border_normal(NSColor::whiteColor());
}

ZuToolButton* ZuToolButton::initWithFrame(NSRect frame)
{
    NSButton::initWithFrame(frame);
    initData();
    return this;
}

/// Where the parts of the face lie; those of absent content are empty.
struct ZuToolButton::Layout {
    NSRect icon;
    NSRect badge;
    NSRect badgeText;
    NSRect name;
    NSRect description;
};

ZuToolButton::Layout ZuToolButton::layout() const
{
    const NSRect all = bounds();
    NSRect content = NSMakeRect(all.origin.x, all.origin.y + kFrameRoom, all.size.width - kFrameRoom,
                                all.size.height - kFrameRoom);
    if (isPressedLook()) {
        content.origin.x += kPressShift;
        content.origin.y -= kPressShift;
    }

    Layout parts;
    const NSSize icon = sizeOf(image().get());
    parts.icon = {{content.origin.x + offset(), content.origin.y + (content.size.height - icon.height) * 0.5},
                  icon};

    // Centred on the icon's top-right corner.
    const NSSize badge = sizeOf(alternateImage().get());
    parts.badge = {
        {parts.icon.origin.x + icon.width - badge.width * 0.5, parts.icon.origin.y - badge.height * 0.5},
        badge};
    parts.badgeText =
        NSMakeRect(parts.badge.origin.x + kBadgeTextInset, parts.badge.origin.y - kBadgeTextRise,
                   badge.width - kBadgeTextTrim, badge.height - kBadgeTextTrim);

    const double x = parts.icon.origin.x + icon.width + kIconGap;
    // A column that would begin above the face begins as far below its top edge.
    const double y = std::abs(std::trunc(parts.icon.origin.y - kNameRise));
    const Ref<NSString> name = title();
    parts.name = {{x, y}, name ? name->sizeWithAttributes({{NSFontAttributeName, _font_name}}) : NSSize{}};

    const double descriptionY = y + parts.name.size.height + kDescriptionGap;
    parts.description = NSMakeRect(x, descriptionY, content.size.width - x - kDescriptionMargin,
                                   content.size.height - descriptionY);
    return parts;
}

void ZuToolButton::drawRect(NSRect rect)
{
    const Layout parts = layout();
    const bool pressed = isPressedLook();

    if (pressed) {
        setFill(color_background());
        NSBezierPath::fillRect(rect);
    }
    setStroke(_entered ? color_border() : color_border_normal());
    NSBezierPath::strokeRect(rect);

    drawImage(image().get(), parts.icon);
    if (const Ref<NSImage> badge = alternateImage()) {
        drawImage(badge.get(), parts.badge);
        drawText(alternateTitle().get(), parts.badgeText, _font_hot, NSColor::whiteColor());
    }
    drawText(title().get(), parts.name, _font_name, pressed ? color_name_hover() : NSColor::blackColor());
    drawText(toolTip().get(), parts.description, _font_desc, pressed ? color_desc_hover() : color_desc());
}

std::int32_t ZuToolButton::offset() const
{
    return _offset.get();
}

void ZuToolButton::setOffset(std::int32_t offset)
{
    _offset.set(offset);
}

Ref<NSColor> ZuToolButton::color_border() const
{
    return _color_border.get();
}

void ZuToolButton::setColor_border(Ref<NSColor> color)
{
    _color_border.set(std::move(color));
}

Ref<NSColor> ZuToolButton::color_background() const
{
    return _color_background.get();
}

void ZuToolButton::setColor_background(Ref<NSColor> color)
{
    _color_background.set(std::move(color));
}

Ref<NSColor> ZuToolButton::color_name_hover() const
{
    return _color_name_hover.get();
}

void ZuToolButton::setColor_name_hover(Ref<NSColor> color)
{
    _color_name_hover.set(std::move(color));
}

Ref<NSColor> ZuToolButton::color_desc_hover() const
{
    return _color_desc_hover.get();
}

void ZuToolButton::setColor_desc_hover(Ref<NSColor> color)
{
    _color_desc_hover.set(std::move(color));
}

Ref<NSString> ZuToolButton::str_url() const
{
    return _str_url.get();
}

void ZuToolButton::setStr_url(Ref<NSString> url)
{
    _str_url.set(url);
}

Ref<NSColor> ZuToolButton::color_border_normal() const
{
    return _color_border_normal.get();
}

void ZuToolButton::setColor_border_normal(Ref<NSColor> color)
{
    _color_border_normal.set(std::move(color));
}

Ref<NSColor> ZuToolButton::color_desc() const
{
    return _color_desc.get();
}

void ZuToolButton::setColor_desc(Ref<NSColor> color)
{
    _color_desc.set(std::move(color));
}
