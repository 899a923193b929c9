#pragma once

#include "platform/foundation/NSObject.h"

#include <cstddef>
#include <span>
#include <vector>

/// Immutable bytes.
class TESSALINE_EXPORT NSData final : public NSObject
{
public:
    /// Copies `length` bytes. Null holds no bytes: with a length other than 0 that is a mistake, which is
    /// reported.
    static Ref<NSData> dataWithBytes_length(const void* bytes, std::size_t length);

    std::size_t length() const { return _bytes.size(); }
    /// Valid as long as this object.
    std::span<const std::byte> bytes() const { return _bytes; }

    bool isEqual(const NSObject* other) const override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSData(std::span<const std::byte> bytes) : _bytes(bytes.begin(), bytes.end()) {}

    std::vector<std::byte> _bytes;
};
