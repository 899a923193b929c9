#include "window/WyClickableURLTextField.h"

#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NSMenuItem.h"
#include "platform/appkit/NSPasteboard.h"
#include "platform/appkit/NSTextFieldCell.h"
#include "platform/appkit/NSWindow.h"
#include "platform/appkit/NSWorkspace.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSURL.h"
#include "platform/graphics/NSLayoutManager.h"
#include "platform/graphics/NSTextContainer.h"
#include "platform/graphics/NSTextStorage.h"

#include <array>
#include <limits>

namespace
{

constexpr double kUnlimited = std::numeric_limits<float>::max();
constexpr SEL kCopyURL{"copyURL:"};
constexpr const char* kCopyTitle = "Copy URL";

constexpr std::array kProperties{
    property<&WyClickableURLTextField::canCopyURLs, &WyClickableURLTextField::setCanCopyURLs>("canCopyURLs"),
};
constexpr std::array kSelectors{
    selector<&WyClickableURLTextField::copyURL>(kCopyURL.name),
};

} // namespace

constinit const ClassTable WyClickableURLTextField::table{"WyClickableURLTextField", &NSTextField::table,
                                                          kProperties, kSelectors,
                                                          makeObject<WyClickableURLTextField>};

const ClassTable& WyClickableURLTextField::classTable() const
{
    return table;
}

WyClickableURLTextField::WyClickableURLTextField() = default;

WyClickableURLTextField::~WyClickableURLTextField() = default;

WyClickableURLTextField* WyClickableURLTextField::initWithFrame(NSRect frame)
{
    NSTextField::initWithFrame(frame);
    setEditable(false);
    setSelectable(false);
    setCanCopyURLs(false);
    return this;
}

void WyClickableURLTextField::awakeFromNib()
{
    setEditable(false);
    setSelectable(false);
}

// The text

void WyClickableURLTextField::setAttributedStringValue(Ref<NSAttributedString> text)
{
    if (_urlStorage) {
        _urlStorage->setAttributedString(text.get());
    }
    if (const Ref<NSWindow> shownIn = window()) {
        shownIn->invalidateCursorRectsForView(this);
    }
    NSTextField::setAttributedStringValue(std::move(text));
}

void WyClickableURLTextField::setStringValue(Ref<NSString> text)
{
    setAttributedStringValue(make<NSAttributedString>()->initWithString(text.get()));
}

// Where the links are

void WyClickableURLTextField::buildTextSystem()
{
    const NSSize room = textRect().size;
    const bool isScrollable = cell() != nullptr && cell()->isScrollable();
    const Ref<NSTextContainer> container = make<NSTextContainer>()->initWithContainerSize(
        isScrollable ? NSSize{kUnlimited, room.height} : NSSize{room.width, kUnlimited});
    container->setLineFragmentPadding(NSTextFieldCell::kTextInset);
    const Ref<NSLayoutManager> manager = make<NSLayoutManager>();
    _urlStorage = make<NSTextStorage>();
    _urlStorage->addLayoutManager(manager);
    manager->addTextContainer(container);
    _urlManager = manager.get();
    _urlContainer = container.get();
    _urlStorage->setAttributedString(attributedStringValue().get());
}

std::vector<NSRect> WyClickableURLTextField::rectsOfCharacters(NSRange characters, NSRect inside) const
{
    const NSRange glyphs = _urlManager->glyphRangeForCharacterRange_actualCharacterRange(characters, nullptr);
    std::vector<NSRect> rects =
        _urlManager->enclosingRectsForGlyphRange_inTextContainer(glyphs, _urlContainer);
    for (NSRect& rect : rects) {
        rect.origin = {rect.origin.x + inside.origin.x, rect.origin.y + inside.origin.y};
        rect = NSIntersectionRect(rect, inside);
    }
    return rects;
}

