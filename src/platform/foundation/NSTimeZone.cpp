#include "platform/foundation/NSTimeZone.h"

#include "platform/foundation/NSString.h"

#include <unicode/timezone.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace
{

/// The zone's offset from UTC in seconds, or nothing if there is no zone of that name.
std::optional<long> offsetOf(const std::string& name, std::time_t moment)
{
    const std::unique_ptr<icu::TimeZone> zone(
        icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
    if (*zone == icu::TimeZone::getUnknown()) {
        return std::nullopt;
    }
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t standard = 0;
    std::int32_t daylightSaving = 0;
    zone->getOffset(static_cast<double>(moment) * U_MILLIS_PER_SECOND, false, standard, daylightSaving,
                    status);
    return (standard + daylightSaving) / U_MILLIS_PER_SECOND;
}

/// ICU detects the system's zone with the help of variables that it does not guard.
std::mutex& detectionLock()
{
    static constinit std::mutex lock;
    return lock;
}

/// What the system says its zone is called; it need not be a name that is known.
std::string nameOfHostTimeZone()
{
    // TZ may name a file of the zone database, mostly a link to one, instead of a zone.
    const char* variable = std::getenv("TZ");
    std::string file = variable == nullptr ? "" : variable;
    file.erase(0, file.starts_with(':') ? 1 : 0);
    if (file.starts_with('/')) {
        std::error_code error;
        file = std::filesystem::canonical(file, error).string();
        constexpr std::string_view kDatabase = "/zoneinfo/";
        const std::size_t database = file.find(kDatabase);
        return database == std::string::npos ? "" : file.substr(database + kDatabase.size());
    }
    const std::scoped_lock lock(detectionLock());
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
    icu::UnicodeString identifier;
    std::string name;
    zone->getID(identifier).toUTF8String(name);
    return name;
}

/// "GMT+05:30", with seconds only if there are any.
std::string nameOfOffset(long seconds)
{
    constexpr long kMinute = 60;
    constexpr long kHour = 3600;
    const long size = std::labs(seconds);
    std::array<char, 64> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "GMT%c%02ld:%02ld:%02ld", seconds < 0 ? '-' : '+',
                      size / kHour, size % kHour / kMinute, size % kMinute);
    constexpr int kSecondsLength = 3;
    return {text.data(), static_cast<std::size_t>(size % kMinute == 0 ? length - kSecondsLength : length)};
}

} // namespace

NSTimeZone::NSTimeZone(Ref<NSString> name) : _name(std::move(name))
{
    // ICU's date formats begin with its default zone, which it detects when it is first asked for: here,
    // before a format can have this zone, so that it does not happen beside another detection.
    const std::scoped_lock lock(detectionLock());
    const std::unique_ptr<icu::TimeZone> made(icu::TimeZone::createDefault());
}

NSTimeZone::~NSTimeZone() = default;

Ref<NSTimeZone> NSTimeZone::timeZoneWithAbbreviation(NSString* abbreviation)
{
    if (abbreviation == nullptr) {
        return nullptr;
    }
    const std::string name = abbreviation->UTF8String();
    if (name != "UTC" && !(name.starts_with("GMT") && offsetOf(name, 0))) {
        return nullptr;
    }
    return make<NSTimeZone>(abbreviation);
}

Ref<NSTimeZone> NSTimeZone::localTimeZone()
{
    return localTimeZoneAt(static_cast<double>(std::time(nullptr)));
}

Ref<NSTimeZone> NSTimeZone::localTimeZoneAt(double moment)
{
    std::string name = nameOfHostTimeZone();
    constexpr double kFarthest = 1e11; // some thousand years from here, where rules go on as they are
    const auto time = static_cast<std::time_t>(std::clamp(std::floor(moment), -kFarthest, kFarthest));
    std::tm local{};
    tzset();
    if (localtime_r(&time, &local) != nullptr && offsetOf(name, time) != local.tm_gmtoff) {
        name = nameOfOffset(local.tm_gmtoff);
    }
    return make<NSTimeZone>(NSString::stringWithUTF8String(name.c_str()));
}

Ref<NSString> NSTimeZone::name() const
{
    return _name;
}

bool NSTimeZone::isEqual(const NSObject* other) const
{
    const auto* zone = dynamic_cast<const NSTimeZone*>(other);
    return zone != nullptr && _name->isEqual(zone->_name.get());
}
