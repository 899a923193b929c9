#include "files/Csv.h"

#include <algorithm>
#include <utility>

constexpr std::string_view kLineEnds = "\r\n";

CsvReader::CsvReader(std::string utf8) : _text(std::move(utf8))
{
    constexpr std::string_view kSeparators = ",;\t";
    const std::size_t begin = std::min(_text.find_first_not_of(kLineEnds), _text.size());
    const std::string_view line =
        std::string_view(_text).substr(begin, _text.find_first_of(kLineEnds, begin) - begin);
    _endings = std::string("\"\r\n") + *std::ranges::max_element(kSeparators, {}, [&](char separator) {
                   return std::ranges::count(line, separator);
               });
}

double CsvReader::progress() const
{
    return _text.empty() ? 1.0 : static_cast<double>(_at) / static_cast<double>(_text.size());
}

bool CsvReader::next(CsvRecord& record)
{
    if (_at == _text.size()) {
        return false;
    }
    record = {_line, {}, nullptr};
    const std::size_t lineEnd = std::min(_text.find_first_of(kLineEnds, _at), _text.size());
    std::size_t end = _at;
    if (lineEnd > _at) {
        record.fault = readRecord(record.fields, end);
    }
    if (record.fault != nullptr) {
        record.fields.clear();
        end = lineEnd;
    }
    end = std::min(end + (_text.compare(end, 2, kLineEnds) == 0 ? 2 : 1), _text.size());
    for (; _at < end; ++_at) {
        _line += _text[_at] == '\n' || (_text[_at] == '\r' && _text[_at + 1] != '\n') ? 1 : 0;
    }
    return true;
}

/// Reads the fields up to an end of line. Returns what is wrong with them, or null.
const char* CsvReader::readRecord(std::vector<std::string>& fields, std::size_t& at) const
{
    for (std::size_t size = 0;; ++at) {
        std::string& field = fields.emplace_back();
        if (_text[at] == '"') {
            if (const char* fault = readQuoted(field, at)) {
                return fault;
            }
        } else {
            const std::size_t end = std::min(_text.find_first_of(_endings, at), _text.size());
            field = _text.substr(at, end - at);
            at = end;
        }
        size += field.size() + 1;
        if (size > kLongestRecord) {
            return "The record is too long.";
        }
        if (field.find('\0') != std::string::npos) {
            return "There is a NUL character in it.";
        }
        if (at == _text.size() || kLineEnds.find(_text[at]) != std::string_view::npos) {
            return nullptr;
        }
        if (_text[at] != _endings.back()) {
            return "A quotation mark stands out of place.";
        }
    }
}

/// Reads from the first quotation mark to behind the last one.
const char* CsvReader::readQuoted(std::string& field, std::size_t& at) const
{
    for (++at;; ++at) {
        const std::size_t quote = _text.find('"', at);
        if (quote == std::string::npos) {
            return "A quotation mark is not closed.";
        }
        field.append(_text, at, quote - at);
        at = quote + 1;
        if (_text[at] != '"') { // of two, one is meant
            return nullptr;
        }
        field += '"';
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
