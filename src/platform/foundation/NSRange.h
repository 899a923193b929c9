#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>

/// The index of what is not there.
inline constexpr std::size_t NSNotFound = std::numeric_limits<std::size_t>::max();

/// A stretch of a text or list, `length` elements from `location` on; of texts in UTF-16 code units.
struct NSRange {
    std::size_t location = 0;
    std::size_t length = 0;

    bool operator==(const NSRange&) const = default;
};

/// The index behind the last element, without overflow.
constexpr std::size_t NSMaxRange(NSRange range)
{
    return range.location + std::min(range.length, NSNotFound - range.location);
}

/// What both have in common. Ranges that only touch have a range without length in common, at the place
/// where they touch; those apart, the empty range at 0.
constexpr NSRange NSIntersectionRange(NSRange a, NSRange b)
{
    const std::size_t from = std::max(a.location, b.location);
    const std::size_t to = std::min(NSMaxRange(a), NSMaxRange(b));
    return from <= to ? NSRange{from, to - from} : NSRange{};
}
