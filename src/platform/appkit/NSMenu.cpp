#include "platform/appkit/NSMenu.h"

#include "platform/appkit/NSMenuItem.h"
#include "platform/foundation/NSString.h"

NSMenu::NSMenu() : _title(NSString::stringWithCharacters({})) {}

NSMenu::~NSMenu() = default;

NSMenu* NSMenu::initWithTitle(NSString* title)
{
    if (title != nullptr) {
        _title = title->copy();
    }
    return this;
}

Ref<NSString> NSMenu::title() const
{
    return _title;
}

void NSMenu::addItem(Ref<NSMenuItem> item)
{
    if (item) {
        _items.push_back(std::move(item));
    }
}
