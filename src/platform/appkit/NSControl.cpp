#include "platform/appkit/NSControl.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSString.h"

#include <array>
#include <string>

namespace
{

Ref<NSObject> actionName(const NSObject& control)
{
    return NSString::stringWithUTF8String(
        std::string(static_cast<const NSControl&>(control).action().name).c_str());
}

/// Takes the name of a method of the target, whose table keeps the text.
bool setActionByName(NSObject& object, NSObject* value)
{
    auto& control = static_cast<NSControl&>(object);
    const Ref<NSObject> target = control.target();
    const auto* const name = dynamic_cast<NSString*>(value);
    if (!target || name == nullptr) {
        return false;
    }
    const SelectorEntry* const entry = target->classTable().findSelector(SEL{name->UTF8String()});
    if (entry == nullptr) {
        return false;
    }
    control.setAction(SEL{entry->name});
    return true;
}

constexpr std::array kProperties{
    property<&NSControl::isEnabled, &NSControl::setEnabled>("enabled"),
    property<&NSControl::target, &NSControl::setTarget>("target"),
    PropertyEntry{"action", &actionName, &setActionByName},
};

} // namespace

constinit const ClassTable NSControl::table{
    "NSControl", &NSView::table, kProperties, {}, makeObject<NSControl>};

const ClassTable& NSControl::classTable() const
{
    return table;
}

NSControl* NSControl::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}

void NSControl::setEnabled(bool enabled)
{
    if (std::exchange(_enabled, enabled) != enabled) {
        acceptsFirstResponderDidChange();
        setNeedsDisplay();
    }
}

bool NSControl::sendAction_to(SEL action, NSObject* target)
{
    if (action == SEL{} || target == nullptr) {
        return false;
    }
    const Ref<NSObject> keptTarget(target);
    const Ref<NSControl> self(this);
    return target->performSelector_withObject(action, this);
}
