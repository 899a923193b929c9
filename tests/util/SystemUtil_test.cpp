#include "util/SystemUtil.h"

#include "platform/foundation/NSDate.h"
#include "platform/foundation/NSDateFormatter.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSTimeZone.h"
#include "support/Drawing.h"
#include "support/EnvironmentVariable.h"
#include "util/SystemUtilState.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <cstring>

namespace
{

constexpr const char* kPattern = "yyyy-MM-dd HH:mm:ss";

std::string utf8(const Ref<NSString>& string)
{
    return string ? string->UTF8String() : "null";
}

bool matches(const Ref<NSString>& string, const char* pattern)
{
    return testing::Matcher<std::string>(testing::MatchesRegex(pattern)).Matches(utf8(string));
}

std::string local(double seconds, const char* pattern = kPattern)
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

/// A moment, its wall time in a zone, and whether that wall time stands for the moment when it is read.
struct Moment {
    const char* zone;
    double seconds;
    const char* text;
    bool readsBack = true;
};

TEST(SystemUtilTest, ReadsAndWritesOnBothSidesOfDaylightSaving)
{
    const EnvironmentVariable locale("LC_ALL", "C");
    for (const Moment& moment : {
             Moment{"Europe/Berlin", 1553993999, "2019-03-31 01:59:59"},
             {"Europe/Berlin", 1553994000, "2019-03-31 03:00:00"},
             {"Europe/Berlin", 1572134399, "2019-10-27 01:59:59"},
             {"Europe/Berlin", 1572136200, "2019-10-27 02:30:00", false}, // the first of two
             {"Europe/Berlin", 1572139800, "2019-10-27 02:30:00"},
             {"America/New_York", 1552201199, "2019-03-10 01:59:59"},
             {"America/New_York", 1552201200, "2019-03-10 03:00:00"},
             {"America/New_York", 1572757200, "2019-11-03 01:00:00", false},
             {"America/New_York", 1572760800, "2019-11-03 01:00:00"},
             {"Asia/Kolkata", 1554275445, "2019-04-03 12:40:45"},
             {"UTC", -0.25, "1969-12-31 23:59:59", false},
             {":/usr/share/zoneinfo/Europe/Berlin", 1553994000, "2019-03-31 03:00:00"},
             {"<+0530>-5:30", 1554275445, "2019-04-03 12:40:45"},
             {"CET-1CEST,M3.5.0,M10.5.0/3", 1562000000, "2019-07-01 18:53:20"},
             {"CET-1CEST,M3.5.0,M10.5.0/3", 1549000000, "2019-02-01 06:46:40"},
             {"GMT+3", 1554275445, "2019-04-03 04:10:45"},
             {"", 1554275445, "2019-04-03 07:10:45"},
         }) {
        SCOPED_TRACE(std::string(moment.zone) + " " + moment.text);
        const EnvironmentVariable zone("TZ", moment.zone);
        std::array<char, 32> buffer{};
        EXPECT_EQ(TimeFormat(static_cast<std::time_t>(std::floor(moment.seconds)), buffer.data(),
                             buffer.size(), "%Y-%m-%d %H:%M:%S"),
                  19U);
        EXPECT_STREQ(buffer.data(), moment.text);
        EXPECT_EQ(local(moment.seconds), moment.text);
        EXPECT_EQ(parsed(moment.text) == moment.seconds, moment.readsBack);
    }
}

TEST(SystemUtilTest, TakesWhatIsNoDateForNow)
{
    const EnvironmentVariable locale("LC_ALL", "C");
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    for (const char* dateTime :
         {"", "x", "2019-03-31 02:30:00", "2019-02-29 12:00:00", "2019-13-01 12:00:00", "2019-04-03 24:30:00",
          "2019-04-03 12:30:60", "2019-04-03 12:30", "2019-04-03 12:30:45 ", "2019-04-03T12:30:45",
          "2019-04-03 12:30:45.5", "2019-Apr-03 12:30:45x", "\xFF", static_cast<const char*>(nullptr)}) {
        EXPECT_TRUE(isNow(parsed(dateTime))) << (dateTime == nullptr ? "null" : dateTime);
    }
}

TEST(SystemUtilTest, WritesEveryPatternInTheCurrentLocale)
{
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    constexpr double kMoment = 1554287445.123; // 2019-04-03 12:30:45.123
    struct Case {
        const char* locale;
        const char* pattern;
        const char* text;
    };
    for (const Case& example : {
             Case{"de_DE.UTF-8", "EEEE d. MMMM yyyy", "Mittwoch 3. April 2019"},
             {"fr_FR.UTF-8", "EEE d MMM yy, G", "mer. 3 avr. 19, ap. J.-C."},
             {"ja_JP.eucJP", "y年M月d日 EEEE", "2019年4月3日 水曜日"},
             {"sr_RS@latin", "MMMM", "april"},
             {"sr_RS", "MMMM", "април"},
             {"th_TH", "yyyy", "2562"},
             {"C", "h 'o''clock' a, ''ww'' w 'ww'", "12 o'clock PM, '14' 14 ww"},
             {"POSIX", "D DDD QQQ e S SS SSS A", "93 093 Q2 4 1 12 123 45045123"},
             {"en_US", "zzzz XXX Z VV", "Central European Summer Time +02:00 +0200 Europe/Berlin"},
             {"not a locale", "yyyy", "2019"},
             {"C", "", ""},
             {"C", "'open", "open"},
         }) {
        const EnvironmentVariable locale("LC_ALL", example.locale);
        EXPECT_EQ(local(kMoment, example.pattern), example.text);
    }
    EXPECT_EQ(local(-62198755200.0, "yyyy G"), "0002 BC");

    const EnvironmentVariable noLocale("LC_ALL", "");
    const EnvironmentVariable time("LC_TIME", "de_AT");
    const EnvironmentVariable language("LANG", "fr_FR");
    EXPECT_EQ(local(kMoment, "EEEE"), "Mittwoch");
    const Ref<NSDate> date = NSDate::dateWithTimeIntervalSince1970(kMoment);
    EXPECT_EQ(utf8(SystemUtil::DateToUTCString_withFormat(date.get(), text("d. MMMM HH:mm 'Uhr' zzz").get())),
              "3. April 10:30 Uhr UTC");
}

TEST(SystemUtilTest, AnswersNullToWhatCannotBeWritten)
{
    const Ref<NSDate> now = NSDate::date();
    EXPECT_TRUE(isNow(now->timeIntervalSince1970()));
    for (const auto& function :
         {&SystemUtil::DateToString_withFormat, &SystemUtil::DateToUTCString_withFormat}) {
        EXPECT_EQ(function(nullptr, text("yyyy").get()), nullptr);
        EXPECT_EQ(function(now.get(), nullptr), nullptr);
        for (const double seconds : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, -1e300, 1e16}) {
            EXPECT_EQ(function(NSDate::dateWithTimeIntervalSince1970(seconds).get(), text("yyyy").get()),
                      nullptr);
        }
        testing::internal::CaptureStderr();
        EXPECT_EQ(function(now.get(), text("yyyy n").get()), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "NSDateFormatter: the pattern \"yyyy n\" is not valid\n");
    }
    for (const char* unknown : {"", "XYZ", "Europe/Berlin", "GMT+99", "GMTx", "CET"}) {
        EXPECT_EQ(NSTimeZone::timeZoneWithAbbreviation(text(unknown).get()), nullptr) << unknown;
    }
    EXPECT_EQ(utf8(NSTimeZone::timeZoneWithAbbreviation(text("GMT+5:30").get())->name()), "GMT+5:30");
    EXPECT_EQ(make<NSDateFormatter>()->dateFromString(text("x").get()), nullptr) << "the empty pattern";
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
    EXPECT_EQ(buffer[11], '#');
    EXPECT_EQ(TimeFormat(kMoment, nullptr, 11, "%Y"), 0U);
    EXPECT_EQ(TimeFormat(kMoment, buffer.data(), 0, "%Y"), 0U);
    EXPECT_EQ(TimeFormat(kMoment, buffer.data(), 11, nullptr), 0U);
    EXPECT_EQ(TimeFormat(LLONG_MAX, buffer.data(), 11, "%Y"), 0U);

