#pragma once

#include "platform/foundation/NSObject.h"

#include <cstdint>
#include <variant>

/// A number as an object; immutable.
class TESSALINE_EXPORT NSNumber final : public NSObject
{
public:
    static Ref<NSNumber> numberWithInteger(std::int64_t value);
    static Ref<NSNumber> numberWithDouble(double value);

    /// Whether the number is an integer, however it was made: 4.0 is one.
    bool isInteger() const;
    /// The integer nearest to zero from the value; values beyond 64 bits, and NaN, give 0.
    std::int64_t integerValue() const;
    double doubleValue() const;

    bool isEqual(const NSObject* other) const override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSNumber(std::variant<std::int64_t, double> value) : _value(value) {}

    std::variant<std::int64_t, double> _value;
};
