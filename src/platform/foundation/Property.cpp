#include "platform/foundation/Property.h"

#include <array>
#include <cstdint>

std::mutex& lockOfProperty(const void* property)
{
    constexpr std::size_t kLocks = 64;
    static constinit std::array<std::mutex, kLocks> locks;
    const auto address = reinterpret_cast<std::uintptr_t>(property);
    return locks[(address / alignof(void*)) % kLocks];
}
