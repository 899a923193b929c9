#include "Phone.h"

void Phone::checkAll()
{
    for (Contact& contact : _contacts) {
        contact.isChecked = !contact.isFixed;
    }
    for (Message& message : _messages) {
        message.isChecked = true;
    }
    for (Picture& picture : _pictures) {
        picture.isChecked = true;
    }
}

void Phone::setTarget_action(NSObject* target, SEL action)
{
    _target = target;
    _action = action;
}

void Phone::didChange()
{
    if (const Ref<NSObject> target = _target.get()) {
        target->performSelector_withObject(_action, this);
    }
}
