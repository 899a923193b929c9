#include "platform/foundation/NSMutableArray.h"

#include "platform/foundation/Diagnostics.h"

void reportIndexBehindEnd(std::size_t index, std::size_t count)
{
    diagnose("objectAtIndex", "index " + std::to_string(index) + " is behind the end of " +
                                  std::to_string(count) + " objects");
}
