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

NSSize NSString::sizeWithAttributes(const NSAttributes& attributes) const
{
    return withAttributes(attributes)->size();
}

void NSString::drawInRect_withAttributes(NSRect rect, const NSAttributes& attributes) const
{
    withAttributes(attributes)->drawInRect(rect);
}

Ref<NSAttributedString> NSString::withAttributes(const NSAttributes& attributes) const
{
    return make<NSAttributedString>()->initWithString_attributes(copy().get(), attributes);
}
