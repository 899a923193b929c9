#pragma once

#include "platform/foundation/NSObject.h"

/// A moment, counted in seconds since 1970-01-01 00:00:00 UTC; immutable.
class TESSALINE_EXPORT NSDate final : public NSObject
{
public:
    /// The present moment.
    static Ref<NSDate> date();
    /// Any number is taken; those that are no moment (NaN, infinities) are not formatted later.
    static Ref<NSDate> dateWithTimeIntervalSince1970(double seconds);

    double timeIntervalSince1970() const { return _seconds; }

    bool isEqual(const NSObject* other) const override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSDate(double seconds) : _seconds(seconds) {}

    double _seconds;
};
