#include "platform/graphics/NSImageRep.h"

bool NSImageRep::drawInRect(NSRect /*rect*/)
{
    return false;
}

Ref<NSImageRep> NSImageRep::copy()
{
    return this;
}
