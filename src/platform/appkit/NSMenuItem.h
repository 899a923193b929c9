#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/foundation/Weak.h"

class NSString;

/// A line of a menu: choosing it sends `action` to `target`, with the item as argument. It can be chosen as
/// long as the target has such a method.
class TESSALINE_EXPORT NSMenuItem final : public NSObject
{
public:
    NSMenuItem();

    /// `title` and `keyEquivalent` are copied; null counts as empty. The latter is the key that chooses the
    /// item of a main menu; in context menus, which are the only ones there are, it does nothing. Returns
    /// this item.
    NSMenuItem* initWithTitle_action_keyEquivalent(NSString* title, SEL action, NSString* keyEquivalent);

    Ref<NSString> title() const;
    SEL action() const { return _action; }
    Ref<NSString> keyEquivalent() const;

    /// Not retained. Default null.
    Ref<NSObject> target() const { return _target.get(); }
    void setTarget(NSObject* target) { _target = target; }

    /// What the item stands for, kept alive. Default null.
    Ref<NSObject> representedObject() const { return _representedObject; }
    void setRepresentedObject(Ref<NSObject> object) { _representedObject = std::move(object); }

    bool isEnabled() const;
    /// Sends the action.
    void perform();

private:
    ~NSMenuItem() override;

    Ref<NSString> _title;
    SEL _action;
    Ref<NSString> _keyEquivalent;
    Weak<NSObject> _target;
    Ref<NSObject> _representedObject;
};
