#include "files/RecordReader.h"

#include "Phone.h"
#include "Resources.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace
{

/// Without blanks around it, and in small letters.
std::string normalised(const std::string& name)
{
    constexpr const char* kBlanks = " \t";
    const std::size_t begin = std::min(name.find_first_not_of(kBlanks), name.size());
    std::string result = name.substr(begin, name.find_last_not_of(kBlanks) + 1 - begin);
    std::ranges::transform(result, result.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return result;
}

} // namespace

bool RecordReader::isTable(const std::filesystem::path& file)
{
    static constexpr std::array kExtensions{".csv", ".tsv", ".txt"};
    return std::ranges::find(kExtensions, normalised(file.extension().string())) != kExtensions.end();
}

RecordReader::RecordReader(const std::filesystem::path& file, const std::string& charset)
    : _name(shownName(file.filename().string())), _file(file, charset), _csv(_file)
{
}

bool RecordReader::next(Phone& phone, std::vector<std::string>& faults)
{
    if (!_file.isOpen()) {
        faults.push_back(localised("“%s” cannot be read.", {_name}));
        return false;
    }
    if (!_file.knowsCharset()) {
        faults.push_back(localised("“%s”: The character set “%s” is not known.", {_name, _file.charset()}));
        return false;
    }
    const bool isFirst = _columns.empty();
    const bool isEnd = !_csv.next(_record);
    std::string problem;
    if (isEnd && _file.hasFailed()) {
        faults.push_back(localised("“%s” cannot be read to its end.", {_name}));
        return false;
    }
    if (isEnd && isFirst) {
        _record.line = 1;
        problem = localised("The names of the columns are missing.");
    } else if (isEnd) {
        return false;
    } else if (_record.fault != nullptr) {
        problem = localised(_record.fault);
    } else if (!_record.fields.empty()) {
        problem = isFirst ? takeColumns() : addRecord(phone);
    }
    const bool goesOn = problem.empty() || !isFirst; // without columns nothing can be read
    if (problem.empty() && _record.isLossy) {
        problem = localised("Some bytes are no characters in “%s”.", {_file.charset()});
    }
    if (!problem.empty() && std::exchange(_faultyLine, _record.line) != _record.line) {
        faults.push_back(localised("“%s”, line %s: %s", {_name, std::to_string(_record.line), problem}));
    }
    return goesOn;
}

/// Returns what is wrong, or nothing.
std::string RecordReader::takeColumns()
{
    _columnCount = _record.fields.size();
    for (std::size_t place = 0; place < _columnCount; ++place) {
        _columns.emplace(normalised(_record.fields[place]), place); // of two alike, the first
    }
    _hasMessages = _columns.contains("kind") || _columns.contains("text");
    if (!_hasMessages && !_columns.contains("name")) {
        return localised("These are no columns of contacts or messages.");
    }
    const std::vector<std::string> needed = _hasMessages ? std::vector<std::string>{"kind", "number", "text"}
                                                         : std::vector<std::string>{"name", "number"};
    const auto missing =
        std::ranges::find_if(needed, [&](const auto& name) { return !_columns.contains(name); });
    return missing == needed.end() ? "" : localised("The column “%s” is missing.", {*missing});
}

/// Returns what is wrong, or nothing.
std::string RecordReader::addRecord(Phone& phone)
{
    if (_record.fields.size() != _columnCount) {
        return localised("There are %s fields in %s columns.",
                         {std::to_string(_record.fields.size()), std::to_string(_columnCount)});
    }
    if (!_hasMessages) {
        phone.contacts().push_back({.name = value("name"),
                                    .group = value("group"),
                                    .number = value("number"),
                                    .isFixed = normalised(value("fixed")) == "yes",
                                    .email = value("email")});
        return "";
    }
    const std::string kind = value("kind");
    const auto* const name = std::ranges::find(Message::kKindNames, normalised(kind), normalised);
    if (name == Message::kKindNames.end()) {
        return localised("“%s” is no kind of message.", {kind});
    }
    phone.messages().push_back({.kind = static_cast<Message::Kind>(name - Message::kKindNames.begin()),
                                .name = value("name"),
                                .number = value("number"),
                                .text = value("text"),
                                .date = value("date")});
    return "";
}

/// What the record has in a column; empty if there is no such column. To be asked for once.
std::string RecordReader::value(const char* column)
{
    const auto place = _columns.find(column);
    return place == _columns.end() ? "" : std::move(_record.fields[place->second]);
}
