#include "platform/foundation/NSMutableArray.h"

#include "platform/foundation/Diagnostics.h"

void reportIndexBehindEnd(const char* operation, std::size_t index, std::size_t count)
{
    diagnose(operation, "index " + std::to_string(index) + " is behind the end of " + std::to_string(count) +
                            " objects");
}
