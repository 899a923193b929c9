#include "platform/appkit/NSTrackingArea.h"

#include "platform/appkit/NSView.h"

NSTrackingArea* NSTrackingArea::initWithRect_options_owner_userInfo(NSRect rect,
                                                                    NSTrackingAreaOptions options,
                                                                    NSView* owner,
                                                                    std::nullptr_t /*userInfo*/)
{
    _rect = rect;
    _options = options;
    _owner = owner;
    return this;
}

Ref<NSView> NSTrackingArea::owner() const
{
    return _owner.get();
}
