// Measuring and drawing of plain strings.

#include "platform/foundation/NSString.h"
#include "platform/graphics/NSAttributes.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/qt/TextLayout.h"

NSSize NSString::sizeWithAttributes(const NSAttributes& attributes) const
{
    return TextLayout::of(*this, attributes, TextLayout::kUnlimited)->size();
}

void NSString::drawInRect_withAttributes(NSRect rect, const NSAttributes& attributes) const
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->drawText(*this, rect, attributes);
    }
}
