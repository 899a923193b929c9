#include "platform/foundation/NSDateFormatter.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSDate.h"
#include "platform/foundation/NSLocale.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSTimeZone.h"

#include <unicode/smpdtfmt.h>

#include <cmath>
#include <memory>
#include <optional>
#include <string>

namespace
{

icu::UnicodeString toUnicode(const NSString& text)
{
    const std::u16string_view characters = text.characters();
    return {characters.data(), static_cast<std::int32_t>(characters.size())};
}

/// Null, with a line on standard error, if the pattern cannot be used at all.
std::unique_ptr<icu::SimpleDateFormat> formatFor(NSString* pattern, const NSTimeZone& timeZone,
                                                 NSLocale* locale)
{
    const Ref<NSLocale> customs = locale == nullptr ? NSLocale::currentLocale() : locale;
    UErrorCode status = U_ZERO_ERROR;
    auto format = std::make_unique<icu::SimpleDateFormat>(
        pattern == nullptr ? icu::UnicodeString() : toUnicode(*pattern),
        icu::Locale(customs->localeIdentifier()->UTF8String().c_str()), status);
    if (U_FAILURE(status)) {
        diagnose("NSDateFormatter", u_errorName(status));
        return nullptr;
    }
    format->adoptTimeZone(icu::TimeZone::createTimeZone(toUnicode(*timeZone.name())));
    format->setLenient(false);
    return format;
}

/// In seconds since 1970; none if the whole text is no date.
std::optional<double> parsed(const icu::SimpleDateFormat& format, const NSString& text)
{
    const icu::UnicodeString unicode = toUnicode(text);
    icu::ParsePosition position(0);
    const double milliseconds = format.parse(unicode, position);
    const bool fits = position.getErrorIndex() < 0 && position.getIndex() == unicode.length();
    return fits ? std::optional(milliseconds / U_MILLIS_PER_SECOND) : std::nullopt;
}

} // namespace

NSDateFormatter::NSDateFormatter() = default;

NSDateFormatter::~NSDateFormatter() = default;

void NSDateFormatter::setDateFormat(Ref<NSString> pattern)
{
    _pattern = std::move(pattern);
}

void NSDateFormatter::setTimeZone(Ref<NSTimeZone> timeZone)
{
    _timeZone = std::move(timeZone);
}

void NSDateFormatter::setLocale(Ref<NSLocale> locale)
{
    _locale = std::move(locale);
}

Ref<NSString> NSDateFormatter::stringFromDate(NSDate* date) const
{
    if (date == nullptr || !std::isfinite(date->timeIntervalSince1970())) {
        return nullptr;
    }
    const Ref<NSTimeZone> zone =
        _timeZone ? _timeZone : NSTimeZone::localTimeZoneAt(date->timeIntervalSince1970());
    const auto format = formatFor(_pattern.get(), *zone, _locale.get());
    if (!format) {
        return nullptr;
    }
    // To whole microseconds: a moment such as .123 s lies a little below its milliseconds, which are cut.
    constexpr double kMicroseconds = 1e6;
    const double microseconds = std::round(date->timeIntervalSince1970() * kMicroseconds);
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString text;
    constexpr double kMicrosecondsPerMillisecond = 1e3;
    format->format(microseconds / kMicrosecondsPerMillisecond, text,
                   static_cast<icu::FieldPositionIterator*>(nullptr), status);
    if (status == U_INVALID_FORMAT_ERROR) {
        diagnose("NSDateFormatter", "the pattern \"" + _pattern->UTF8String() + "\" is not valid");
    }
    if (U_FAILURE(status)) {
        return nullptr;
    }
    return NSString::stringWithCharacters({text.getBuffer(), static_cast<std::size_t>(text.length())});
}

Ref<NSDate> NSDateFormatter::dateFromString(NSString* text) const
{
    if (text == nullptr || text->length() == 0) {
        return nullptr;
    }
    const Ref<NSTimeZone> zone = _timeZone ? _timeZone : NSTimeZone::localTimeZone();
    const auto format = formatFor(_pattern.get(), *zone, _locale.get());
    if (!format) {
        return nullptr;
    }
    std::optional<double> seconds = parsed(*format, *text);
    if (seconds && !_timeZone) {
        // Where the system's zone has no name, another offset may hold at that date than now.
        const Ref<NSTimeZone> then = NSTimeZone::localTimeZoneAt(*seconds);
        if (!then->isEqual(zone.get())) {
            format->adoptTimeZone(icu::TimeZone::createTimeZone(toUnicode(*then->name())));
            seconds = parsed(*format, *text);
        }
    }
    return seconds ? NSDate::dateWithTimeIntervalSince1970(*seconds) : nullptr;
}
