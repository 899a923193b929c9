#include "files/TextFile.h"

#include "Resources.h"

#include <platform/foundation/NSData.h>

#include <algorithm>
#include <array>
#include <regex>
#include <string_view>
#include <utility>

namespace
{

constexpr std::size_t kBeginning = 200; // bytes
constexpr std::size_t kPiece = std::size_t{1} << 18;
constexpr std::size_t kLongestLine = std::size_t{1} << 20;

/// In UTF-8; empty in an unknown character set.
std::string decoded(std::string_view bytes, const std::string& charset, bool& isLossy)
{
    const Ref<NSString> characters = NSString::stringWithData_charset_usedLossyConversion(
        NSData::dataWithBytes_length(bytes.data(), bytes.size()).get(), text(charset).get(), &isLossy);
    return characters ? characters->UTF8String() : "";
}

} // namespace

TextFile::TextFile(const std::filesystem::path& file, const std::string& charset)
    : _stream(file, std::ios::binary)
{
    setCharset(charset);
    fill(kBeginning);
    findCharset();
}

void TextFile::findCharset()
{
    static constexpr std::array kMarks{std::pair("\xEF\xBB\xBF", "UTF-8"), std::pair("\xFF\xFE", "UTF-16LE"),
                                       std::pair("\xFE\xFF", "UTF-16BE")};
    bool isMarked = false;
    for (const auto& [mark, charset] : kMarks) {
        if (_bytes.starts_with(mark)) {
            _bytes.erase(0, std::string_view(mark).size());
            setCharset(charset);
            isMarked = true;
            break;
        }
    }
    static const std::regex kDeclaration(R"re(#[^\r\n]*charset *= *["']?([\w.:+-]+))re", std::regex::icase);
    std::smatch match;
    if (std::regex_search(_bytes, match, kDeclaration, std::regex_constants::match_continuous)) {
        if (!isMarked) {
            setCharset(match[1]);
        }
        while (_bytes.find_first_of("\r\n") == std::string::npos && fill(kPiece)) {
        }
        _bytes.erase(0, _bytes.find_first_of("\r\n"));
    }
}

void TextFile::setCharset(const std::string& charset)
{
    _charset = charset;
    _lineFeed = lineFeedIn(charset);
}

std::string TextFile::lineFeedIn(const std::string& charset)
{
    for (const std::string& bytes : {std::string("\n"), std::string("\n\0", 2), std::string("\0\n", 2)}) {
        bool isLossy = false;
        if (decoded(bytes, charset, isLossy) == "\n") {
            return bytes;
        }
    }
    return "";
}

bool TextFile::read(std::string& text)
{
    const bool hasMore = knowsCharset() && fill(kPiece);
    const std::size_t end = hasMore ? endOfLines() : _bytes.size();
    bool isLossy = false;
    text += decoded(std::string_view(_bytes).substr(0, end), _charset, isLossy);
    _bytes.erase(0, end);
    _isLossy = _isLossy || isLossy;
    return hasMore || end > 0;
}

/// Reads so many bytes; false if there are none.
bool TextFile::fill(std::size_t count)
{
    const std::size_t before = _bytes.size();
    if (_stream) {
        _bytes.resize(before + count);
        _stream.read(_bytes.data() + before, static_cast<std::streamsize>(count));
        _bytes.resize(before + static_cast<std::size_t>(_stream.gcount()));
    }
    _bytesRead += _bytes.size() - before;
    return _bytes.size() > before;
}

/// The place behind the last line that is whole.
std::size_t TextFile::endOfLines() const
{
    std::string carriageReturn = _lineFeed;
    std::ranges::replace(carriageReturn, '\n', '\r');
    const std::size_t unit = _lineFeed.size();
    const std::size_t whole = _bytes.size() - _bytes.size() % unit;
    for (std::size_t end = whole; end > 0; end -= unit) {
        const std::string_view last = std::string_view(_bytes).substr(end - unit, unit);
        if (last == _lineFeed || last == carriageReturn) {
            return end;
        }
    }
    return whole < kLongestLine ? 0 : whole;
}
