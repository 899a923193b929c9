#include "files/RecordReader.h"

#include "Resources.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

/// Without blanks around it, and in small letters.
static std::string normalised(const std::string& name)
{
    constexpr const char* kBlanks = " \t";
    const std::size_t begin = std::min(name.find_first_not_of(kBlanks), name.size());
    std::string result = name.substr(begin, name.find_last_not_of(kBlanks) + 1 - begin);
    std::ranges::transform(result, result.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return result;
}

bool RecordReader::isTable(const std::filesystem::path& file)
{
    static constexpr std::array kExtensions{".csv", ".tsv", ".txt"};
    return std::ranges::find(kExtensions, normalised(file.extension().string())) != kExtensions.end();
}

RecordReader::RecordReader(std::string name, TextFile file)
    : _name(std::move(name)), _charset(std::move(file.charset)), _isLossy(file.isLossy),
      _csv(std::move(file.content))
{
}

bool RecordReader::next(Phone& phone, std::string& fault)
{
    std::string problem;
    bool isOpen = _csv.next(_record);
    if (isOpen) {
        const bool isRecordLossy = _isLossy && std::ranges::any_of(_record.fields, [](const auto& field) {
                                       return field.find("\uFFFD") != std::string::npos;
                                   });
        problem = _record.fault != nullptr ? localised(_record.fault)
                  : _record.fields.empty() ? ""
                  : _columns.empty()       ? takeColumns()
                                           : addRecord(phone);
        isOpen = problem.empty() || !_columns.empty(); // without columns nothing can be read
        if (problem.empty() && isRecordLossy) {
            problem = localised("Some bytes are no characters in “%s”.", {_charset});
        }
    } else if (_columns.empty()) {
        _record.line = 1;
        problem = localised("The names of the columns are missing.");
    }
    fault =
        problem.empty() ? "" : localised("“%s”, line %s: %s", {_name, std::to_string(_record.line), problem});
    return isOpen;
}

/// Returns what is wrong, or nothing.
std::string RecordReader::takeColumns()
{
    std::map<std::string, std::size_t> columns;
    for (const std::string& field : _record.fields) {
        columns.emplace(normalised(field), _columnCount++); // of two alike, the first
    }
    _hasMessages = columns.contains("kind") || columns.contains("text");
    if (!_hasMessages && !columns.contains("name")) {
        return localised("These are no columns of contacts or messages.");
    }
    const std::vector<const char*> needed =
        _hasMessages ? std::vector{"kind", "number", "text"} : std::vector{"name", "number"};
    for (const char* column : needed) {
        if (!columns.contains(column)) {
            return localised("The column “%s” is missing.", {column});
        }
    }
    _columns = std::move(columns);
    return "";
}

/// Returns what is wrong, or nothing.
std::string RecordReader::addRecord(Phone& phone)
{
    if (_record.fields.size() != _columnCount) {
        return localised("There are %s fields in %s columns.",
                         {std::to_string(_record.fields.size()), std::to_string(_columnCount)});
    }
    if (!_hasMessages) {
        phone.contacts.push_back({value("name"), value("group"), value("number"), value("email")});
        return "";
    }
    const std::string kind = value("kind");
    const auto* const state = std::ranges::find(Message::kStates, normalised(kind), normalised);
    if (state == Message::kStates.end()) {
        constexpr std::size_t kMostShown = 30;
        return localised("“%s” is no kind of message.", {kind.size() > kMostShown ? "…" : kind});
    }
    phone.messages.push_back({static_cast<std::size_t>(state - Message::kStates.begin()), value("name"),
                              value("number"), value("text"), value("date")});
    return "";
}

/// What the record has in a column; empty if there is no such column. To be asked for once.
std::string RecordReader::value(const char* column)
{
    const auto place = _columns.find(column);
    return place == _columns.end() ? "" : std::move(_record.fields[place->second]);
}
