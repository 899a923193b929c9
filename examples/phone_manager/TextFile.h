#pragma once

#include <platform/foundation/NSString.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

/// A text file, line by line and in UTF-8, whatever its character set is. That is told by
/// - a byte-order mark (UTF-8, UTF-16), or else
/// - a first line that begins with "#" and within 200 bytes names it, in either case and with or without
///   quotation marks, as
///   # text/csv; charset="windows-1252"
///   does (such a line is left out), or else
/// - whoever reads the file.
///
/// Each line is decoded for itself. No more of the file than a line is kept.
class TextFile
{
public:
    /// In bytes. What is longer is taken for no line.
    static constexpr std::size_t kLongestLine = std::size_t{1} << 20;

    struct Line {
        std::string text; // with its end, unless the file ends there: CR LF, LF or CR
        std::size_t number = 0;
        bool isLossy = false;   // some bytes were no characters, for which U+FFFD stands
        bool isTooLong = false; // it has no text, and comes once for every `kLongestLine` bytes
    };

    TextFile(const std::filesystem::path& file, const std::string& charset);

    /// Whether its lines can be read: false if the file cannot be opened, or `charset` names none.
    bool isOpen() const { return _stream.is_open(); }
    bool knowsCharset() const { return !_lineFeed.empty(); }
    static bool knowsCharset(const std::string& charset) { return !lineFeedIn(charset).empty(); }
    const std::string& charset() const { return _charset; }

    /// The next line; false in the end.
    bool next(Line& line);
    /// Whether that was not the end of the file.
    bool hasFailed() const { return _stream.bad(); }
    std::uint64_t bytesRead() const { return _bytesRead - (_buffer.size() - _at); }

private:
    void findCharset();
    void setCharset(const std::string& charset);
    static std::string lineFeedIn(const std::string& charset);
    std::size_t endOfLine();
    bool isAt(std::size_t place, const std::string& character) const;
    bool fill();

    std::ifstream _stream;
    std::string _charset;
    Ref<NSString> _charsetName;
    std::string _lineFeed; // as bytes; empty in an unknown character set
    std::string _return;
    std::string _buffer;
    std::size_t _at = 0; // in it
    std::uint64_t _bytesRead = 0;
    std::size_t _number = 1;
    bool _isInLongLine = false;
};
