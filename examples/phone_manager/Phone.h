#pragma once

#include <platform/foundation/NSObject.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// An entry of the phone's address book, in UTF-8.
struct Contact {
    std::string name;
    std::string group;
    std::string number;
    bool isFixed = false; // it belongs to the phone and cannot be exported
    bool isChecked = false;
    std::string email = {};
};

/// A text message of the phone, in UTF-8.
struct Message {
    enum class Kind { Received, Sent, Failed };
    /// By kind: what they are called in tables, and the keys of what the user reads.
    static constexpr std::array kKindNames{"Received", "Sent", "Failed"};

    const char* kindName() const { return kKindNames[static_cast<std::size_t>(kind)]; }
    /// Who wrote it or gets it: the name, or if there is none the number.
    const std::string& partner() const { return name.empty() ? number : name; }

    Kind kind = Kind::Received;
    std::string name;
    std::string number;
    std::string text;
    std::string date = {}; // as its file tells it: "2026-04-03 12:30:45", in local time, if that is ours
    bool isChecked = false;
};

/// A picture of the phone, which stays in its file.
struct Picture {
    std::filesystem::path file;
    bool isChecked = false;
};

/// What is on the phone, and what of it is checked for an export.
class Phone final : public NSObject
{
public:
    // In the order in which they came. Whoever changes something calls `didChange` when all is done, but
    // for tasks, which tell of themselves; imports add to the ends only, so that places stay and addresses do
    // not.
    std::vector<Contact>& contacts() { return _contacts; }
    std::vector<Message>& messages() { return _messages; }
    std::vector<Picture>& pictures() { return _pictures; }

    bool isEmpty() const { return _contacts.empty() && _messages.empty() && _pictures.empty(); }
    bool hasChecked() const;
    /// Checks everything but the fixed contacts.
    void checkAll();

    /// Is called on changes. Default nothing.
    void setObserver(std::function<void()> observer) { _observer = std::move(observer); }
    void didChange() const;

private:
    std::vector<Contact> _contacts;
    std::vector<Message> _messages;
    std::vector<Picture> _pictures;
    std::function<void()> _observer;
};
