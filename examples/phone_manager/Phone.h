#pragma once

#include "Contacts.h"
#include "Messages.h"

#include <platform/foundation/NSObject.h>
#include <platform/foundation/Weak.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <vector>

/// A picture of the phone, which stays in its file.
struct Picture {
    std::filesystem::path file;
    bool isChecked = false;
};

/// What is on the phone, and what of it is checked for an export. It tells one object of changes.
class Phone final : public NSObject
{
public:
    // In the order in which they came. Whoever changes something calls `didChange` when all is done, but
    // for tasks, which tell of themselves; imports add to the ends only, so that places stay and addresses do
    // not.
    std::vector<Contact>& contacts() { return _contacts; }
    std::vector<Message>& messages() { return _messages; }
    std::vector<Picture>& pictures() { return _pictures; }

    /// Checks everything but the fixed contacts.
    void checkAll();

    /// Sends `action` to `target` (not retained), with this object, on changes. Default none.
    void setTarget_action(NSObject* target, SEL action);
    void didChange();

private:
    std::vector<Contact> _contacts;
    std::vector<Message> _messages;
    std::vector<Picture> _pictures;
    Weak<NSObject> _target;
    SEL _action;
};

/// How many of the contacts, messages or pictures are checked.
template <class Record> std::size_t checkedCount(const std::vector<Record>& records)
{
    return static_cast<std::size_t>(std::ranges::count_if(records, &Record::isChecked));
}
