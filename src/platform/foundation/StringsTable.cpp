#include "platform/foundation/StringsTable.h"

#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <optional>
#include <utility>

namespace
{

/// The value of a digit up to base 16, or nothing.
std::optional<unsigned> digitOf(char16_t character, unsigned base)
{
    constexpr unsigned kTen = 10;
    unsigned digit = base;
    if (character >= u'0' && character <= u'9') {
        digit = character - u'0';
    } else if (character >= u'a' && character <= u'f') {
        digit = character - u'a' + kTen;
    } else if (character >= u'A' && character <= u'F') {
        digit = character - u'A' + kTen;
    }
    return digit < base ? std::optional(digit) : std::nullopt;
}

bool isUnquoted(char16_t character)
{
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') ||
           (character >= u'0' && character <= u'9') ||
           std::u16string_view(u"._-$/:").find(character) != std::u16string_view::npos;
}

/// Reads the text from its beginning; where something is missing it stops in front of it.
class Parser
{
public:
    explicit Parser(std::u16string_view text) : _text(text) {}

    StringsTable parse()
    {
        StringsTable table;
        while (skipBlanks() && _position < _text.size()) {
            if (!parsePair(table)) {
                break;
            }
        }
        if (_position < _text.size()) {
            const std::u16string_view before = _text.substr(0, _position);
            table.badLine = static_cast<std::size_t>(std::ranges::count(before, u'\n')) + 1;
        }
        return table;
    }

private:
    bool startsWith(std::u16string_view start) const { return _text.substr(_position).starts_with(start); }

    bool take(char16_t character)
    {
        const bool found = startsWith({&character, 1});
        _position += found ? 1 : 0;
        return found;
    }

    /// Blanks and comments. False at a comment without an end.
    bool skipBlanks()
    {
        for (;;) {
            _position =
                std::min(_text.find_first_not_of(u" \t\r\n\v\f\u00A0\u2028\u2029", _position), _text.size());
            if (startsWith(u"//")) {
                _position = std::min(_text.find_first_of(u"\r\n\u2028\u2029", _position), _text.size());
            } else if (startsWith(u"/*")) {
                const std::size_t end = _text.find(u"*/", _position + 2);
                if (end == std::u16string_view::npos) {
                    return false;
                }
                _position = end + 2;
            } else {
                return true;
            }
        }
    }

    bool parsePair(StringsTable& table)
    {
        std::optional<std::u16string> key = parseText();
        if (!key || !skipBlanks()) {
            return false;
        }
        std::optional<std::u16string> value = key;
        if (take(u'=')) {
            if (!skipBlanks()) {
                return false;
            }
            value = parseText();
        }
        if (!value || !skipBlanks() || !take(u';')) {
            // At the end of the file, too, something is missing.
            _position = std::min(_position, _text.size() - 1);
            return false;
        }
        table.texts.insert_or_assign(std::move(*key), std::move(*value));
        return true;
    }

    std::optional<std::u16string> parseText()
    {
        const std::size_t start = _position;
        if (take(u'"')) {
            std::optional<std::u16string> text = parseQuoted();
            _position = text ? _position : start;
            return text;
        }
        const auto end = std::ranges::find_if_not(_text.substr(start), isUnquoted);
        _position = static_cast<std::size_t>(end - _text.begin());
        return _position > start ? std::optional(std::u16string(_text.substr(start, _position - start)))
                                 : std::nullopt;
    }

    /// The rest of a quoted text, or nothing if it does not end.
    std::optional<std::u16string> parseQuoted()
    {
        std::u16string text;
        while (_position < _text.size()) {
            const char16_t character = _text[_position++];
            if (character == u'"') {
                return text;
            }
            if (character != u'\\') {
                text += character;
            } else if (_position < _text.size()) {
                text += parseEscape();
            }
        }
        return std::nullopt;
    }

    char16_t parseEscape()
    {
        constexpr unsigned kOctal = 8;
        constexpr std::size_t kOctalDigits = 3;
        constexpr unsigned kHexadecimal = 16;
        constexpr std::size_t kHexadecimalDigits = 4;
        const char16_t character = _text[_position];
        if (digitOf(character, kOctal)) {
            return parseNumber(kOctal, kOctalDigits);
        }
        ++_position;
        switch (character) {
        case u'u':
        case u'U':
            if (_position == _text.size() || !digitOf(_text[_position], kHexadecimal)) {
                return character;
            }
            return parseNumber(kHexadecimal, kHexadecimalDigits);
        case u'n':
            return u'\n';
        case u'r':
            return u'\r';
        case u't':
            return u'\t';
        default:
            return character;
        }
    }

    /// The code unit that the next digits name, up to so many.
    char16_t parseNumber(unsigned base, std::size_t digits)
    {
        unsigned number = 0;
        for (; digits > 0 && _position < _text.size(); --digits, ++_position) {
            const std::optional<unsigned> digit = digitOf(_text[_position], base);
            if (!digit) {
                break;
            }
            number = number * base + *digit;
        }
        return static_cast<char16_t>(number);
    }

    std::u16string_view _text;
    std::size_t _position = 0;
};

} // namespace

StringsTable parseStringsTable(std::string_view bytes)
{
    const QByteArrayView data(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder decoder(QStringDecoder::encodingForData(data).value_or(QStringDecoder::Utf8));
    const QString text = decoder(data);
    const QStringView view(text);
    return Parser({view.utf16(), static_cast<std::size_t>(view.size())}).parse();
}
