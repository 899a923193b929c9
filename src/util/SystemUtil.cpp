#include "util/SystemUtil.h"

#include "platform/foundation/NSDate.h"
#include "platform/foundation/NSDateFormatter.h"
#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSTimeZone.h"
#include "platform/foundation/NSUUID.h"
#include "util/SystemUtilState.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

namespace
{

std::int64_t gTaskStartSecond = 0;
std::int64_t gTaskAddId = 0; // guarded by gMutexTask
pthread_mutex_t gMutexTask;  // made on first use
pthread_once_t random_is_initialized = PTHREAD_ONCE_INIT;

void RunOnceMutexTaskInit()
{
    pthread_mutex_init(&gMutexTask, nullptr);
}

/// A number as atoi reads it, but with the nearest limit in place of an overflow.
int readNumber(const char* text, long added)
{
    constexpr long kLeast = std::numeric_limits<int>::min();
    constexpr long kMost = std::numeric_limits<int>::max();
    const long number = std::clamp(std::strtol(text, nullptr, 10), kLeast, kMost);
    return static_cast<int>(std::clamp(number + added, kLeast, kMost));
}

Ref<NSString> textOf(const char* bytes)
{
    Ref<NSString> text = NSString::stringWithUTF8String(bytes);
    return text ? text : NSString::stringWithUTF8String("");
}

template <std::size_t Size> std::array<char, Size> nowIn(const char* format)
{
    std::array<char, Size> buffer{};
    GetNowDateTime(buffer.data(), buffer.size(), format);
    return buffer;
}

constexpr std::size_t kDateTimeSize = 32;

Ref<NSString> compileYear(const char* buildDate)
{
    static constexpr std::array<std::string_view, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    constexpr std::size_t kMonthLength = 3;
    constexpr std::size_t kDay = 4;
    constexpr std::size_t kYear = 7;
    constexpr std::size_t kLength = 11;
    const std::string_view text = buildDate;
    const auto* const month = std::ranges::find(months, text.substr(0, kMonthLength));
    if (month == months.end() || text.size() != kLength) {
        return textOf(buildDate);
    }
    std::array<char, kDateTimeSize> result{};
    std::snprintf(result.data(), result.size(), "%s%.2d%.2d", buildDate + kYear,
                  static_cast<int>(month - months.begin()) + 1, readNumber(buildDate + kDay, 0));
    return textOf(result.data());
}

} // namespace

SystemUtilState systemUtilState()
{
    return {gTaskStartSecond, gTaskAddId, random_is_initialized, &compileYear};
}

std::size_t TimeFormat(std::time_t moment, char* buffer, std::size_t size, const char* format)
{
    if (buffer == nullptr || size == 0) {
        return 0;
    }
    std::tm local{};
    tzset(); // localtime_r need not
    std::size_t length = 0;
    if (format != nullptr && localtime_r(&moment, &local) != nullptr) {
        length = std::strftime(buffer, size, format, &local);
    }
    buffer[length] = '\0';
    return length;
}

std::size_t GetNowDateTime(char* buffer, std::size_t size, const char* format)
{
    return TimeFormat(std::time(nullptr), buffer, size, format);
}

Ref<NSString> SystemUtil::DateToUTCString_withFormat(NSDate* date, NSString* format)
{
    if (format == nullptr) {
        return nullptr;
    }
    const Ref<NSDateFormatter> formatter = make<NSDateFormatter>();
    formatter->setTimeZone(NSTimeZone::timeZoneWithAbbreviation(NSString::stringWithUTF8String("UTC").get()));
    formatter->setDateFormat(format);
    return formatter->stringFromDate(date);
}

Ref<NSString> SystemUtil::DateToString_withFormat(NSDate* date, NSString* format)
{
    if (format == nullptr) {
        return nullptr;
    }
    const Ref<NSDateFormatter> formatter = make<NSDateFormatter>();
    formatter->setLocale(NSLocale::currentLocale());
    formatter->setDateFormat(format);
    return formatter->stringFromDate(date);
}

int SystemUtil::GetTimestamp()
{
    static std::int32_t gMilliseconds = 1;
    constexpr std::int32_t kEnd = 999;
    const std::int32_t value = gMilliseconds >= kEnd ? 1 : gMilliseconds;
    gMilliseconds = value + 1;
    return value;
}

bool SystemUtil::DateTextConvertToTM_withDate(struct tm* result, const char* date)
{
    constexpr std::size_t kLength = 19;
    if (result == nullptr || date == nullptr || strnlen(date, kLength) < kLength) {
        return false;
    }
    constexpr int kFirstYear = 1900;
    *result = {};
    result->tm_year = readNumber(date, -kFirstYear);
    result->tm_mon = readNumber(date + 5, -1);
    result->tm_mday = readNumber(date + 8, 0);
    result->tm_hour = readNumber(date + 11, 0);
    result->tm_min = readNumber(date + 14, 0);
    result->tm_sec = readNumber(date + 17, 0);
    return true;
}

Ref<NSString> SystemUtil::getNowDate()
{
    return textOf(nowIn<kDateTimeSize>("%Y-%m-%d").data());
}

Ref<NSString> SystemUtil::getNowDateTime()
{
    return textOf(nowIn<kDateTimeSize>("%Y-%m-%d %H:%M:%S").data());
}

Ref<NSString> SystemUtil::getNowDateTimeWithFormat_Length(const char* format, int length)
{
    constexpr int kMostBytes = 65536; // the caller's length may be anything
    std::string buffer(static_cast<std::size_t>(std::clamp(length, 0, kMostBytes)), '\0');
    GetNowDateTime(buffer.data(), buffer.size(), format);
    return textOf(buffer.c_str());
}

Ref<NSString> SystemUtil::getCompileYear()
{
    return compileYear(__DATE__);
}

Ref<NSDate> SystemUtil::getPlistDateSeconds(const char* dateTime)
{
    const Ref<NSDateFormatter> formatter = make<NSDateFormatter>();
    formatter->setDateFormat(NSString::stringWithUTF8String("yyyy-MM-dd HH:mm:ss"));
    const Ref<NSDate> date = formatter->dateFromString(NSString::stringWithUTF8String(dateTime).get());
    return date ? date : NSDate::date();
}

Ref<NSString> SystemUtil::stringWithUUID()
{
    return NSUUID::UUID()->UUIDString();
}

void SystemUtil::GenerateTaskStartSecond()
{
    constexpr std::size_t kSize = 16;
    constexpr std::int64_t kIdentifiersPerSecond = 10'000'000'000;
    gTaskStartSecond = std::strtoll(nowIn<kSize>("%d%H%M%S").data(), nullptr, 10) * kIdentifiersPerSecond;
}

std::int64_t SystemUtil::getTaskId()
{
    constexpr std::int64_t kEnd = 0x7FFFFFFF;
    pthread_once(&random_is_initialized, &RunOnceMutexTaskInit);
    pthread_mutex_lock(&gMutexTask);
    if (++gTaskAddId == kEnd) {
        GenerateTaskStartSecond(); // takes no lock: this one is not recursive
        gTaskAddId = 0;
    }
    const std::int64_t identifier = gTaskAddId + gTaskStartSecond;
    pthread_mutex_unlock(&gMutexTask);
    return identifier;
}