    EXPECT_EQ(GetNowDateTime(buffer.data(), buffer.size(), "%Y"), 4U);
    EXPECT_TRUE(isNow(parsed(utf8(SystemUtil::getNowDateTime()).c_str())));
    EXPECT_TRUE(isNow(
        parsed((utf8(SystemUtil::getNowDate()) + utf8(SystemUtil::getNowDateTime()).substr(10)).c_str())));
    EXPECT_EQ(utf8(SystemUtil::getNowDateTimeWithFormat_Length("%Y", 5)), buffer.data());
    EXPECT_EQ(utf8(SystemUtil::getNowDateTimeWithFormat_Length("%Y", INT_MAX)), buffer.data());
    for (const int length : {4, 1, 0, -1, INT_MIN}) {
        EXPECT_EQ(utf8(SystemUtil::getNowDateTimeWithFormat_Length("%Y", length)), "") << length;
    }
    EXPECT_EQ(utf8(SystemUtil::getNowDateTimeWithFormat_Length(nullptr, 5)), "");
    EXPECT_EQ(utf8(SystemUtil::getNowDateTimeWithFormat_Length("%2000000000Y", INT_MAX)), "");
    EXPECT_EQ(utf8(SystemUtil::getNowDateTimeWithFormat_Length("\xFF", 5)), "");
}

