#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// An entry of the phone's address book, in UTF-8.
struct Contact {
    std::string name;
    std::string group;
    std::string number;
    bool isFixed = false; // it belongs to the phone and cannot be exported
    bool isChecked = false;
};

/// The contacts of a file with one on each line, "name; group; number", and "; fixed" where that is so. Lines
/// with fewer parts are left out; a file that cannot be read has none.
std::vector<Contact> readContacts(const std::filesystem::path& file);
