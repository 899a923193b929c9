#pragma once

#include "files/Csv.h"
#include "files/TextFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

class Phone;

/// Reads a table of contacts or of messages: a text file of comma-separated values whose first record names
/// the columns, in any order and in either case.
///
///     name, number          for contacts, perhaps with group, email and fixed, which is "yes" for some
///     kind, number, text    for messages, perhaps with name and date
///
/// A kind is received, sent or failed. Other columns and empty lines are left out. Each record has as many
/// fields as there are columns. One that has not, or is of no kind, is a fault, and so are bytes that are no
/// characters, which do not keep their record from being read.
class RecordReader
{
public:
    /// Whether the extension of a file is one of such tables: csv, tsv or txt.
    static bool isTable(const std::filesystem::path& file);

    /// The character set is that of a file which does not tell its own.
    RecordReader(const std::filesystem::path& file, const std::string& charset);

    /// Adds the next record to the phone, or appends to `faults` what is wrong with it: sentences in the
    /// user's language with file and line. False in the end.
    bool next(Phone& phone, std::vector<std::string>& faults);

    std::uint64_t bytesRead() const { return _csv.bytesRead(); }

private:
    std::string takeColumns();
    std::string addRecord(Phone& phone);
    std::string value(const char* column);

    std::string _name;
    TextFile _file;
    CsvReader _csv;
    CsvRecord _record;
    std::map<std::string, std::size_t> _columns; // places by names; empty before the first record
    std::size_t _columnCount = 0;
    bool _hasMessages = false;
    std::size_t _faultyLine = 0; // the last one that was
};
