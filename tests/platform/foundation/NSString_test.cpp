#include "platform/foundation/NSString.h"

#include "platform/foundation/NSData.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

namespace
{

TEST(NSStringTest, CountsCodeUnitsAndKeepsWhatUTF8Says)
{
    const Ref<NSString> string = NSString::stringWithUTF8String("h\xC3\xA9 \xF0\x9F\x98\x80");
    EXPECT_EQ(string->length(), 5U);
    EXPECT_EQ(string->characters(), u"h\u00e9 \xD83D\xDE00");
    EXPECT_EQ(string->UTF8String(), "h\xC3\xA9 \xF0\x9F\x98\x80");
    EXPECT_EQ(NSString::stringWithUTF8String("\xEF\xBB\xBFx")->length(), 2U) << "a byte-order mark is text";
    EXPECT_EQ(NSString::stringWithUTF8String("")->length(), 0U);
}

TEST(NSStringTest, RefusesInvalidUTF8)
{
    for (const char* bytes :
         {"\xC3", "a\xFFz", "\xED\xA0\x80", "\xC0\x80", "\xF0\x9F\x98", "\xF4\x90\x80\x80"}) {
        EXPECT_EQ(NSString::stringWithUTF8String(bytes), nullptr);
    }
    EXPECT_EQ(NSString::stringWithUTF8String(nullptr), nullptr);
    EXPECT_EQ(NSString::stringWithCharacters(u"\xD83D!\xDE00\xD83D")->UTF8String(),
              "\xEF\xBF\xBD!\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(NSStringTest, DecodesBytesInNamedCharacterSets)
{
    const struct {
        const char* charset;
        std::string_view bytes;
        const char* expected; // null for a name that is unknown
        bool isLossy = false;
    } cases[] = {
        {"windows-1252", "\x80 M\xFCller", "\u20ac M\u00fcller"},
        {"ISO-8859-1", "\xFC", "\u00fc"},
        {"utf-8", "\xEF\xBB\xBF\u00fc", "\ufeff\u00fc"}, // a byte-order mark is text
        {"UTF-8", "a\xFF\xFEz\xC3", "a\ufffd\ufffdz\ufffd", true},
        {"UTF-8", "\xED\xA0\x80", "\ufffd\ufffd\ufffd", true},
        {"UTF-8", "\ufffd", "\ufffd"},
        {"UTF-16LE", std::string_view("\xFF\xFE\x3D\xD8\x00\xDE", 6), "\ufeff\U0001f600"},
        {"UTF-16BE", std::string_view("\0a\xD8\x3D\0b\0", 7), "a\ufffdb\ufffd", true},
        {"shift_jis", "\x93\xFA\x96\x7B", "\u65e5\u672c"},
        {"Shift_JIS", "\x93", "\ufffd", true},
        {"US-ASCII", "\xE4", "\ufffd", true},
        {"GB18030", "", ""},
        {"", "a", nullptr},
        {"no such set", "a", nullptr},
        {"/etc/passwd", "a", nullptr},
    };
    for (const auto& [charset, bytes, expected, isLossy] : cases) {
        const Ref<NSData> data = NSData::dataWithBytes_length(bytes.data(), bytes.size());
        bool lossy = !isLossy;
        const Ref<NSString> decoded =
            NSString::stringWithData_charset_usedLossyConversion(data.get(), text(charset).get(), &lossy);
        EXPECT_EQ(utf8(decoded), expected == nullptr ? "null" : expected) << charset << ' ' << bytes;
        EXPECT_EQ(lossy, decoded ? isLossy : !isLossy) << charset << ' ' << bytes;
    }
    EXPECT_EQ(NSString::stringWithData_charset_usedLossyConversion(nullptr, text("UTF-8").get(), nullptr),
              nullptr);
    const Ref<NSData> data = NSData::dataWithBytes_length("\xFF", 1);
    EXPECT_EQ(NSString::stringWithData_charset_usedLossyConversion(data.get(), nullptr, nullptr), nullptr);
    const auto withNul = NSString::stringWithCharacters(std::u16string_view(u"UTF-8\0", 6));
    EXPECT_EQ(NSString::stringWithData_charset_usedLossyConversion(data.get(), withNul.get(), nullptr),
              nullptr);
    EXPECT_EQ(
        utf8(NSString::stringWithData_charset_usedLossyConversion(data.get(), text("utf8").get(), nullptr)),
        "\ufffd");
}

TEST(NSStringTest, IsSearched)
{
    const struct {
        const char* whole;
        const char* part;
        NSRange exactly;
        NSRange inEitherCase;
    } cases[] = {
        {"vcf,CSV", "vcf", {0, 3}, {0, 3}},
        {"vcf,CSV", "csv", {NSNotFound, 0}, {4, 3}},
        {"a,A", "A", {2, 1}, {0, 1}},
        {"csv", "csv,", {NSNotFound, 0}, {NSNotFound, 0}},
        {"csv", "", {NSNotFound, 0}, {NSNotFound, 0}},
        {"", "csv", {NSNotFound, 0}, {NSNotFound, 0}},
        {"x\u00c4\u03a3\U00010400", "\u00e4\u03c2\U00010428", {NSNotFound, 0}, {1, 4}},
        {"stra\u00dfe", "STRASSE", {NSNotFound, 0}, {NSNotFound, 0}}, // one letter is never two
    };
    for (const auto& [whole, part, exactly, inEitherCase] : cases) {
        const Ref<NSString> searched = text(whole);
        EXPECT_EQ(searched->rangeOfString_options(text(part).get(), 0), exactly) << whole << ' ' << part;
        EXPECT_EQ(searched->rangeOfString_options(text(part).get(), NSCaseInsensitiveSearch), inEitherCase)
            << whole << ' ' << part;
    }
    EXPECT_EQ(text("x")->rangeOfString_options(nullptr, 0), (NSRange{NSNotFound, 0}));
}

} // namespace
