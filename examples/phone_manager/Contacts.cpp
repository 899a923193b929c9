#include "Contacts.h"

#include <fstream>
#include <sstream>
#include <utility>

std::vector<Contact> readContacts(const std::filesystem::path& file)
{
    std::vector<Contact> contacts;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream parts(line);
        const auto next = [&parts](std::string& part) {
            return static_cast<bool>(std::getline(parts >> std::ws, part, ';'));
        };
        Contact contact;
        if (next(contact.name) && next(contact.group) && next(contact.number)) {
            std::string state;
            contact.isFixed = next(state) && state == "fixed";
            contacts.push_back(std::move(contact));
        }
    }
    return contacts;
}