void WyClickableURLTextField::resetCursorRects()
{
    if (attributedStringValue()->length() == 0) {
        NSTextField::resetCursorRects();
        return;
    }
    if (!_urlStorage) {
        buildTextSystem();
    }
    const Ref<NSCursor> hand = NSCursor::pointingHandCursor();
    if (!hand || !isEnabled()) {
        NSTextField::resetCursorRects();
        return;
    }
    const NSView* const surroundings = superview();
    const NSRect visible = surroundings != nullptr
                               ? convertRect_fromView(surroundings->visibleRect(), surroundings)
                               : NSZeroRect;
    const NSRect inside = textRect();
    const std::size_t length = _urlStorage->length();
    for (NSRange run; NSMaxRange(run) < length;) {
        const std::size_t start = NSMaxRange(run);
        if (_urlStorage->attribute_atIndex_longestEffectiveRange_inRange(
                NSLinkAttributeName, start, &run, {start, length - start}) == nullptr) {
            continue;
        }
        for (const NSRect& rect : rectsOfCharacters(run, inside)) {
            if (NSIntersectsRect(rect, visible)) {
                addCursorRect_cursor(NSIntersectionRect(rect, visible), hand);
            }
        }
    }
}

Ref<NSObject> WyClickableURLTextField::urlAtMouse(NSEvent* event) const
{
    const NSPoint point = convertPoint_fromView(event->locationInWindow(), nullptr);
    const NSRect inside = textRect();
    if (!_urlStorage || _urlStorage->length() == 0 || !NSMouseInRect(point, inside, isFlipped())) {
        return nullptr;
    }
    const NSPoint inContainer{point.x - inside.origin.x, point.y - inside.origin.y};
    const std::size_t character = _urlManager->characterIndexForGlyphAtIndex(
        _urlManager->glyphIndexForPoint_inTextContainer(inContainer, _urlContainer));
    NSRange run;
    NSObject* const link = _urlStorage->attribute_atIndex_longestEffectiveRange_inRange(
        NSLinkAttributeName, character, &run, {character, _urlStorage->length() - character});
    if (link == nullptr) {
        return nullptr;
    }
    for (const NSRect& rect : rectsOfCharacters(run, inside)) {
        if (NSMouseInRect(point, rect, isFlipped())) {
            auto* const text = dynamic_cast<NSString*>(link);
            return text != nullptr ? Ref<NSObject>(NSURL::URLWithString(text)) : link;
        }
    }
    return nullptr;
}

// Clicks

void WyClickableURLTextField::mouseDown(NSEvent* event)
{
    _clickedURL = isEnabled() ? urlAtMouse(event) : nullptr;
}

void WyClickableURLTextField::mouseUp(NSEvent* event)
{
    const Ref<WyClickableURLTextField> self(this); // the delegate may let it go
    const Ref<NSObject> url = urlAtMouse(event);
    if (url && url->isEqual(_clickedURL.get())) {
        const Ref<NSObject> listener = delegate();
        auto* const opener = dynamic_cast<WyClickableURLTextFieldDelegate*>(listener.get());
        if (opener == nullptr || !opener->textField_openURL(this, url.get())) {
            NSWorkspace::sharedWorkspace()->openURL(dynamic_cast<NSURL*>(url.get()));
        }
    }
    _clickedURL = nullptr;
    NSTextField::mouseUp(event);
}

// Copying

Ref<NSMenu> WyClickableURLTextField::menuForEvent(NSEvent* event)
{
    const Ref<NSObject> url = _canCopyURLs ? urlAtMouse(event) : nullptr;
    if (!url) {
        return nullptr;
    }
    const Ref<NSString> key = NSString::stringWithUTF8String(kCopyTitle);
    const Ref<NSString> empty = NSString::stringWithUTF8String("");
    const Ref<NSString> title =
        NSBundle::mainBundle()->localizedStringForKey_value_table(key.get(), empty.get(), nullptr);
    const Ref<NSMenuItem> item =
        make<NSMenuItem>()->initWithTitle_action_keyEquivalent(title.get(), kCopyURL, empty.get());
    item->setTarget(this);
    item->setRepresentedObject(url);
    Ref<NSMenu> menu = make<NSMenu>()->initWithTitle(key.get());
    menu->addItem(item);
    return menu;
}

void WyClickableURLTextField::copyURL(NSObject* sender)
{
    const auto* const item = dynamic_cast<NSMenuItem*>(sender);
    const Ref<NSObject> represented = item != nullptr ? item->representedObject() : nullptr;
    const auto* const url = dynamic_cast<NSURL*>(represented.get());
    if (url == nullptr) {
        return;
    }
    const Ref<NSPasteboard> pasteboard = NSPasteboard::pasteboardWithName(NSGeneralPboard);
    pasteboard->declareTypes_owner({NSURLPboardType, NSStringPboardType}, nullptr);
    url->writeToPasteboard(pasteboard.get());
    pasteboard->setString_forType(url->absoluteString().get(), NSStringPboardType);
}
