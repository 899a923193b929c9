#pragma once

#include "platform/appkit/NSView.h"
#include "platform/foundation/Weak.h"

/// A view that the user operates and that reports this by sending an action to a target.
class TESSALINE_EXPORT NSControl : public NSView
{
public:
    NSControl* initWithFrame(NSRect frame) override;

    /// Initially enabled. A disabled control takes no press and no key.
    bool isEnabled() const { return _enabled; }
    virtual void setEnabled(bool enabled);

    /// Where the action goes; not retained.
    Ref<NSObject> target() const { return _target.get(); }
    void setTarget(NSObject* target) { _target = target; }

    /// The method that is called on the target, with the control as argument. By name (`setValue_forKey`) it
    /// is a text, which has to be a method of the present target.
    SEL action() const { return _action; }
    void setAction(SEL action) { _action = action; }

    /// Sends `action` to `target` with this control as argument. False if there is no action or target,
    /// or the target has no such method (which is reported).
    bool sendAction_to(SEL action, NSObject* target);

    bool isAccessibilityEnabled() const override { return isEnabled(); }

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    bool _enabled = true;
    Weak<NSObject> _target;
    SEL _action;
};
