#include "platform/foundation/NSData.h"

#include "platform/foundation/Diagnostics.h"

Ref<NSData> NSData::dataWithBytes_length(const void* bytes, std::size_t length)
{
    if (bytes == nullptr && length != 0) {
        diagnose("dataWithBytes:length:", "there are no bytes");
        length = 0;
    }
    return make<NSData>(std::span(static_cast<const std::byte*>(bytes), length));
}

bool NSData::isEqual(const NSObject* other) const
{
    const auto* data = dynamic_cast<const NSData*>(other);
    return data != nullptr && _bytes == data->_bytes;
}
