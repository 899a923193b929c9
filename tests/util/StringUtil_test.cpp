#include "util/StringUtil.h"

#include "platform/foundation/NSArray.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>

namespace
{

using Pieces = std::vector<std::string>;

TEST(StringUtilTest, MatchesRegularExpressions)
{
    const struct {
        const char* text;
        const char* pattern;
        const char* match;
        bool whole;
    } cases[] = {
        {"abc123def", "[0-9]+", "123", false},
        {"abc", "x", "", false},
        {"123", "[0-9]+", "123", true},
        {"abc123", "[0-9]+", "123", false},
        {"aab", "a|ab|aab", "a", true},
        {"aaa", "a+?", "a", true},
        {"xyxy", "(xy)\\1", "xyxy", true},
        {"\xC3\xA4\xC3\xB6", "(\xC3\xB6)", "\xC3\xB6", false},
        {"", "a*", "", true},
        {nullptr, "a*", "", true},
        {"Ab", "ab", "", false},
    };
    for (const auto& [string, pattern, match, whole] : cases) {
        EXPECT_EQ(StringUtil::FindIfMatch_withPattern(string, pattern)->UTF8String(), match) << pattern;
        EXPECT_EQ(StringUtil::IsMatch_withPattern(string, pattern), whole) << pattern;
    }
    EXPECT_EQ(StringUtil::FindIfMatch_withPattern("\xC3\xA4", "."), nullptr) << "half a character";
    EXPECT_THROW(StringUtil::FindIfMatch_withPattern("a", "("), std::regex_error);
    EXPECT_THROW(StringUtil::IsMatch_withPattern("a", "[b-a]"), std::regex_error);
}

TEST(StringUtilTest, EndsASearchBeforeTheStackIsExhausted)
{
    const std::string endless(1'000'000, 'a');
    for (const char* pattern : {"[^@]+@", "(((a|b)|c)|d)*e", "(a*)*b"}) {
        try {
            StringUtil::FindIfMatch_withPattern(endless.c_str(), pattern);
            FAIL() << pattern;
        } catch (const std::regex_error& error) {
            EXPECT_EQ(error.code(), std::regex_constants::error_stack) << pattern;
        }
    }
    EXPECT_EQ(StringUtil::FindIfMatch_withPattern((endless + "1").c_str(), "[0-9]")->UTF8String(), "1")
        << "a long text is no trouble by itself";
#ifdef __SANITIZE_ADDRESS__
    constexpr std::size_t kScale = 10; // its frames are several times as large
#else
    constexpr std::size_t kScale = 1;
#endif
    EXPECT_TRUE(StringUtil::IsMatch_withPattern(endless.substr(0, 40'000 / kScale).c_str(), "(a|b)*"));
    // What takes no byte takes stack, too, and so does compiling.
    EXPECT_EQ(StringUtil::FindIfMatch_withPattern(endless.c_str(), "(){30000}")->length(), 0U);
    EXPECT_EQ(StringUtil::FindIfMatch_withPattern("b", endless.substr(0, 90'000).c_str())->length(), 0U);
    EXPECT_THROW(StringUtil::IsMatch_withPattern("a", std::string(90'000 / kScale, '(').c_str()),
                 std::regex_error);
}

TEST(StringUtilTest, FindsAnAddressWhereTheRegularExpressionDoes)
{
    EXPECT_TRUE(StringUtil::IsSimpleEmailFormat("write to a@b.c, please"));
    EXPECT_FALSE(StringUtil::IsSimpleEmailFormat("a@bc"));
    EXPECT_FALSE(StringUtil::IsSimpleEmailFormat("a@b."));
    EXPECT_FALSE(StringUtil::IsSimpleEmailFormat("a@.b"));
    EXPECT_FALSE(StringUtil::IsSimpleEmailFormat(nullptr));

    const std::regex expression("[^@]+@[^.]+[.]{1}.+");
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts every time
    for (int round = 0; round < 20'000; ++round) {
        std::string subject;
        for (auto length = random() % 9U; length > 0; --length) {
            subject += "@@..a\n\r\xC3"[random() % 8U];
        }
        ASSERT_EQ(StringUtil::IsSimpleEmailFormat(subject.c_str()), std::regex_search(subject, expression))
            << testing::PrintToString(subject);
    }
    std::string endless(1'000'000, 'a');
    EXPECT_FALSE(StringUtil::IsSimpleEmailFormat(endless.c_str()));
    EXPECT_TRUE(StringUtil::IsSimpleEmailFormat((endless + '@' + endless + '.' + endless).c_str()));
    std::ranges::fill(endless, '@');
    EXPECT_FALSE(StringUtil::IsSimpleEmailFormat((endless + '.').c_str()));
}

TEST(StringUtilTest, ReadsHexadecimalColours)
{
    const struct {
        const char* text;
        int red, green, blue;
    } cases[] = {{"FF8000", 255, 128, 0}, {"ff8000", 255, 128, 0}, {"GG8000", 0, 128, 0},
                 {" F1g0x", 15, 1, 0},    {"01020304", 1, 2, 3},   {"0X7", 0, 7, 0},
                 {"", 0, 0, 0},           {nullptr, 0, 0, 0},      {"\xC3\xA4\xC3\xB6\x31\x32", 0, 18, 0},
                 {"A", 10, 0, 0}};
    for (const auto& [string, red, green, blue] : cases) {
        const Ref<NSArray<NSNumber>> numbers = StringUtil::GetHexRGB(text(string).get());
        ASSERT_EQ(numbers->count(), 3U);
        EXPECT_EQ(numbers->objectAtIndex(0)->integerValue(), red) << string;
        EXPECT_EQ(numbers->objectAtIndex(1)->integerValue(), green) << string;
        EXPECT_EQ(numbers->objectAtIndex(2)->integerValue(), blue) << string;
        EXPECT_EQ(numbers->objectAtIndex(3), nullptr);
    }
}

TEST(StringUtilTest, ComparesVersionsByNumbers)
{
    const struct {
        const char* first;
        const char* second;
        int result;
    } cases[] = {{"4.4.2", "4.4", 1},
                 {"4.4.0", "4.4", 0},
                 {"4.4", "4.4.1", 0},
                 {"5", "4.4", 1},
                 {"4.10", "4.9", 1},
                 {"4.3", "4.4", -1},
                 {"", "4.4", -1},
                 {"4.4", "", 1},
                 {"", "", 0},
                 {nullptr, nullptr, 0},
                 {"4.4.-1", "4.4", -1},
                 {"4.4.0.1", "4.4", 0},
                 {" 4x.4", "4.4", 0},
                 {"+4.4", "4.4", 0},
                 {"99999999999.1", "2147483647.0", 1},
                 {"-99999999999", "-2147483648", 0},
                 {"4..1", "4.0.1", 0},
                 {"4.", "4", 0}};
    for (const auto& [first, second, result] : cases) {
        EXPECT_EQ(StringUtil::CompareVersion_withSecond(first, second), result) << first << ' ' << second;
    }
    for (const char* version : {"4.4", "4.4.2", "10"}) {
        EXPECT_TRUE(StringUtil::IsAndroidVersionAboveKitkat(version)) << version;
    }
    for (const char* version : {"4.3", "2.3.6", ""}) {
        EXPECT_FALSE(StringUtil::IsAndroidVersionAboveKitkat(version)) << version;
    }
}

TEST(StringUtilTest, SplitsAtLiteralDelimiters)
{
    EXPECT_EQ(StringUtil::split_withPattern("a,b", ","), (Pieces{"a", "b"}));
    EXPECT_EQ(StringUtil::split_withPattern("a,,b,", ","), (Pieces{"a", "", "b", ""}));
    EXPECT_EQ(StringUtil::split_withPattern("", ","), (Pieces{""}));
    EXPECT_EQ(StringUtil::split_withPattern("a.*b.*", ".*"), (Pieces{"a", "b", ""}));
    EXPECT_EQ(StringUtil::split_withPattern("aaa", "aa"), (Pieces{"", ""}));
    EXPECT_EQ(StringUtil::split_withPattern("abc", ""), (Pieces{"abc"}));
    EXPECT_EQ(StringUtil::SpliteString(text("/x/y/z.txt").get())->UTF8String(), "z.txt");
    EXPECT_EQ(StringUtil::SpliteString(text("z.txt").get())->UTF8String(), "z.txt");
    EXPECT_EQ(StringUtil::SpliteString(text("/x/\xF0\x9F\x98\x80/").get())->UTF8String(), "");
    EXPECT_EQ(StringUtil::SpliteString(nullptr), nullptr);
}

TEST(StringUtilTest, ConvertsTextsAndLengths)
{
    EXPECT_EQ(StringUtil::sanitizeFileNameString(text("a<b>c**d/e\\f?g%h|i\"j:k \xF0\x9F\x98\x80").get())
                  ->UTF8String(),
              "a-b-c--d-e-f-g-h-i-j:k \xF0\x9F\x98\x80");
    EXPECT_EQ(StringUtil::sanitizeFileNameString(nullptr), nullptr);
    EXPECT_EQ(StringUtil::cToObjcString(nullptr)->length(), 0U);
    EXPECT_EQ(StringUtil::cToObjcString("\xC3"), nullptr);
    EXPECT_EQ(StringUtil::cToObjcString("\xF0\x9F\x98\x80")->length(), 2U);
    const Ref<NSString> some = text("some");
    EXPECT_EQ(StringUtil::NilToEmpty(some.get()), some);
    EXPECT_EQ(StringUtil::NilToEmpty(nullptr)->length(), 0U);
    EXPECT_TRUE(StringUtil::isStrNullOrEmpty(nullptr));
    EXPECT_TRUE(StringUtil::isStrNullOrEmpty(""));
    EXPECT_FALSE(StringUtil::isStrNullOrEmpty(" "));
    for (const auto& [millimetres, points] : {std::pair(10.0F, 28.0F),
                                              {1.0F, 3.0F},
                                              {0.0F, 0.0F},
                                              {-1.0F, -3.0F},
                                              {-0.1F, 0.0F},
                                              {210.0F, 595.0F}}) {
        EXPECT_EQ(StringUtil::mmToPoint(millimetres), points) << millimetres;
    }
}

TEST(StringUtilTest, BuildsTitles)
{
    const Ref<NSFont> font = NSFont::fontWithName_size("Arial Bold", 14.0);
    const auto title = [&](NSString* string, NSFont* itsFont, bool underline) {
        return StringUtil::getTitleAttributeString_withFont_withColor_withUnderline(
            string, itsFont, NSColor::grayColor().get(), underline);
    };
    const Ref<NSAttributedString> underlined = title(text("Title").get(), font.get(), true);
    EXPECT_EQ(underlined->runs().size(), 1U);
    const NSAttributes& attributes = underlined->runs().front().attributes;
    EXPECT_EQ(underlined->string()->UTF8String(), "Title");
    EXPECT_EQ(attributes[NSFontAttributeName], font.get());
    EXPECT_EQ(attributes[NSForegroundColorAttributeName], NSColor::grayColor().get());
    EXPECT_EQ(attributes[NSUnderlineStyleAttributeName]->integerValue(), 1);

    const Ref<NSAttributedString> plain = title(text("Title").get(), nullptr, false);
    EXPECT_EQ(plain->runs().front().attributes[NSUnderlineStyleAttributeName], nullptr);
    EXPECT_EQ(plain->runs().front().attributes[NSFontAttributeName], nullptr);
    EXPECT_EQ(title(nullptr, font.get(), true), nullptr);
}

TEST(StringUtilTest, LocalisesInTheLanguageOfTheUsersChoice)
{
    const TemporaryFolder folder;
    NSUserDefaults::setStandardDomain(text((folder.path() / "defaults.ini").c_str()).get());
    const auto localised = [](const Ref<NSObject>& language, const char* key) {
        NSUserDefaults::standardUserDefaults()->setObject_forKey(language.get(), text("Tavori").get());
        return StringUtil::CustomLocalizedString_withTable(text(key).get(), text("ignored").get())
            ->UTF8String();
    };
    EXPECT_EQ(localised(text("en"), "greeting"), "Good day");
    EXPECT_EQ(localised(text("de"), "greeting"), "Guten Tag");
    EXPECT_EQ(localised(text("de"), "Photos"), "Photos") << "not in the table";
    EXPECT_EQ(localised(text("tlh"), "greeting"), "greeting") << "no such folder";
    EXPECT_EQ(localised(nullptr, "greeting"), "Guten Tag") << "the first folder";
    EXPECT_EQ(localised(NSNumber::numberWithInteger(1), "greeting"), "Guten Tag");
    EXPECT_EQ(StringUtil::CustomLocalizedString_withTable(nullptr, nullptr)->length(), 0U);
    NSUserDefaults::setStandardDomain(nullptr);
}

} // namespace
