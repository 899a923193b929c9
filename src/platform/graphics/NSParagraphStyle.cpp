#include "platform/graphics/NSParagraphStyle.h"

bool NSParagraphStyle::isEqual(const NSObject* other) const
{
    const auto* style = dynamic_cast<const NSParagraphStyle*>(other);
    return style != nullptr && _alignment == style->_alignment;
}
