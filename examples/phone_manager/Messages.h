#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A text message of the phone, in UTF-8.
struct Message {
    enum class Kind { Received, Sent, Failed };

    Kind kind = Kind::Received;
    std::string name; // of who wrote it or gets it
    std::string number;
    std::string text;
};

/// The messages of a file with one on each line, "received; name; number; text", or "sent" or "failed". Lines
/// that are not like that are left out; a file that cannot be read has none.
std::vector<Message> readMessages(const std::filesystem::path& file);
