// Measuring and drawing of texts.

#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/qt/TextLayout.h"

NSSize NSAttributedString::size() const
{
    return TextLayout::of(*this, TextLayout::kUnlimited)->size();
}

void NSAttributedString::drawInRect(NSRect rect) const
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->drawText(*this, rect);
    }
}

void NSAttributedString::drawAtPoint(NSPoint point) const
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->drawTextAtPoint(*this, point);
    }
}

NSSize NSString::sizeWithAttributes(const NSAttributes& attributes) const
{
    return withAttributes(attributes)->size();
}

void NSString::drawInRect_withAttributes(NSRect rect, const NSAttributes& attributes) const
{
    withAttributes(attributes)->drawInRect(rect);
}

void NSString::drawAtPoint_withAttributes(NSPoint point, const NSAttributes& attributes) const
{
    withAttributes(attributes)->drawAtPoint(point);
}

Ref<NSAttributedString> NSString::withAttributes(const NSAttributes& attributes) const
{
    return make<NSAttributedString>()->initWithString_attributes(copy().get(), attributes);
}
