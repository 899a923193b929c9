#include "platform/foundation/NSString.h"

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
