#include "window/ZuOutlineImageCell.h"

#include "platform/appkit/NSOutlineView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "window/ZuOutlineItem.h"
#include "window/ZuOutlineRow.h"

#include <array>

namespace
{

constexpr double kTextMargin = 2.0; // which the base class leaves free at either side

constexpr std::array kProperties{
    property<&ZuOutlineImageCell::item, &ZuOutlineImageCell::setItem>("item"),
};

} // namespace

constinit const ClassTable ZuOutlineImageCell::table{
    "ZuOutlineImageCell", &NSTextFieldCell::table, kProperties, {}, makeObject<ZuOutlineImageCell>};

const ClassTable& ZuOutlineImageCell::classTable() const
{
    return table;
}

Ref<NSCell> ZuOutlineImageCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new ZuOutlineImageCell(*this));
}

Ref<ZuOutlineItem> ZuOutlineImageCell::item() const
{
    return _item.get();
}

void ZuOutlineImageCell::setItem(ZuOutlineItem* item)
{
    _item = item;
}

void ZuOutlineImageCell::drawWithFrame_inView(NSRect frame, NSView* view)
{
    auto* const outline = dynamic_cast<NSOutlineView*>(view);
    if (outline == nullptr) {
        NSTextFieldCell::drawWithFrame_inView(frame, view);
        return;
    }
    const ZuOutlineRow row(*this, item());
    NSRect text = row.drawLogo(frame, attributedStringValue()->size(), *outline);
    text.size.width += kTextMargin;
    // The text itself ends there: with another margin before it, it would be shortened.
    NSTextFieldCell::drawWithFrame_inView({text.origin, {text.size.width + kTextMargin, text.size.height}},
                                          view);
    if (const std::optional<NSRect> count = row.placeOfCount(text)) {
        drawRectangle_withAttri(*count, row.attributesOfCount(frame, *outline));
    }
}

void ZuOutlineImageCell::drawRectangle_withAttri(NSRect rect, const NSAttributes& attributes)
{
    ZuOutlineRow(*this, item()).drawCount(rect, attributes);
}

bool ZuOutlineImageCell::trackMouse_inRect_ofView_untilMouseUp(NSEvent* event, NSRect frame, NSView* view,
                                                               bool /*untilMouseUp*/)
{
    ZuOutlineRow::takePress(*this, *event, frame, view);
    return false;
}

Ref<NSString> ZuOutlineImageCell::accessibilityLabel() const
{
    return ZuOutlineRow(*this, item()).label();
}

std::optional<bool> ZuOutlineImageCell::accessibilityChecked() const
{
    return ZuOutlineRow(*this, item()).isChecked();
}

void ZuOutlineImageCell::performCheckOfRow_inView(std::int64_t row, NSTableView* view)
{
    ZuOutlineRow::toggle(row, view);
}
