#pragma once

#include "platform/foundation/NSObject.h"

#include <cstddef>
#include <cstdint>
#include <ctime>

class NSDate;
class NSString;

/// Dates and times as texts, the build date, new UUIDs, and identifiers of tasks.
///
/// Two languages of patterns: functions that take a `const char*` format use strftime's ("%Y-%m-%d"),
/// those that take an NSString that of Unicode ("yyyy-MM-dd", see NSDateFormatter). The zone is the
/// system's at the time of the call.
class TESSALINE_EXPORT SystemUtil final : public NSObject
{
public:
    /// `date` in UTC. Null if an argument is null, if `date` is no moment, or if the pattern is not valid.
    static Ref<NSString> DateToUTCString_withFormat(NSDate* date, NSString* format);
    /// The same in the current locale and the system's zone.
    static Ref<NSString> DateToString_withFormat(NSDate* date, NSString* format);

    /// Counts the calls: 1 to 998, then again from 1. Without a lock: from one thread at a time.
    static int GetTimestamp();

    /// Reads "YYYY-MM-DD HH:MM:SS" into `result` (borrowed): the six numbers, the rest becomes zero. False,
    /// and nothing written, if an argument is null or `date` has less than 19 bytes. Numbers are taken where
    /// they have to begin, up to the first other character, whatever stands between them and whether or not
    /// they make a date; beyond an int they take the nearest limit.
    static bool DateTextConvertToTM_withDate(struct tm* result, const char* date);

    /// The present moment in local time, as "2019-04-03".
    static Ref<NSString> getNowDate();
    /// As "2019-04-03 12:30:45".
    static Ref<NSString> getNowDateTime();
    /// In `format`, if the text has less than `length` bytes. Otherwise, with a format that is null, and
    /// beyond 65535 bytes in any case, the text is empty.
    static Ref<NSString> getNowDateTimeWithFormat_Length(const char* format, int length);

    /// The date on which the library was built, as "20190403".
    static Ref<NSString> getCompileYear();

    /// Reads "2019-04-03 12:30:45" in the system's zone and the current locale. Never null: what cannot
    /// be read gives the present moment.
    static Ref<NSDate> getPlistDateSeconds(const char* dateTime);

    /// A new UUID in upper case: 8-4-4-4-12 hexadecimal digits.
    static Ref<NSString> stringWithUUID();

    /// Takes the base of the identifiers that follow from the clock: the local day of the month, hour, minute
    /// and second as the number DDHHMMSS, times 10000000000. Called once when the application starts,
    /// before any thread asks for identifiers; without it the base is 0.
    static void GenerateTaskStartSecond();

    /// A new identifier: base + 1, base + 2 and so on. Instead of base + 2147483647 comes a new base
    /// from the clock, then that + 1. From any thread; no two calls get the same one of a base.
    static std::int64_t getTaskId();
};

extern "C" {

/// Writes `moment` in local time and strftime's `format`, with a NUL, into `buffer` of `size` bytes. Returns
/// the length without the NUL; 0, and an empty text if there is room for one, if it does not fit or an
/// argument is null.
TESSALINE_EXPORT std::size_t TimeFormat(std::time_t moment, char* buffer, std::size_t size,
                                        const char* format);

/// The same for the present moment.
TESSALINE_EXPORT std::size_t GetNowDateTime(char* buffer, std::size_t size, const char* format);
}
