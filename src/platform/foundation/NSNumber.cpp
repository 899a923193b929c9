#include "platform/foundation/NSNumber.h"

#include <cmath>

Ref<NSNumber> NSNumber::numberWithInteger(std::int64_t value)
{
    return make<NSNumber>(value);
}

Ref<NSNumber> NSNumber::numberWithDouble(double value)
{
    return make<NSNumber>(value);
}

bool NSNumber::isInteger() const
{
    const double* value = std::get_if<double>(&_value);
    return value == nullptr ||
           (std::trunc(*value) == *value && static_cast<double>(integerValue()) == *value);
}

std::int64_t NSNumber::integerValue() const
{
    const double* value = std::get_if<double>(&_value);
    if (value == nullptr) {
        return std::get<std::int64_t>(_value);
    }
    constexpr double kLimit = 9223372036854775808.0; // two to the power of 63
    return *value >= -kLimit && *value < kLimit ? static_cast<std::int64_t>(*value) : 0;
}

double NSNumber::doubleValue() const
{
    return std::visit([](auto value) { return static_cast<double>(value); }, _value);
}

bool NSNumber::isEqual(const NSObject* other) const
{
    const auto* number = dynamic_cast<const NSNumber*>(other);
    return number != nullptr && _value == number->_value;
}
