#include "platform/appkit/NSMenuItem.h"

#include "platform/foundation/NSString.h"

NSMenuItem::NSMenuItem() : _title(NSString::stringWithCharacters({})), _keyEquivalent(_title) {}

NSMenuItem::~NSMenuItem() = default;

NSMenuItem* NSMenuItem::initWithTitle_action_keyEquivalent(NSString* title, SEL action,
                                                           NSString* keyEquivalent)
{
    if (title != nullptr) {
        _title = title->copy();
    }
    _action = action;
    if (keyEquivalent != nullptr) {
        _keyEquivalent = keyEquivalent->copy();
    }
    return this;
}

Ref<NSString> NSMenuItem::title() const
{
    return _title;
}

Ref<NSString> NSMenuItem::keyEquivalent() const
{
    return _keyEquivalent;
}

bool NSMenuItem::isEnabled() const
{
    const Ref<NSObject> receiver = target();
    return receiver && receiver->respondsToSelector(_action);
}

void NSMenuItem::perform()
{
    const Ref<NSMenuItem> self(this);
    if (isEnabled()) {
        const Ref<NSObject> receiver = target();
        receiver->performSelector_withObject(_action, this);
    }
}
