#include "window/ZuSimpleButton.h"

#include "platform/appkit/NSTrackingArea.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSImage.h"
#include "util/UiUtil.h"

#include <array>

namespace
{

constexpr double kDefaultRadius = 4.0;
constexpr std::array kAccent{32.0 / 255.0, 186.0 / 255.0, 234.0 / 255.0};
constexpr double kBorderWidth = 1.0;
constexpr double kImageGap = 6.0; // between image and title

constexpr std::array kProperties{
    property<&ZuSimpleButton::color_hover_font, &ZuSimpleButton::setColor_hover_font>("color_hover_font"),
    property<&ZuSimpleButton::color_normal_border, &ZuSimpleButton::setColor_normal_border>(
        "color_normal_border"),
    property<&ZuSimpleButton::color_normal_background, &ZuSimpleButton::setColor_normal_background>(
        "color_normal_background"),
    property<&ZuSimpleButton::color_hover_border, &ZuSimpleButton::setColor_hover_border>(
        "color_hover_border"),
    property<&ZuSimpleButton::color_hover_background, &ZuSimpleButton::setColor_hover_background>(
        "color_hover_background"),
    property<&ZuSimpleButton::xRadius_, &ZuSimpleButton::setXRadius_>("xRadius_"),
    property<&ZuSimpleButton::yRadius_, &ZuSimpleButton::setYRadius_>("yRadius_"),
    property<&ZuSimpleButton::getColor_normal_font, &ZuSimpleButton::setColor_normal_font>(
        "color_normal_font"),
};

} // namespace

constinit const ClassTable ZuSimpleButton::table{
    "ZuSimpleButton", &NSButton::table, kProperties, {}, makeObject<ZuSimpleButton>};

const ClassTable& ZuSimpleButton::classTable() const
{
    return table;
}

ZuSimpleButton::ZuSimpleButton()
{
    setBordered(false); // the face is this class's own
}

ZuSimpleButton::~ZuSimpleButton()
{
    removeTrackingArea(_area.get());
}

ZuSimpleButton* ZuSimpleButton::initWithFrame(NSRect frame)
{
    NSButton::initWithFrame(frame);
    return this;
}

void ZuSimpleButton::awakeFromNib()
{
    setBordered(false);
    UiUtil::setButton_fontColor(this, NSColor::whiteColor().get());
    removeTrackingArea(_area.get());
    _area = make<NSTrackingArea>()->initWithRect_options_owner_userInfo(
        bounds(), NSTrackingMouseEnteredAndExited | NSTrackingActiveInKeyWindow, this, nullptr);
    addTrackingArea(_area);
    _entered = false;
    _leftDown = false;
    setXRadius_(kDefaultRadius);
    setYRadius_(kDefaultRadius);

    const auto [red, green, blue] = kAccent;
    const Ref<NSColor> accent = NSColor::colorWithSRGBRed_green_blue_alpha(red, green, blue, 1.0);
    const Ref<NSColor> white = NSColor::whiteColor();
    setColor_hover_background(white);
    setColor_hover_border(accent);
    setColor_hover_font(accent);
    setColor_normal_background(accent);
    setColor_normal_border(accent);
    setColor_normal_font(white);
}

Ref<NSColor> ZuSimpleButton::getColor_normal_font() const
{
    return _color_normal_font.get();
}

void ZuSimpleButton::setColor_normal_font(Ref<NSColor> color)
{
    _color_normal_font.set(color);
    UiUtil::setButton_fontColor(this, color.get());
}

void ZuSimpleButton::setTitle(Ref<NSString> title)
{
    NSButton::setTitle(std::move(title));
    UiUtil::setButton_fontColor(this, getColor_normal_font().get());
}

void ZuSimpleButton::colorTitle()
{
    UiUtil::setButton_fontColor(this, (isHoverLook() ? color_hover_font() : getColor_normal_font()).get());
}

void ZuSimpleButton::setEnabled(bool enabled)
{
    NSButton::setEnabled(enabled);
    if (enabled) {
        colorTitle(); // the pointer may be inside, and the title in the colour of a press or release
    }
}

