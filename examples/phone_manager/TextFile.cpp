#include "TextFile.h"

#include "Texts.h"

#include <platform/foundation/NSData.h>

#include <algorithm>
#include <array>
#include <regex>
#include <utility>

namespace
{

/// In UTF-8; empty in an unknown character set.
std::string decoded(const std::string& bytes, const NSString* charset, bool& isLossy)
{
    const Ref<NSString> characters = NSString::stringWithData_charset_usedLossyConversion(
        NSData::dataWithBytes_length(bytes.data(), bytes.size()).get(), charset, &isLossy);
    return characters ? characters->UTF8String() : "";
}

} // namespace

TextFile::TextFile(const std::filesystem::path& file, const std::string& charset)
    : _stream(file, std::ios::binary)
{
    setCharset(charset);
    fill();
    findCharset();
}

void TextFile::findCharset()
{
    static constexpr std::array kMarks{std::pair("\xEF\xBB\xBF", "UTF-8"), std::pair("\xFF\xFE", "UTF-16LE"),
                                       std::pair("\xFE\xFF", "UTF-16BE")};
    for (const auto& [mark, charset] : kMarks) {
        if (_buffer.starts_with(mark)) {
            _at = std::string(mark).size();
            setCharset(charset);
            return;
        }
    }
    constexpr std::size_t kLongest = 200;
    static const std::regex kDeclaration(R"re(#[^\r\n]*charset *= *["']?([\w.:+-]+))re", std::regex::icase);
    std::smatch match;
    const std::string beginning = _buffer.substr(0, kLongest);
    if (std::regex_search(beginning, match, kDeclaration, std::regex_constants::match_continuous)) {
        setCharset(match[1]);
        Line declaration;
        next(declaration);
    }
}

void TextFile::setCharset(const std::string& charset)
{
    _charset = charset;
    _charsetName = text(charset);
    _lineFeed = lineFeedIn(charset);
    _return = _lineFeed;
    std::ranges::replace(_return, '\n', '\r');
}

std::string TextFile::lineFeedIn(const std::string& charset)
{
    const Ref<NSString> name = text(charset);
    for (const std::string& bytes : {std::string("\n"), std::string("\n\0", 2), std::string("\0\n", 2)}) {
        bool isLossy = false;
        if (decoded(bytes, name.get(), isLossy) == "\n") {
            return bytes;
        }
    }
    return "";
}

bool TextFile::next(Line& line)
{
    const std::size_t end = knowsCharset() ? endOfLine() : _at;
    if (end == _at) {
        return false;
    }
    const std::string bytes = _buffer.substr(_at, end - _at);
    _at = end;
    const bool isCut =
        bytes.size() >= kLongestLine && !bytes.ends_with(_lineFeed) && !bytes.ends_with(_return);
    line = {};
    line.number = _number;
    line.isTooLong = isCut || _isInLongLine;
    if (!line.isTooLong) {
        line.text = decoded(bytes, _charsetName.get(), line.isLossy);
    }
    _isInLongLine = isCut;
    _number += isCut ? 0 : 1;
    return true;
}

/// The place behind the next line, or behind as much of it as a line may have.
std::size_t TextFile::endOfLine()
{
    const std::size_t unit = _lineFeed.size();
    const auto hasNext = [&](std::size_t length) { return _at + length + unit <= _buffer.size() || fill(); };
    for (std::size_t length = 0; length < kLongestLine; length += unit) {
        if (!hasNext(length)) {
            return _buffer.size();
        }
        if (isAt(_at + length, _lineFeed)) {
            return _at + length + unit;
        }
        if (isAt(_at + length, _return)) {
            length += unit;
            return hasNext(length) && isAt(_at + length, _lineFeed) ? _at + length + unit : _at + length;
        }
    }
    return _at + kLongestLine;
}

bool TextFile::isAt(std::size_t place, const std::string& character) const
{
    return _buffer.compare(place, character.size(), character) == 0;
}

/// Reads more of the file, if there is more, and moves what is read next to the beginning of the buffer.
bool TextFile::fill()
{
    constexpr std::size_t kChunk = 65536;
    _buffer.erase(0, _at);
    _at = 0;
    const std::size_t before = _buffer.size();
    _buffer.resize(before + kChunk);
    _stream.read(_buffer.data() + before, kChunk);
    const auto count = static_cast<std::size_t>(_stream.gcount());
    _buffer.resize(before + count);
    _bytesRead += count;
    return count > 0;
}
