#pragma once

#include <filesystem>
#include <string>

/// A text file as UTF-8, whatever its character set is. That is told by
/// - a byte-order mark (UTF-8, UTF-16), or else
/// - a first line that begins with "#" and within 200 bytes names it, in either case and with or without
///   quotation marks, as
///   # text/csv; charset="windows-1252"
///   does (of such a line only the end is left), or else
/// - whoever reads the file.
struct TextFile {
    explicit TextFile(const std::filesystem::path& file, std::string charsetIfNotTold = "UTF-8");

    std::string charset;
    std::string content;
    bool isLossy = false;        // some bytes were no characters, for which U+FFFD stands
    const char* fault = nullptr; // why it could not be read: a key with places for its name and charset
};
