#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

/// A text file, piece by piece and in UTF-8, whatever its character set is. That is told by
/// - a byte-order mark (UTF-8, UTF-16), or else
/// - a first line that begins with "#" and within 200 bytes names it, in either case and with or without
///   quotation marks, as
///   # text/csv; charset="windows-1252"
///   does (of such a line only the end is left), or else
/// - whoever reads the file.
class TextFile
{
public:
    TextFile(const std::filesystem::path& file, const std::string& charset);

    /// Whether it can be read: false if the file cannot be opened, or `charset` names no character set.
    bool isOpen() const { return _stream.is_open(); }
    bool knowsCharset() const { return !_lineFeed.empty(); }
    static bool knowsCharset(const std::string& charset) { return !lineFeedIn(charset).empty(); }
    const std::string& charset() const { return _charset; }

    /// Appends whole lines to a text, some hundred kilobytes at once; false in the end. A line of more than a
    /// megabyte may come in parts.
    bool read(std::string& text);
    /// Whether that was not the end of the file.
    bool hasFailed() const { return _stream.bad(); }
    /// Whether some bytes were no characters, for which U+FFFD stands.
    bool isLossy() const { return _isLossy; }
    std::uint64_t bytesRead() const { return _bytesRead; }

private:
    void findCharset();
    void setCharset(const std::string& charset);
    static std::string lineFeedIn(const std::string& charset);
    bool fill(std::size_t count);
    std::size_t endOfLines() const;

    std::ifstream _stream;
    std::string _charset;
    std::string _lineFeed; // as bytes; empty in an unknown character set
    std::string _bytes;    // which were read and are to be decoded
    std::uint64_t _bytesRead = 0;
    bool _isLossy = false;
};
