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

const std::string kMegabyte(1'000'000, 'a');

TEST(StringUtilTest, MatchesRegularExpressions)
{
    constexpr struct {
        const char* text;
        const char* pattern;
        const char* match;
        bool whole;
    } kCases[] = {{"abc123", "[0-9]+", "123", false},
                  {"Ab", "ab", "", false},
                  {"aab", "a|ab|aab", "a", true},
                  {"\u00e4\u00f6", "\u00f6", "\u00f6", false},
                  {nullptr, "a*", "", true}};
    for (const auto& [string, pattern, match, whole] : kCases) {
        EXPECT_EQ(utf8(StringUtil::FindIfMatch_withPattern(string, pattern)), match);
        EXPECT_EQ(StringUtil::IsMatch_withPattern(string, pattern), whole) << pattern;
    }
    EXPECT_EQ(StringUtil::FindIfMatch_withPattern("\u00e4", "."), nullptr) << "half a character";
    EXPECT_THROW(StringUtil::IsMatch_withPattern("a", "("), std::regex_error);
}

TEST(StringUtilTest, EndsASearchBeforeTheStackIsExhausted)
{
    for (const char* pattern : {"[^@]+@", "(a*)*b"}) {
        try {
            StringUtil::FindIfMatch_withPattern(kMegabyte.c_str(), pattern);
            FAIL() << pattern;
        } catch (const std::regex_error& error) {
            EXPECT_EQ(error.code(), std::regex_constants::error_stack);
        }
    }
#ifdef __SANITIZE_ADDRESS__
    constexpr std::size_t kScale = 10; // its frames are several times as large
#else
    constexpr std::size_t kScale = 1;
#endif
    EXPECT_EQ(utf8(StringUtil::FindIfMatch_withPattern((kMegabyte + "1").c_str(), "[0-9]")), "1");
    EXPECT_TRUE(StringUtil::IsMatch_withPattern(kMegabyte.substr(0, 40'000 / kScale).c_str(), "(a|b)*"));
    // What takes no byte takes stack, too, and so does compiling.
    EXPECT_EQ(utf8(StringUtil::FindIfMatch_withPattern(kMegabyte.c_str(), "(){30000}")), "");
    EXPECT_THROW(StringUtil::IsMatch_withPattern("a", std::string(90'000 / kScale, '(').c_str()),
                 std::regex_error);
}

TEST(StringUtilTest, FindsAnAddressWhereTheRegularExpressionDoes)
{
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
    EXPECT_FALSE(StringUtil::IsSimpleEmailFormat(nullptr));
    EXPECT_FALSE(StringUtil::IsSimpleEmailFormat(kMegabyte.c_str()));
    EXPECT_TRUE(StringUtil::IsSimpleEmailFormat((kMegabyte + '@' + kMegabyte + ".a").c_str()));
    EXPECT_FALSE(StringUtil::IsSimpleEmailFormat(std::string(1'000'000, '@').c_str()));
}

TEST(StringUtilTest, ReadsHexadecimalColours)
{
    constexpr struct {
        const char* text;
        int red, green, blue;
    } kCases[] = {{"Ff8000", 255, 128, 0}, {"GG8000", 0, 128, 0}, {" F1g0x", 15, 1, 0},
                  {"0X7", 0, 7, 0},        {nullptr, 0, 0, 0},    {"\u00e4\u00f612", 0, 18, 0}};
    for (const auto& [string, red, green, blue] : kCases) {
        const Ref<NSArray<NSNumber>> numbers = StringUtil::GetHexRGB(text(string).get());
        const auto number = [&](std::size_t index) { return numbers->objectAtIndex(index)->integerValue(); };
        EXPECT_TRUE(number(0) == red && number(1) == green && number(2) == blue) << string;
    }
}

TEST(StringUtilTest, ComparesVersionsByNumbers)
{
    using Version = std::pair<const char*, int>;
    constexpr Version kBeside44[] = {{"4.4.2", 1},  {"4.4.0.1", 0}, {"4.10", 1},   {"4.3", -1},
                                     {nullptr, -1}, {"4.4.-1", -1}, {" +4x.4", 0}, {"4..4", -1}};
    for (const auto& [version, result] : kBeside44) {
        EXPECT_EQ(StringUtil::CompareVersion_withSecond(version, "4.4"), result) << version;
    }
    EXPECT_EQ(StringUtil::CompareVersion_withSecond("4.4", "4.4.1"), 0);
    EXPECT_EQ(StringUtil::CompareVersion_withSecond("4.4", nullptr), 1);
    EXPECT_EQ(StringUtil::CompareVersion_withSecond("99999999999.1", "2147483647.0"), 1);
    EXPECT_EQ(StringUtil::CompareVersion_withSecond("-99999999999", "-2147483648"), 0);
    EXPECT_TRUE(StringUtil::IsAndroidVersionAboveKitkat("4.4"));
    EXPECT_FALSE(StringUtil::IsAndroidVersionAboveKitkat("4.3.9"));
}

TEST(StringUtilTest, DividesAndConvertsTexts)
{
    EXPECT_EQ(StringUtil::split_withPattern("a,,b,", ","), (Pieces{"a", "", "b", ""}));
    EXPECT_EQ(StringUtil::split_withPattern("", ","), (Pieces{""}));
    EXPECT_EQ(StringUtil::split_withPattern("a.*b", ".*"), (Pieces{"a", "b"}));
    EXPECT_EQ(StringUtil::split_withPattern("aaa", "aa"), (Pieces{"", ""}));
    EXPECT_EQ(StringUtil::split_withPattern("abc", ""), (Pieces{"abc"}));
    EXPECT_EQ(utf8(StringUtil::SpliteString(text("/x/y/z.txt").get())), "z.txt");
    EXPECT_EQ(utf8(StringUtil::SpliteString(text("z.txt").get())), "z.txt");
    EXPECT_EQ(StringUtil::SpliteString(nullptr), nullptr);
    EXPECT_EQ(utf8(StringUtil::sanitizeFileNameString(text("a<b>c**d/e\\f?g%h|i\"j:k \U0001F600").get())),
              "a-b-c--d-e-f-g-h-i-j:k \U0001F600");
    EXPECT_EQ(StringUtil::sanitizeFileNameString(nullptr), nullptr);
    EXPECT_EQ(utf8(StringUtil::cToObjcString(nullptr)), "");
    EXPECT_EQ(StringUtil::cToObjcString("\xC3"), nullptr);
    EXPECT_EQ(utf8(StringUtil::NilToEmpty(nullptr)), "");
    EXPECT_TRUE(StringUtil::isStrNullOrEmpty(nullptr) && StringUtil::isStrNullOrEmpty(""));
    EXPECT_FALSE(StringUtil::isStrNullOrEmpty(" "));
    EXPECT_EQ(StringUtil::mmToPoint(210.0F), 595.0F);
    EXPECT_EQ(StringUtil::mmToPoint(-1.0F), -3.0F);
    EXPECT_EQ(StringUtil::mmToPoint(-0.1F), 0.0F);
}

TEST(StringUtilTest, BuildsTitles)
{
    const Ref<NSFont> font = NSFont::fontWithName_size("Arial Bold", 14.0);
    const auto title = [&](const char* string, bool underlined) {
        return StringUtil::getTitleAttributeString_withFont_withColor_withUnderline(
            text(string).get(), font.get(), NSColor::grayColor().get(), underlined);
    };
    for (const bool underlined : {true, false}) {
        const auto runs = title("Title", underlined)->runs();
        EXPECT_EQ(runs.at(0).range, (NSRange{0, 5}));
        EXPECT_EQ(runs[0].attributes[NSFontAttributeName], font.get());
        EXPECT_EQ(runs[0].attributes[NSForegroundColorAttributeName], NSColor::grayColor().get());
        EXPECT_EQ(runs[0].attributes[NSUnderlineStyleAttributeName] != nullptr, underlined);
    }
    EXPECT_EQ(title(nullptr, true), nullptr);
}

TEST(StringUtilTest, LocalisesInTheLanguageOfTheUsersChoice)
{
    const TemporaryFolder folder;
    NSUserDefaults::setStandardDomain(text((folder.path() / "defaults.ini").c_str()).get());
    const auto localised = [](const Ref<NSObject>& language, const char* key) {
        NSUserDefaults::standardUserDefaults()->setObject_forKey(language.get(), text("Tavori").get());
        return utf8(StringUtil::CustomLocalizedString_withTable(text(key).get(), text("ignored").get()));
    };
    EXPECT_EQ(localised(text("en"), "greeting"), "Good day");
    EXPECT_EQ(localised(text("de"), "Photos"), "Photos") << "not in the table";
    EXPECT_EQ(localised(text("tlh"), "greeting"), "greeting") << "no such folder";
    EXPECT_EQ(localised(nullptr, "greeting"), "Guten Tag") << "the first folder";
    EXPECT_EQ(localised(NSNumber::numberWithInteger(1), "greeting"), "Guten Tag");
    EXPECT_EQ(localised(text("tlh"), nullptr), "");
    NSUserDefaults::setStandardDomain(nullptr);
}

} // namespace
