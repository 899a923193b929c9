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
    const bool isEnd = !_csv.next(_record);
    const auto hasReplacement = [](const std::string& field) {
        return field.find("\uFFFD") != std::string::npos;
    };
    const bool isRecordLossy = _isLossy && std::ranges::any_of(_record.fields, hasReplacement);
    std::string problem;
    if (isEnd && _columns.empty()) {
        _record.line = 1;
        problem = localised("The names of the columns are missing.");
    } else if (!isEnd && _record.fault != nullptr) {
        problem = localised(_record.fault);
    } else if (!isEnd && !_record.fields.empty()) {
        problem = _columns.empty() ? takeColumns() : addRecord(phone);
    }
    const bool goesOn =
        !isEnd && (problem.empty() || !_columns.empty()); // without columns nothing can be read
    if (!isEnd && problem.empty() && isRecordLossy) {
        problem = localised("Some bytes are no characters in “%s”.", {_charset});
    }
    fault =
        problem.empty() ? "" : localised("“%s”, line %s: %s", {_name, std::to_string(_record.line), problem});
    return goesOn;
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
    for (const char* needed : {_hasMessages ? "kind" : "name", "number", _hasMessages ? "text" : "name"}) {
        if (!columns.contains(needed)) {
            return localised("The column “%s” is missing.", {needed});
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
        return localised("“%s” is no kind of message.", {kind});
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
