#pragma once

#include <Tessaline.h>

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// What there is on a phone.
enum class Kind { Contacts, Messages, Pictures };
inline constexpr std::array kKinds{Kind::Contacts, Kind::Messages, Kind::Pictures};
/// By kind: the keys of what the user reads.
inline constexpr std::array kKindNames{"Contacts", "Messages", "Pictures"};

// Texts are UTF-8. What is checked will be exported.

/// An entry of the phone's address book.
struct Contact {
    std::string name;
    std::string group;
    std::string number;
    std::string email = {};
    bool isChecked = false;
};

/// A text message.
struct Message {
    /// What becomes of messages, as tables and the keys of what the user reads call it.
    static constexpr std::array kStates{"Received", "Sent", "Failed"};
    static constexpr std::size_t kFailed = 2;

    /// Who wrote it or gets it: the name, or if there is none the number.
    const std::string& partner() const { return name.empty() ? number : name; }

    std::size_t state = 0; // in `kStates`
    std::string name;
    std::string number;
    std::string text;
    std::string date = {}; // as its file tells it
    bool isChecked = false;
};

/// A picture, which stays in its file.
struct Picture {
    static constexpr NSSize kThumbnailSize{60.0, 40.0};

    std::filesystem::path file;
    Ref<NSImage> thumbnail;
    bool isChecked = false;
};

/// What is on the phone. It only grows, so that records keep their places, though not their addresses.
class Phone final : public NSObject
{
public:
    std::vector<Contact> contacts;
    std::vector<Message> messages;
    std::vector<Picture> pictures;

    /// Is called by those who changed something when all is done. Tasks tell of themselves instead.
    std::function<void()> didChange = [] {};

    /// Calls `visitor` with kind, group (empty for none) and check of each record.
    void visit(const std::function<void(Kind kind, const std::string& group, bool& isChecked)>& visitor);
};
