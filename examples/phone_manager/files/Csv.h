#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A record of a text with comma-separated values, or what stands in the place of one.
struct CsvRecord {
    std::size_t line = 1;            // on which it begins
    std::vector<std::string> fields; // none on an empty line
    const char* fault = nullptr;     // why it is no record, in English; it has no fields then
};

/// Reads comma-separated values as RFC 4180 describes them, one record after the other. The separator is the
/// one of comma, semicolon and tab that stands most often in the first line that has any text. Lines end with
/// CR LF, LF or CR, and within quotation marks stay as they are. The time goes with the length of the text,
/// whatever is in it.
///
/// What is no record is told, and reading goes on with the line after the one on which it begins.
class CsvReader
{
public:
    /// In bytes of its fields, with one for each. A longer one could not be shown.
    static constexpr std::size_t kLongestRecord = std::size_t{1} << 20;

    explicit CsvReader(std::string utf8);

    /// The next record; false, and nothing changed, in the end.
    bool next(CsvRecord& record);
    /// How much was read, from 0 to 1.
    double progress() const;
    std::size_t bytesRead() const { return _at; }

private:
    const char* readRecord(std::vector<std::string>& fields, std::size_t& at) const;
    const char* readQuoted(std::string& field, std::size_t& at) const;

    std::string _text;
    std::size_t _at = 0; // in it
    std::size_t _line = 1;
    std::string _endings; // of fields without quotation marks: a quotation mark, the line ends, the separator
};

/// A record as a line, with CR LF at its end. Fields are in quotation marks where they have to be.
std::string csvLine(const std::vector<std::string>& fields);
