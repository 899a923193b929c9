#pragma once

#include "platform/foundation/NSObject.h"

class NSString;

/// A time zone, by name; immutable.
class TESSALINE_EXPORT NSTimeZone final : public NSObject
{
public:
    /// "UTC", "GMT", or a fixed offset such as "GMT+5:30"; null for null and everything else, since other
    /// abbreviations name several zones each.
    static Ref<NSTimeZone> timeZoneWithAbbreviation(NSString* abbreviation);

    /// The zone that the system is in at the time of the call: that of the environment's TZ or else of
    /// the machine. A system that follows rules without a name (TZ=XYZ-3ABC,M3.5.0,M10.5.0) gives the
    /// offset that holds now, or at a moment, in seconds since 1970-01-01 00:00:00 UTC.
    static Ref<NSTimeZone> localTimeZone();
    static Ref<NSTimeZone> localTimeZoneAt(double moment);

    /// Such as "Europe/Berlin", "UTC" or "GMT+05:30".
    Ref<NSString> name() const;

    /// Whether both have the same name.
    bool isEqual(const NSObject* other) const override;

protected:
    ~NSTimeZone() override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSTimeZone(Ref<NSString> name);

    Ref<NSString> _name;
};
