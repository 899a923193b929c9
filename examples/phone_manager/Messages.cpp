#include "Messages.h"

#include <array>
#include <fstream>
#include <sstream>
#include <utility>

std::vector<Message> readMessages(const std::filesystem::path& file)
{
    static constexpr std::array kKinds{std::pair("received", Message::Kind::Received),
                                       std::pair("sent", Message::Kind::Sent),
                                       std::pair("failed", Message::Kind::Failed)};
    std::vector<Message> messages;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream parts(line);
        std::string kind;
        Message message;
        if (!std::getline(parts, kind, ';') || !std::getline(parts >> std::ws, message.name, ';') ||
            !std::getline(parts >> std::ws, message.number, ';') ||
            !std::getline(parts >> std::ws, message.text)) {
            continue;
        }
        for (const auto& [word, value] : kKinds) {
            if (kind == word) {
                message.kind = value;
                messages.push_back(message);
            }
        }
    }
    return messages;
}
