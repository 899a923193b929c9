#include "platform/appkit/NSButton.h"

#include "platform/appkit/NSButtonCell.h"
#include "platform/appkit/NSEvent.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"

#include <array>

namespace
{

constexpr double kTitleSize = 13.0;

constexpr std::array kProperties{
    property<&NSButton::title, &NSButton::setTitle>("title"),
    property<&NSButton::alternateTitle, &NSButton::setAlternateTitle>("alternateTitle"),
    property<&NSButton::image, &NSButton::setImage>("image"),
    property<&NSButton::alternateImage, &NSButton::setAlternateImage>("alternateImage"),
    property<&NSButton::isBordered, &NSButton::setBordered>("bordered"),
};
constexpr std::array kSelectors{
    selector<&NSButton::performClick>("performClick:"),
};

} // namespace

constinit const ClassTable NSButton::table{"NSButton", &NSControl::table, kProperties, kSelectors,
                                           makeObject<NSButton>};

const ClassTable& NSButton::classTable() const
{
    return table;
}

NSButton::NSButton() = default;

NSButton::~NSButton() = default;

NSButton* NSButton::initWithFrame(NSRect frame)
{
    NSControl::initWithFrame(frame);
    return this;
}

Ref<NSString> NSButton::title() const
{
    const Ref<NSAttributedString> title = _title.get();
    return title ? title->string() : nullptr;
}

void NSButton::setTitle(Ref<NSString> title)
{
    const NSAttributes attributes{{NSFontAttributeName, NSFont::fontWithName_size("Arial", kTitleSize)}};
    setAttributedTitle(title ? make<NSAttributedString>()->initWithString_attributes(title.get(), attributes)
                             : nullptr);
}

Ref<NSAttributedString> NSButton::attributedTitle() const
{
    return _title.get();
}

void NSButton::setAttributedTitle(Ref<NSAttributedString> title)
{
    _title.set(title);
    setNeedsDisplay();
}

Ref<NSString> NSButton::alternateTitle() const
{
    return _alternateTitle.get();
}

void NSButton::setAlternateTitle(Ref<NSString> title)
{
    _alternateTitle.set(title);
    setNeedsDisplay();
}

Ref<NSImage> NSButton::image() const
{
    return _image.get();
}

void NSButton::setImage(Ref<NSImage> image)
{
    _image.set(std::move(image));
    setNeedsDisplay();
}

Ref<NSImage> NSButton::alternateImage() const
{
    return _alternateImage.get();
}

void NSButton::setAlternateImage(Ref<NSImage> image)
{
    _alternateImage.set(std::move(image));
    setNeedsDisplay();
}

void NSButton::performClick(NSObject* /*sender*/)
{
    if (isEnabled()) {
        sendAction_to(action(), target().get());
    }
}

void NSButton::setBordered(bool bordered)
{
    _bordered = bordered;
    setNeedsDisplay();
}

void NSButton::drawRect(NSRect /*rect*/)
{
    if (_bordered) {
        NSButtonCell::drawBezelWithFrame(bounds(), _highlighted);
    }
    drawTitle();
}

void NSButton::drawTitle() const
{
    const Ref<NSAttributedString> given = attributedTitle();
    if (!given) {
        return;
    }
    const Ref<NSMutableAttributedString> title =
        make<NSMutableAttributedString>()->initWithAttributedString(given.get());
    title->addMissingAttribute(
        {NSForegroundColorAttributeName, isEnabled() ? NSColor::blackColor() : NSColor::grayColor()});
    const auto [width, height] = bounds().size;
    const NSSize size = title->size();
    title->drawInRect(
        NSMakeRect((width - size.width) * 0.5, (height - size.height) * 0.5, size.width, size.height));
}

bool NSButton::contains(const NSEvent& event) const
{
    const NSPoint point = convertPoint_fromView(event.locationInWindow(), nullptr);
    return NSMouseInRect(point, bounds(), isFlipped());
}

void NSButton::setHighlighted(bool highlighted)
{
    _highlighted = highlighted;
    setNeedsDisplay();
}

void NSButton::mouseDown(NSEvent* /*event*/)
{
    if (isEnabled()) {
        _pressed = true;
        setHighlighted(true);
    }
}

void NSButton::mouseDragged(NSEvent* event)
{
    if (_pressed && contains(*event) != _highlighted) {
        setHighlighted(!_highlighted);
    }
}

void NSButton::viewDidHide()
{
    _pressed = false;
    _highlighted = false;
}

void NSButton::mouseUp(NSEvent* event)
{
    if (!std::exchange(_pressed, false)) {
        return;
    }
    setHighlighted(false);
    if (contains(*event)) {
        performClick(this);
    }
}

bool NSButton::keyDown(NSEvent* event)
{
    const Ref<NSString> characters = event->characters();
    if (!isEnabled() || !characters || characters->characters() != u" ") {
        return NSControl::keyDown(event);
    }
    if (!event->isARepeat()) {
        performClick(this);
    }
    return true;
}

Ref<NSString> NSButton::accessibilityLabel() const
{
    const Ref<NSString> label = NSControl::accessibilityLabel();
    return label ? label : title();
}

bool NSButton::accessibilityPerformPress()
{
    const bool enabled = isEnabled();
    performClick(this);
    return enabled;
}
