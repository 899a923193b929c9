#include "platform/appkit/NSControl.h"

#include "platform/foundation/ClassTable.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&NSControl::isEnabled, &NSControl::setEnabled>("enabled"),
};

} // namespace

constinit const ClassTable NSControl::table{"NSControl", &NSView::table, kProperties, {}};

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
