#include "platform/appkit/NSImageCell.h"

#include "platform/foundation/ClassTable.h"
#include "platform/graphics/NSImage.h"

#include <algorithm>

constinit const ClassTable NSImageCell::table{"NSImageCell", &NSCell::table, {}, {}, makeObject<NSImageCell>};

const ClassTable& NSImageCell::classTable() const
{
    return table;
}

Ref<NSCell> NSImageCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new NSImageCell(*this));
}

void NSImageCell::setObjectValue(NSObject* value)
{
    setImage(dynamic_cast<NSImage*>(value));
}

void NSImageCell::drawInteriorWithFrame_inView(NSRect frame, NSView* /*view*/)
{
    const Ref<NSImage> shown = image();
    if (!shown || NSIsEmptyRect({{}, shown->size()})) {
        return;
    }
    const auto [width, height] = shown->size();
    const double scale = std::min({1.0, frame.size.width / width, frame.size.height / height});
    const double roomAtLeft =
        _imageAlignment == NSImageAlignment::Left ? 0.0 : (frame.size.width - width * scale) * 0.5;
    shown->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
        NSMakeRect(frame.origin.x + roomAtLeft, frame.origin.y + (frame.size.height - height * scale) * 0.5,
                   width * scale, height * scale),
        NSZeroRect, NSCompositingOperation::SourceOver, 1.0, true, nullptr);
}
