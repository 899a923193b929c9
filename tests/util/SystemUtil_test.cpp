#include "util/SystemUtil.h"

#include "platform/foundation/NSDate.h"
#include "platform/foundation/NSDateFormatter.h"
#include "platform/foundation/NSTimeZone.h"
#include "support/Drawing.h"
#include "support/EnvironmentVariable.h"
#include "util/SystemUtilState.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <regex>

namespace
{

std::string local(double seconds, const char* pattern)
{
    return utf8(SystemUtil::DateToString_withFormat(NSDate::dateWithTimeIntervalSince1970(seconds).get(),
                                                    text(pattern).get()));
}

double parsed(const char* dateTime)
{
    return SystemUtil::getPlistDateSeconds(dateTime)->timeIntervalSince1970();
}

bool isNow(double seconds)
{
    return std::abs(seconds - static_cast<double>(std::time(nullptr))) < 600.0;
}

TEST(SystemUtilTest, ReadsAndWritesOnBothSidesOfDaylightSaving)
{
    const EnvironmentVariable locale("LC_ALL", "C");
    constexpr struct {
        const char* zone;
        double seconds;
        const char* text;
        bool readsBack = true;
    } kMoments[] = {
        {"Europe/Berlin", 1553993999, "2019-03-31 01:59:59"},
        {"Europe/Berlin", 1553994000, "2019-03-31 03:00:00"},
        {"Europe/Berlin", 1572134399, "2019-10-27 01:59:59"},
        {"Europe/Berlin", 1572136200, "2019-10-27 02:30:00", false}, // the first of two
        {"Europe/Berlin", 1572139800, "2019-10-27 02:30:00"},
        {"UTC", -0.25, "1969-12-31 23:59:59", false},
        {":/usr/share/zoneinfo/Europe/Berlin", 1553994000, "2019-03-31 03:00:00"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", 1562000000, "2019-07-01 18:53:20"},
        {"NST3:30NDT,M3.2.0,M11.1.0", 1549000000, "2019-02-01 02:16:40"},
        {"", 1554275445, "2019-04-03 07:10:45"},
    };
    for (const auto& [name, seconds, expected, readsBack] : kMoments) {
        SCOPED_TRACE(std::string(name) + " " + expected);
        const EnvironmentVariable zone("TZ", name);
        std::array<char, 32> buffer{};
        TimeFormat(static_cast<std::time_t>(std::floor(seconds)), buffer.data(), buffer.size(), "%F %T");
        EXPECT_STREQ(buffer.data(), expected);
        EXPECT_EQ(local(seconds, "yyyy-MM-dd HH:mm:ss"), expected);
        EXPECT_EQ(parsed(expected) == seconds, readsBack);
    }
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    for (const char* dateTime : {"", "\xFF", "2019-03-31 02:30:00", "2019-02-29 12:00:00", "2019-04-03 12:30",
                                 "2019-04-03 12:30:45 ", static_cast<const char*>(nullptr)}) {
        EXPECT_TRUE(isNow(parsed(dateTime))) << dateTime;
    }
}

TEST(SystemUtilTest, WritesInTheCurrentLocale)
{
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    constexpr double kMoment = 1554287445.123; // 2019-04-03 12:30:45.123
    using Case = std::array<const char*, 3>;
    constexpr Case kCases[] = {{"de_DE.UTF-8", "EEEE d. MMMM", "Mittwoch 3. April"},
                               {"ja_JP.eucJP", "M月d日 EEEE", "4月3日 水曜日"},
                               {"sr_RS@latin", "MMMM", "april"},
                               {"POSIX", "A SSS", "45045123 123"},
                               {"en_US", "VV", "Europe/Berlin"},
                               {"not a locale", "'open", "open"}};
    for (const auto& [name, pattern, expected] : kCases) {
        const EnvironmentVariable locale("LC_ALL", name);
        EXPECT_EQ(local(kMoment, pattern), expected);
    }
    const EnvironmentVariable noLocale("LC_ALL", "");
    const EnvironmentVariable time("LC_TIME", "de_AT");
    const EnvironmentVariable language("LANG", "fr_FR");
    EXPECT_EQ(local(kMoment, "EEEE"), "Mittwoch");
    EXPECT_EQ(utf8(SystemUtil::DateToUTCString_withFormat(
                  NSDate::dateWithTimeIntervalSince1970(kMoment).get(), text("d. MMMM HH:mm zzz").get())),
              "3. April 10:30 UTC");
}

TEST(SystemUtilTest, AnswersNullToWhatCannotBeWritten)
{
    const Ref<NSDate> now = NSDate::date();
    for (const auto& function :
         {&SystemUtil::DateToString_withFormat, &SystemUtil::DateToUTCString_withFormat}) {
        EXPECT_EQ(function(nullptr, text("yyyy").get()), nullptr);
        EXPECT_EQ(function(now.get(), nullptr), nullptr);
        for (const double seconds : {std::nan(""), HUGE_VAL, -1e300}) {
            EXPECT_EQ(function(NSDate::dateWithTimeIntervalSince1970(seconds).get(), text("yyyy").get()),
                      nullptr);
        }
        testing::internal::CaptureStderr();
        EXPECT_EQ(function(now.get(), text("yyyy n").get()), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "NSDateFormatter: the pattern \"yyyy n\" is not valid\n");
    }
    EXPECT_EQ(make<NSDateFormatter>()->dateFromString(text("x").get()), nullptr) << "the empty pattern";
    for (const char* unknown : {"", "Europe/Berlin", "GMT+99"}) {
        EXPECT_EQ(NSTimeZone::timeZoneWithAbbreviation(text(unknown).get()), nullptr);
    }
    EXPECT_NE(NSTimeZone::timeZoneWithAbbreviation(text("GMT+5:30").get()), nullptr);
}

TEST(SystemUtilTest, FormatsIntoTheRoomThereIs)
{
    const EnvironmentVariable zone("TZ", "UTC");
    constexpr std::time_t kMoment = 1554294645;
    std::array<char, 12> buffer{};
    buffer.fill('#');
    EXPECT_EQ(TimeFormat(kMoment, buffer.data(), 11, "%Y-%m-%d"), 10U);
    EXPECT_EQ(std::string(buffer.data(), buffer.size()), std::string("2019-04-03\0#", 12));
    EXPECT_EQ(TimeFormat(kMoment, buffer.data(), 10, "%Y-%m-%d"), 0U);
    EXPECT_EQ(buffer[0], '\0');
    EXPECT_EQ(TimeFormat(kMoment, nullptr, 11, "%Y") + TimeFormat(kMoment, buffer.data(), 0, "%Y"), 0U);
    EXPECT_EQ(TimeFormat(kMoment, buffer.data(), 11, nullptr), 0U);
    EXPECT_EQ(TimeFormat(LLONG_MAX, buffer.data(), 11, "%Y"), 0U);

    EXPECT_EQ(GetNowDateTime(buffer.data(), buffer.size(), "%Y"), 4U);
    EXPECT_EQ(utf8(SystemUtil::getNowDateTimeWithFormat_Length("%Y", 5)), buffer.data());
    constexpr std::pair<const char*, int> kNoText[] = {
        {"%Y", 4}, {"%Y", -1}, {nullptr, 5}, {"\xFF", 5}, {"%2000000000Y", INT_MAX}};
    for (const auto& [format, length] : kNoText) {
        EXPECT_EQ(utf8(SystemUtil::getNowDateTimeWithFormat_Length(format, length)), "");
    }
    const std::string now = utf8(SystemUtil::getNowDateTime());
    EXPECT_TRUE(isNow(parsed(now.c_str())));
    EXPECT_TRUE(isNow(parsed((utf8(SystemUtil::getNowDate()) + now.substr(10)).c_str())));
}

TEST(SystemUtilTest, ReadsNumbersByPosition)
{
    using Numbers = std::array<int, 6>;
    constexpr std::pair<const char*, Numbers> kCases[] = {
        {"2019x04y03z12t30u45v", {119, 3, 3, 12, 30, 45}},
        {"99999999999999999999999", {INT_MAX - 1900, INT_MAX - 1, INT_MAX, INT_MAX, 999999999, 999999}},
        {"-9999999999-9999999999", {INT_MIN, 999998, 999, INT_MIN, 99999999, 99999}}};
    struct tm result;
    for (const auto& [date, numbers] : kCases) {
        std::memset(&result, 0x55, sizeof result);
        ASSERT_TRUE(SystemUtil::DateTextConvertToTM_withDate(&result, date));
        EXPECT_EQ((Numbers{result.tm_year, result.tm_mon, result.tm_mday, result.tm_hour, result.tm_min,
                           result.tm_sec}),
                  numbers);
        EXPECT_TRUE(result.tm_wday == 0 && result.tm_isdst == 0 && result.tm_zone == nullptr);
    }
    result.tm_year = 7;
    EXPECT_FALSE(SystemUtil::DateTextConvertToTM_withDate(&result, "2019-04-03 12:30:4"));
    EXPECT_FALSE(SystemUtil::DateTextConvertToTM_withDate(&result, nullptr));
    EXPECT_FALSE(SystemUtil::DateTextConvertToTM_withDate(nullptr, "2019-04-03 12:30:45"));
    EXPECT_EQ(result.tm_year, 7);
}

TEST(SystemUtilTest, CountsTo998)
{
    for (int call = 0; call < 2 * 998; ++call) {
        ASSERT_EQ(SystemUtil::GetTimestamp(), call % 998 + 1);
    }
}

TEST(SystemUtilTest, KnowsWhenItWasBuilt)
{
    const auto compileYear = [](const std::string& date) {
        return utf8(systemUtilState().compileYear(date.c_str()));
    };
    int month = 100;
    for (const std::string name :
         {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}) {
        const std::string number = std::to_string(++month).substr(1);
        EXPECT_EQ(compileYear(name + "  3 2019"), "2019" + number + "03");
    }
    EXPECT_EQ(compileYear("Jan 28 2020") + compileYear("Okt  3 2019") + compileYear("Jan"),
              "20200128Okt  3 2019Jan");
    EXPECT_TRUE(
        std::regex_match(utf8(SystemUtil::getCompileYear()), std::regex("20[0-9]{2}[01][0-9][0-3][0-9]")));
}

TEST(SystemUtilTest, MakesNewUUIDs)
{
    const std::string identifier = utf8(SystemUtil::stringWithUUID());
    EXPECT_TRUE(std::regex_match(
        identifier, std::regex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}")));
    EXPECT_NE(utf8(SystemUtil::stringWithUUID()), identifier);
}

} // namespace
