#pragma once

#include "Phone.h"
#include "files/Csv.h"
#include "files/TextFile.h"

#include <map>
#include <string>

/// Reads a table of contacts or of messages: comma-separated values whose first record names the columns, in
/// any order and in either case.
///
///     name, number          for contacts, perhaps with group and email
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

    /// The name is that of the file to the user.
    RecordReader(std::string name, TextFile file);

    /// Adds the next record to the phone. `fault` is a sentence on what is wrong with it, in the user's
    /// language and with file and line, or empty. False in the end.
    bool next(Phone& phone, std::string& fault);
    /// How much was read, from 0 to 1.
    double progress() const { return _csv.progress(); }
    std::size_t bytesRead() const { return _csv.bytesRead(); }

private:
    std::string takeColumns();
    std::string addRecord(Phone& phone);
    std::string value(const char* column);

    std::string _name;
    std::string _charset;
    bool _isLossy;
    CsvReader _csv;
    CsvRecord _record;
    std::map<std::string, std::size_t> _columns; // places by names; empty before the first record
    std::size_t _columnCount = 0;
    bool _hasMessages = false;
};
