#include "window/ZuImageCell.h"

#include "platform/appkit/NSTableView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&ZuImageCell::description, &ZuImageCell::setDescription>("description"),
    property<&ZuImageCell::offset, &ZuImageCell::setOffset>("offset"),
};

} // namespace

constinit const ClassTable ZuImageCell::table{
    "ZuImageCell", &NSImageCell::table, kProperties, {}, makeObject<ZuImageCell>};

const ClassTable& ZuImageCell::classTable() const
{
    return table;
}

Ref<NSCell> ZuImageCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new ZuImageCell(*this));
}

Ref<NSString> ZuImageCell::description() const
{
    return _description.get();
}

void ZuImageCell::setDescription(NSString* description)
{
    _description = description;
}

Ref<NSFont> ZuImageCell::font() const
{
    return _font.get();
}

void ZuImageCell::setFont(Ref<NSFont> font)
{
    _font = font;
}

void ZuImageCell::drawWithFrame_inView(NSRect frame, NSView* view)
{
    NSImageCell::drawWithFrame_inView(frame, view);
    const auto* rows = dynamic_cast<NSTableView*>(view);
    Ref<NSFont> shownFont = font();
    if (!shownFont && rows != nullptr) {
        shownFont = rows->font();
        setFont(shownFont);
    }
    const Ref<NSString> caption = description();
    if (!shownFont || !caption) {
        return;
    }
    const bool isSelected = rows != nullptr && rows->isRowSelected(rows->rowAtPoint(frame.origin));
    const NSAttributes attributes{
        {NSFontAttributeName, shownFont},
        {NSForegroundColorAttributeName, isSelected ? NSColor::whiteColor() : NSColor::blackColor()}};
    const double height = caption->sizeWithAttributes(attributes).height;
    caption->drawAtPoint_withAttributes(
        {frame.origin.x + static_cast<double>(_offset), frame.origin.y + (frame.size.height - height) * 0.5},
        attributes);
}

Ref<NSString> ZuImageCell::accessibilityLabel() const
{
    return description();
}
