#include "Phone.h"

bool Phone::hasChecked() const
{
    return std::ranges::any_of(_contacts, &Contact::isChecked) ||
           std::ranges::any_of(_messages, &Message::isChecked) ||
           std::ranges::any_of(_pictures, &Picture::isChecked);
}

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

void Phone::didChange() const
{
    if (_observer) {
        _observer();
    }
}
