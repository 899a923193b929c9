#pragma once

#include "platform/foundation/NSObject.h"

class NSDate;
class NSLocale;
class NSString;
class NSTimeZone;

/// Writes dates as texts and reads them back, in the pattern language of Unicode: "yyyy-MM-dd HH:mm:ss"
/// gives 2019-04-03 12:30:45, letters that mean themselves stand between apostrophes. Names of months,
/// digits and the calendar are the locale's (the year 2019 is 2562 where the Buddhist calendar is used).
class TESSALINE_EXPORT NSDateFormatter final : public NSObject
{
public:
    NSDateFormatter();

    /// Copied; null is the empty pattern, which is the default.
    void setDateFormat(Ref<NSString> pattern);
    /// Null, the default, is the system's zone at the time of each call below.
    void setTimeZone(Ref<NSTimeZone> timeZone);
    /// Null, the default, is the environment's locale at the time of each call below.
    void setLocale(Ref<NSLocale> locale);

    /// Null if `date` is null or no moment of the calendar, and with a line on standard error if the
    /// pattern has letters without a meaning.
    Ref<NSString> stringFromDate(NSDate* date) const;

    /// The date that the whole of `text` stands for; what the pattern leaves open is that of 1970-01-01
    /// 00:00:00. Null if the text does not fit: a 30th of February, fewer digits than the pattern has
    /// letters, anything behind the end. A time that the clocks skip when daylight saving begins is no
    /// date; of the two moments of a time that they repeat when it ends, it is the later.
    Ref<NSDate> dateFromString(NSString* text) const;

protected:
    ~NSDateFormatter() override;

private:
    Ref<NSString> _pattern;
    Ref<NSTimeZone> _timeZone;
    Ref<NSLocale> _locale;
};
