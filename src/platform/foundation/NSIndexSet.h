#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/foundation/NSRange.h"

#include <vector>

/// An immutable set of indexes, kept as ranges: what it costs depends on how many of these there are.
class TESSALINE_EXPORT NSIndexSet final : public NSObject
{
public:
    static Ref<NSIndexSet> indexSet();
    static Ref<NSIndexSet> indexSetWithIndex(std::size_t index);
    static Ref<NSIndexSet> indexSetWithIndexesInRange(NSRange range);
    /// All that are in one of the ranges, which may overlap and be in any order.
    static Ref<NSIndexSet> indexSetWithIndexesInRanges(std::vector<NSRange> ranges);

    bool containsIndex(std::size_t index) const;
    std::size_t count() const { return _count; }
    /// `NSNotFound` in an empty set.
    std::size_t firstIndex() const;

    /// In growing order, none of them empty, with gaps between them.
    const std::vector<NSRange>& ranges() const { return _ranges; }

    bool isEqual(const NSObject* other) const override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSIndexSet(std::vector<NSRange> ranges);

    std::vector<NSRange> _ranges;
    std::size_t _count = 0;
};
