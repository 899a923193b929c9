#include "platform/graphics/NSTextContainer.h"

NSTextContainer* NSTextContainer::initWithContainerSize(NSSize size)
{
    _size = size;
    return this;
}
