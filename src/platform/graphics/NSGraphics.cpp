#include "platform/graphics/NSGraphics.h"

#include "platform/graphics/NSGraphicsContext.h"

void NSRectFill(NSRect rect)
{
    NSGraphicsContext* context = NSGraphicsContext::currentContext();
    if (context != nullptr && !NSIsEmptyRect(rect)) {
        context->replaceRect(rect);
    }
}
