#include "platform/graphics/NSImageRep.h"

bool NSImageRep::drawInRect(NSRect /*rect*/)
{
    return false;
}