void ZuSimpleButton::mouseEntered(NSEvent* /*event*/)
{
    UiUtil::setButton_fontColor(this, color_hover_font().get());
    _entered = true;
    setNeedsDisplay();
}

void ZuSimpleButton::mouseExited(NSEvent* /*event*/)
{
    _entered = false;
    _leftDown = false;
    colorTitle();
    setNeedsDisplay();
}

void ZuSimpleButton::mouseDown(NSEvent* event)
{
    _leftDown = true;
    colorTitle();
    NSButton::mouseDown(event);
}

void ZuSimpleButton::mouseUp(NSEvent* event)
{
    _leftDown = false;
    // The pointer is inside still, and the hover face comes next, perhaps while the action runs: the normal
    // colour could not be read on it.
    colorTitle();
    NSButton::mouseUp(event);
}

void ZuSimpleButton::performClick(NSObject* sender)
{
    const Ref<ZuSimpleButton> self(this);
    NSButton::performClick(sender);
    colorTitle(); // of a title that the action has set, while the pointer may be inside
}

void ZuSimpleButton::viewDidHide()
{
    NSButton::viewDidHide();
    _leftDown = false;
}

/// Where image and title lie.
struct ZuSimpleButton::Layout {
    NSRect image;
    NSRect title;
};

ZuSimpleButton::Layout ZuSimpleButton::layout(NSSize face) const
{
    const NSSize imageSize = image()->size();
    const Ref<NSAttributedString> text = attributedTitle();
    const NSSize titleSize = text ? text->size() : NSSize{};
    const double x = (face.width - imageSize.width - kImageGap - titleSize.width) * 0.5;
    return {{{x, (face.height - imageSize.height) * 0.5}, imageSize},
            {{x + imageSize.width + kImageGap, (face.height - titleSize.height) * 0.5}, titleSize}};
}

void ZuSimpleButton::drawRect(NSRect rect)
{
    const Ref<NSBezierPath> face =
        NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(rect, xRadius_(), yRadius_());
    face->setLineWidth(kBorderWidth);
    const bool hover = isHoverLook();
    const Ref<NSColor> background = !isEnabled() ? NSColor::grayColor()
                                    : hover      ? color_hover_background()
                                                 : color_normal_background();
    const Ref<NSColor> border = hover ? color_hover_border() : color_normal_border();
    if (background) {
        background->setFill();
    }
    if (border) {
        border->setStroke();
    }
    if (background) {
        face->fill();
    }
    if (border) {
        face->stroke();
    }

    const Ref<NSImage> picture = image();
    if (!picture) {
        NSButton::drawRect(rect);
        return;
    }
    const Layout parts = layout(rect.size);
    picture->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
        parts.image, NSZeroRect, NSCompositingOperation::SourceOver, 1.0, true, nullptr);
    if (const Ref<NSAttributedString> text = attributedTitle()) {
        text->drawInRect(parts.title);
    }
}

Ref<NSColor> ZuSimpleButton::color_hover_font() const
{
    return _color_hover_font.get();
}

void ZuSimpleButton::setColor_hover_font(Ref<NSColor> color)
{
    _color_hover_font.set(std::move(color));
}

Ref<NSColor> ZuSimpleButton::color_normal_border() const
{
    return _color_normal_border.get();
}

void ZuSimpleButton::setColor_normal_border(Ref<NSColor> color)
{
    _color_normal_border.set(std::move(color));
}

Ref<NSColor> ZuSimpleButton::color_normal_background() const
{
    return _color_normal_background.get();
}

void ZuSimpleButton::setColor_normal_background(Ref<NSColor> color)
{
    _color_normal_background.set(std::move(color));
}

Ref<NSColor> ZuSimpleButton::color_hover_border() const
{
    return _color_hover_border.get();
}

void ZuSimpleButton::setColor_hover_border(Ref<NSColor> color)
{
    _color_hover_border.set(std::move(color));
}

Ref<NSColor> ZuSimpleButton::color_hover_background() const
{
    return _color_hover_background.get();
}

void ZuSimpleButton::setColor_hover_background(Ref<NSColor> color)
{
    _color_hover_background.set(std::move(color));
}
