#pragma once

#include "TextFile.h"

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

/// A record of a file with comma-separated values, or what stands in the place of one.
struct CsvRecord {
    std::size_t line = 0;            // on which it begins, from 1
    std::vector<std::string> fields; // none on an empty line
    std::size_t lossyLine = 0;       // the first one with bytes that are no characters; 0 for none
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
    /// In bytes. A quotation mark that takes in more lines than that is taken for one that is not closed.
    static constexpr std::size_t kLongestRecord = std::size_t{1} << 20;

    /// The file has to live as long.
    explicit CsvReader(TextFile& file) : _file(file) {}

    /// The next record; false in the end.
    bool next(CsvRecord& record);

private:
    bool nextLine(TextFile::Line& line);
    const char* readFields(CsvRecord& record, std::vector<TextFile::Line>& lines);
    const char* readQuoted(std::string& field, std::size_t& at, std::vector<TextFile::Line>& lines);

    TextFile& _file;
    std::size_t _size = 0;             // of the record
    char _separator = '\0';            // until the first line tells
    std::deque<TextFile::Line> _again; // which are read again, since a record that began above was none
};

/// A record as a line, with CR LF at its end. Fields are in quotation marks where they have to be.
std::string csvLine(const std::vector<std::string>& fields);
