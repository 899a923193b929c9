#pragma once

#include "files/TextFile.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A record of a file with comma-separated values, or what stands in the place of one.
struct CsvRecord {
    std::size_t line = 0;            // on which it begins, from 1
    std::vector<std::string> fields; // none on an empty line
    bool isLossy = false;            // there are U+FFFD in it, and bytes of the file were no characters
    const char* fault = nullptr;     // why it is no record, in English; it has no fields then
};

/// Reads comma-separated values as RFC 4180 describes them, one record after the other. The separator is the
/// one of comma, semicolon and tab that stands most often in the first line. Lines end with CR LF, LF or CR,
/// and within quotation marks stay as they are. The time goes with the length of the file, whatever is in it.
///
/// What is no record is told, and reading goes on with the line after the one on which it begins.
class CsvReader
{
public:
    /// In bytes; what is as long is no record. A line that is has a fault for each so many of its bytes.
    static constexpr std::size_t kLongestRecord = std::size_t{1} << 20;

    /// The file has to live as long.
    explicit CsvReader(TextFile& file) : _file(file) {}

    /// The next record; false in the end.
    bool next(CsvRecord& record);
    /// Those of the file up to there, about.
    std::uint64_t bytesRead() const;

private:
    const char* readRecord(std::string_view text, std::vector<std::string>& fields, std::size_t& size);
    static const char* readQuoted(std::string_view text, std::string& field, std::size_t& at);

    TextFile& _file;
    std::string _text;   // which was read and not left behind
    std::size_t _at = 0; // in it
    std::size_t _line = 1;
    std::string _endings; // of fields that are not quoted; empty until the first line tells the separator
    bool _isInLongLine = false;
};

/// A record as a line, with CR LF at its end. Fields are in quotation marks where they have to be.
std::string csvLine(const std::vector<std::string>& fields);