TEST(SystemUtilTest, ReadsNumbersByPosition)
{
    using Numbers = std::array<int, 6>;
    for (const auto& [date, numbers] : std::initializer_list<std::pair<const char*, Numbers>>{
             {"2019-04-03 12:30:45", {119, 3, 3, 12, 30, 45}},
             {"2019x04y03z12t30u45v", {119, 3, 3, 12, 30, 45}},
             {"  12- 4-+3 -2:ab:99trailing", {12 - 1900, 3, 3, -2, 0, 99}},
             {"99999999999999999999999", {INT_MAX - 1900, INT_MAX - 1, INT_MAX, INT_MAX, 999999999, 999999}},
             {"-9999999999-9999999999", {INT_MIN, 999998, 999, INT_MIN, 99999999, 99999}},
         }) {
        SCOPED_TRACE(date);
        struct tm result;
        std::memset(&result, 0x55, sizeof result);
        ASSERT_TRUE(SystemUtil::DateTextConvertToTM_withDate(&result, date));
        EXPECT_EQ((Numbers{result.tm_year, result.tm_mon, result.tm_mday, result.tm_hour, result.tm_min,
                           result.tm_sec}),
                  numbers);
        EXPECT_TRUE(result.tm_wday == 0 && result.tm_yday == 0 && result.tm_isdst == 0 &&
                    result.tm_gmtoff == 0 && result.tm_zone == nullptr);
    }
    struct tm untouched {
    };
    untouched.tm_year = 7;
    EXPECT_FALSE(SystemUtil::DateTextConvertToTM_withDate(&untouched, "2019-04-03 12:30:4"));
    EXPECT_FALSE(SystemUtil::DateTextConvertToTM_withDate(&untouched, nullptr));
    EXPECT_FALSE(SystemUtil::DateTextConvertToTM_withDate(nullptr, "2019-04-03 12:30:45"));
    EXPECT_EQ(untouched.tm_year, 7);
}

TEST(SystemUtilTest, CountsTo998)
{
    for (int call = 0; call < 3 * 998; ++call) {
        ASSERT_EQ(SystemUtil::GetTimestamp(), call % 998 + 1);
    }
}

TEST(SystemUtilTest, KnowsWhenItWasBuilt)
{
    const auto compileYear = [](const char* date) { return utf8(systemUtilState().compileYear(date)); };
    int month = 0;
    for (const char* name :
         {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}) {
        ++month;
        const std::string number = (month < 10 ? "0" : "") + std::to_string(month);
        EXPECT_EQ(compileYear((std::string(name) + "  3 2019").c_str()), "2019" + number + "03");
        EXPECT_EQ(compileYear((std::string(name) + " 28 2020").c_str()), "2020" + number + "28");
    }
    for (const char* other : {"", "Ja", "jan  3 2019", "Okt  3 2019", "Jan"}) {
        EXPECT_EQ(compileYear(other), other);
    }
    EXPECT_TRUE(matches(SystemUtil::getCompileYear(), "20[0-9]{2}[01][0-9][0-3][0-9]"));
}

TEST(SystemUtilTest, MakesNewUUIDs)
{
    std::set<std::string> all;
    for (int i = 0; i < 1000; ++i) {
        const std::string identifier = utf8(SystemUtil::stringWithUUID());
        EXPECT_TRUE(all.insert(identifier).second);
        EXPECT_TRUE(matches(text(identifier.c_str()),
                            "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
    }
}

} // namespace
