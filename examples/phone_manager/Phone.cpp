#include "Phone.h"

void Phone::visit(const std::function<void(Kind kind, const std::string& group, bool& isChecked)>& visitor)
{
    for (Contact& contact : contacts) {
        visitor(Kind::Contacts, contact.group, contact.isChecked);
    }
    for (Message& message : messages) {
        visitor(Kind::Messages, Message::kStates[message.state], message.isChecked);
    }
    for (Picture& picture : pictures) {
        visitor(Kind::Pictures, "", picture.isChecked);
    }
}
