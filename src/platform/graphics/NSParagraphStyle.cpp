#include "platform/graphics/NSParagraphStyle.h"

Ref<NSParagraphStyle> NSParagraphStyle::defaultParagraphStyle()
{
    static const Ref<NSParagraphStyle> style = make<NSParagraphStyle>();
    return style;
}

bool NSParagraphStyle::isEqual(const NSObject* other) const
{
    const auto* style = dynamic_cast<const NSParagraphStyle*>(other);
    return style != nullptr && _alignment == style->_alignment;
}
