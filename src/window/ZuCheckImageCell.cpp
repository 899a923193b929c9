#include "window/ZuCheckImageCell.h"

#include "platform/appkit/NSOutlineView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "window/ZuOutlineItem.h"
#include "window/ZuOutlineRow.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&ZuCheckImageCell::flagValue, &ZuCheckImageCell::setFlagValue>("flagValue"),
    property<&ZuCheckImageCell::item, &ZuCheckImageCell::setItem>("item"),
};
constexpr std::array kSelectors{
    selector<&ZuCheckImageCell::SetContactCheck>("SetContactCheck"),
};

} // namespace

constinit const ClassTable ZuCheckImageCell::table{"ZuCheckImageCell", &NSButtonCell::table, kProperties,
                                                   kSelectors, makeObject<ZuCheckImageCell>};

const ClassTable& ZuCheckImageCell::classTable() const
{
    return table;
}

Ref<NSCell> ZuCheckImageCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new ZuCheckImageCell(*this));
}

Ref<ZuOutlineItem> ZuCheckImageCell::item() const
{
    return _item.get();
}

void ZuCheckImageCell::setItem(ZuOutlineItem* item)
{
    _item = item;
}

NSRect ZuCheckImageCell::drawTitle_withFrame_inView(NSAttributedString* title, NSRect frame, NSView* view)
{
    auto* const outline = dynamic_cast<NSOutlineView*>(view);
    if (outline == nullptr) {
        return NSButtonCell::drawTitle_withFrame_inView(title, frame, view);
    }
    const ZuOutlineRow row(*this, item());
    const NSRect place = row.drawLogo(frame, title->size(), *outline);
    const NSRect text = NSButtonCell::drawTitle_withFrame_inView(title, place, view);
    const std::optional<NSRect> count = row.placeOfCount(text);
    if (!count) {
        return text;
    }
    drawRectangle_withAttri(*count, row.attributesOfCount(frame, *outline));
    return *count;
}

void ZuCheckImageCell::drawRectangle_withAttri(NSRect rect, const NSAttributes& attributes)
{
    ZuOutlineRow(*this, item()).drawCount(rect, attributes);
}

bool ZuCheckImageCell::trackMouse_inRect_ofView_untilMouseUp(NSEvent* event, NSRect frame, NSView* view,
                                                             bool /*untilMouseUp*/)
{
    ZuOutlineRow::takePress(*this, *event, frame, view);
    return false;
}

Ref<NSString> ZuCheckImageCell::accessibilityLabel() const
{
    return ZuOutlineRow(*this, item()).label();
}

std::optional<bool> ZuCheckImageCell::accessibilityChecked() const
{
    return ZuOutlineRow(*this, item()).isChecked();
}

void ZuCheckImageCell::performCheckOfRow_inView(std::int64_t row, NSTableView* view)
{
    ZuOutlineRow::toggle(row, view);
}
