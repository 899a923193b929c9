#include "files/Csv.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr std::string_view kLineEnds = "\r\n";
constexpr const char* kReplacement = "\uFFFD";

/// That of comma, semicolon and tab which occurs most often, the first of them if none does.
char separatorIn(std::string_view line)
{
    constexpr std::string_view kSeparators = ",;\t";
    return *std::ranges::max_element(kSeparators, {},
                                     [&](char each) { return std::ranges::count(line, each); });
}

std::size_t lineEndsIn(std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find_first_of(kLineEnds, at)) != std::string_view::npos; ++count) {
        at += text.substr(at, kLineEnds.size()) == kLineEnds ? 2 : 1;
    }
    return count;
}

} // namespace

bool CsvReader::next(CsvRecord& record)
{
    if (_at > kLongestRecord) {
        _text.erase(0, std::exchange(_at, 0));
    }
    while (_text.size() - _at <= kLongestRecord && _file.read(_text)) { // and what may be half a line end
    }
    const std::string_view text = std::string_view(_text).substr(_at, kLongestRecord);
    if (text.empty()) {
        return false;
    }
    record = {};
    record.line = _line;
    const std::size_t lineEnd = std::min(text.find_first_of(kLineEnds), text.size());
    std::size_t size = lineEnd;
    const bool isTooLong = lineEnd == kLongestRecord;
    if (isTooLong || _isInLongLine) {
        record.fault = "The line is too long.";
    } else if (lineEnd > 0) {
        record.fault = readRecord(text, record.fields, size);
    }
    if (record.fault != nullptr) {
        record.fields.clear();
        size = lineEnd;
    }
    record.isLossy = _file.isLossy() && text.substr(0, size).find(kReplacement) != std::string_view::npos;
    if (!isTooLong) {
        size += std::string_view(_text).substr(_at + size, kLineEnds.size()) == kLineEnds ? 2 : 1;
        size = std::min(size, _text.size() - _at); // the last line may have no end
    }
    _line += lineEndsIn(std::string_view(_text).substr(_at, size));
    _at += size;
    _isInLongLine = isTooLong;
    return true;
}

std::uint64_t CsvReader::bytesRead() const
{
    return _file.bytesRead() - std::min<std::uint64_t>(_file.bytesRead(), _text.size() - _at);
}

/// Reads the fields at the beginning of a text, up to an end of line. Returns what is wrong with them, or
/// null.
const char* CsvReader::readRecord(std::string_view text, std::vector<std::string>& fields, std::size_t& size)
{
    if (_endings.empty()) {
        _endings = std::string("\"\r\n") + separatorIn(text.substr(0, size));
    }
    for (std::size_t at = 0;; ++at) {
        std::string& field = fields.emplace_back();
        if (text.substr(at, 1) == "\"") {
            if (const char* fault = readQuoted(text, field, ++at)) {
                return fault;
            }
        } else {
            const std::size_t end = std::min(text.find_first_of(_endings, at), text.size());
            field = text.substr(at, end - at);
            at = end;
        }
        if (field.find('\0') != std::string::npos) {
            return "There is a NUL character in it.";
        }
        if (at == text.size() || kLineEnds.find(text[at]) != std::string_view::npos) {
            size = at;
            return at < kLongestRecord ? nullptr : "The record is too long.";
        }
        if (text[at] != _endings.back()) {
            return "A quotation mark stands out of place.";
        }
    }
}

/// Reads from behind the first quotation mark to behind the last one.
const char* CsvReader::readQuoted(std::string_view text, std::string& field, std::size_t& at)
{
    for (;;) {
        const std::size_t quote = text.find('"', at);
        if (quote == std::string_view::npos) {
            return "A quotation mark is not closed.";
        }
        field.append(text, at, quote - at);
        at = quote + 1;
        if (text.substr(at, 1) != "\"") {
            return nullptr;
        }
        field += text[at++];
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
