#include "Csv.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{

/// That of comma, semicolon and tab which occurs most often, the first of them if none does.
char separatorIn(const std::string& line)
{
    constexpr std::string_view kSeparators = ",;\t";
    return *std::ranges::max_element(kSeparators, {},
                                     [&](char each) { return std::ranges::count(line, each); });
}

bool isLineEnd(char character)
{
    return character == '\r' || character == '\n';
}

} // namespace

bool CsvReader::next(CsvRecord& record)
{
    std::vector<TextFile::Line> lines(1); // those of the record
    if (!nextLine(lines.front())) {
        return false;
    }
    record = {};
    record.line = lines.front().number;
    _size = lines.front().text.size();
    record.fault = readFields(record, lines);
    if (record.fault != nullptr) {
        record.fields.clear();
        _again.insert(_again.begin(), std::make_move_iterator(lines.begin() + 1),
                      std::make_move_iterator(lines.end()));
        lines.resize(1);
    }
    const auto lossy = std::ranges::find(lines, true, &TextFile::Line::isLossy);
    record.lossyLine = lossy == lines.end() ? 0 : lossy->number;
    return true;
}

bool CsvReader::nextLine(TextFile::Line& line)
{
    if (_again.empty()) {
        return _file.next(line);
    }
    line = std::move(_again.front());
    _again.pop_front();
    return true;
}

/// Takes more lines as the record goes on. Returns what is wrong with it, or null.
const char* CsvReader::readFields(CsvRecord& record, std::vector<TextFile::Line>& lines)
{
    constexpr const char* kOutOfPlace = "A quotation mark stands out of place.";
    if (lines.front().isTooLong) {
        return "The line is too long.";
    }
    if (lines.front().text.empty() || isLineEnd(lines.front().text.front())) {
        return nullptr;
    }
    if (_separator == '\0') {
        _separator = separatorIn(lines.front().text);
    }
    const std::string ends = std::string("\"\r\n") + _separator;
    for (std::size_t at = 0;; ++at) {
        std::string& field = record.fields.emplace_back();
        if (lines.back().text[at] == '"') { // or the NUL behind the text
            if (const char* fault = readQuoted(field, ++at, lines)) {
                return fault;
            }
        } else {
            const std::string& text = lines.back().text;
            const std::size_t end = std::min(text.find_first_of(ends, at), text.size());
            field.assign(text, at, end - at);
            at = end;
        }
        if (field.find('\0') != std::string::npos) {
            return "There is a NUL character in it.";
        }
        const std::string& text = lines.back().text;
        if (at == text.size() || isLineEnd(text[at])) {
            return nullptr;
        }
        if (text[at] != _separator) {
            return kOutOfPlace;
        }
    }
}

/// Reads from behind the first quotation mark to behind the last one.
const char* CsvReader::readQuoted(std::string& field, std::size_t& at, std::vector<TextFile::Line>& lines)
{
    for (;;) {
        const std::string& text = lines.back().text;
        const std::size_t quote = text.find('"', at);
        field.append(text, at, quote - at);
        if (quote != std::string::npos) {
            at = quote + 1;
            if (text[at] != '"') { // nor the NUL behind the text
                return nullptr;
            }
            field += text[at++];
            continue;
        }
        TextFile::Line line;
        const bool goesOn = _size < kLongestRecord && nextLine(line);
        if (goesOn) {
            _size += line.text.size();
            lines.push_back(std::move(line));
            at = 0;
        }
        if (!goesOn || lines.back().isTooLong) {
            return "A quotation mark is not closed.";
        }
    }
}

std::string csvLine(const std::vector<std::string>& fields)
{
    std::string line;
    const char* before = "";
    for (const std::string& field : fields) {
        const char* mark = field.find_first_of(",\"\r\n") == std::string::npos ? "" : "\"";
        line.append(std::exchange(before, ",")).append(mark);
        for (const char character : field) {
            line.append(character == '"' ? 2 : 1, character);
        }
        line += mark;
    }
    return line + "\r\n";
}
