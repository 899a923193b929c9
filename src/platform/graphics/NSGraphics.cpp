#include "platform/graphics/NSGraphics.h"

#include "platform/graphics/NSGraphicsContext.h"

void NSRectFill(NSRect rect)
{
    NSGraphicsContext* context = NSGraphicsContext::currentContext();
    if (context != nullptr && !NSIsEmptyRect(rect)) {
        context->replaceRect(rect);
    }
}

void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation /*operation*/)
{
    NSGraphicsContext* context = NSGraphicsContext::currentContext();
    if (context != nullptr && !NSIsEmptyRect(rect)) {
        context->fillRect(rect);
    }
}
