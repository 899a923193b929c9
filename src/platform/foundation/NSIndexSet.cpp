#include "platform/foundation/NSIndexSet.h"

#include <algorithm>
#include <utility>

Ref<NSIndexSet> NSIndexSet::indexSet()
{
    return indexSetWithIndexesInRanges({});
}

Ref<NSIndexSet> NSIndexSet::indexSetWithIndex(std::size_t index)
{
    return indexSetWithIndexesInRanges({{index, 1}});
}

Ref<NSIndexSet> NSIndexSet::indexSetWithIndexesInRange(NSRange range)
{
    return indexSetWithIndexesInRanges({range});
}

Ref<NSIndexSet> NSIndexSet::indexSetWithIndexesInRanges(std::vector<NSRange> ranges)
{
    return make<NSIndexSet>(std::move(ranges));
}

NSIndexSet::NSIndexSet(std::vector<NSRange> ranges)
{
    std::ranges::sort(ranges, {}, &NSRange::location);
    for (const NSRange& range : ranges) {
        if (range.length == 0) {
            continue;
        }
        if (!_ranges.empty() && range.location <= NSMaxRange(_ranges.back())) {
            NSRange& last = _ranges.back();
            last.length = std::max(NSMaxRange(last), NSMaxRange(range)) - last.location;
        } else {
            _ranges.push_back(range);
        }
    }
    for (const NSRange& range : _ranges) {
        _count += range.length;
    }
}

bool NSIndexSet::containsIndex(std::size_t index) const
{
    const auto behind = std::ranges::upper_bound(_ranges, index, {}, &NSRange::location);
    return behind != _ranges.begin() && index < NSMaxRange(*(behind - 1));
}

std::size_t NSIndexSet::firstIndex() const
{
    return _ranges.empty() ? NSNotFound : _ranges.front().location;
}

bool NSIndexSet::isEqual(const NSObject* other) const
{
    const auto* set = dynamic_cast<const NSIndexSet*>(other);
    return set != nullptr && set->_ranges == _ranges;
}
