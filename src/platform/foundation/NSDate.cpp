#include "platform/foundation/NSDate.h"

#include <chrono>

Ref<NSDate> NSDate::date()
{
    const std::chrono::duration<double> seconds = std::chrono::system_clock::now().time_since_epoch();
    return make<NSDate>(seconds.count());
}

Ref<NSDate> NSDate::dateWithTimeIntervalSince1970(double seconds)
{
    return make<NSDate>(seconds);
}

bool NSDate::isEqual(const NSObject* other) const
{
    const auto* date = dynamic_cast<const NSDate*>(other);
    return date != nullptr && _seconds == date->_seconds;
}
