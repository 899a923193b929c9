#pragma once

#include <string>

/// An entry of the phone's address book, in UTF-8.
struct Contact {
    std::string name;
    std::string group;
    std::string number;
    bool isFixed = false; // it belongs to the phone and cannot be exported
    bool isChecked = false;
    std::string email = {};
};
