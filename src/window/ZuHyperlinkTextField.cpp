#include "window/ZuHyperlinkTextField.h"

#include "platform/appkit/NSEvent.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&ZuHyperlinkTextField::isAction, &ZuHyperlinkTextField::setIsAction>("isAction"),
    property<&ZuHyperlinkTextField::caller, &ZuHyperlinkTextField::setCaller>("caller"),
};

} // namespace

constinit const ClassTable ZuHyperlinkTextField::table{
    "ZuHyperlinkTextField", &NSTextField::table, kProperties, {}, makeObject<ZuHyperlinkTextField>};

const ClassTable& ZuHyperlinkTextField::classTable() const
{
    return table;
}

Ref<NSAttributedString> ZuHyperlinkTextField::hyperlinkFromString_withFont(NSString* text,
                                                                           const Ref<NSFont>& font)
{
    return make<NSAttributedString>()->initWithString_attributes(text, {{NSFontAttributeName, font}});
}

Ref<NSAttributedString> ZuHyperlinkTextField::hyperlinkFromString_withURL_withFont(NSString* text,
                                                                                   const Ref<NSObject>& url,
                                                                                   const Ref<NSFont>& font)
{
    return make<NSAttributedString>()->initWithString_attributes(
        text, {{NSFontAttributeName, font},
               {NSLinkAttributeName, url},
               {NSForegroundColorAttributeName, NSColor::blueColor()},
               {NSUnderlineStyleAttributeName, NSNumber::numberWithInteger(NSUnderlineStyleSingle)}});
}

ZuHyperlinkTextField::ZuHyperlinkTextField() = default;

ZuHyperlinkTextField* ZuHyperlinkTextField::initWithFrame(NSRect frame)
{
    NSTextField::initWithFrame(frame);
    return this;
}

void ZuHyperlinkTextField::awakeFromNib()
{
    setAllowsEditingTextAttributes(true);
    setSelectable(true);
    _isAction = false;
    _funcAction = {};
    _caller = nullptr;
}

void ZuHyperlinkTextField::mouseDown(NSEvent* event)
{
    if (_isAction) {
        performAction();
    } else {
        NSTextField::mouseDown(event);
    }
}

bool ZuHyperlinkTextField::keyDown(NSEvent* event)
{
    const Ref<NSString> typed = event->characters();
    if (!_isAction || (typed->characters() != u"\r" && typed->characters() != u" ")) {
        return NSTextField::keyDown(event);
    }
    performAction();
    return true;
}

void ZuHyperlinkTextField::performAction()
{
    Ref<NSObject> link;
    const Ref<NSAttributedString> text = attributedStringValue();
    text->enumerateAttributesInRange_usingBlock(
        {0, stringValue()->length()}, [&](const NSAttributes& attributes, NSRange /*range*/, bool& stop) {
            link = attributes[NSLinkAttributeName];
            stop = static_cast<bool>(link);
        });
    if (const Ref<NSObject> receiver = link && isEnabled() && _funcAction != SEL{} ? caller() : nullptr) {
        receiver->performSelector_withObject(_funcAction, link.get());
    }
}
