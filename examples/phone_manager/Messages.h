#pragma once

#include <array>
#include <string>

/// A text message of the phone, in UTF-8.
struct Message {
    enum class Kind { Received, Sent, Failed };
    static constexpr std::array kKindNames{"received", "sent", "failed"}; // in tables, by kind

    Kind kind = Kind::Received;
    std::string name; // of who wrote it or gets it
    std::string number;
    std::string text;
    std::string date = {}; // as its file tells it: "2026-04-03 12:30:45", in local time, if that is ours
    bool isChecked = false;
};
