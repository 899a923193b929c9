#include "window/ZuCenterTextFieldCell.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"

#include <algorithm>

constinit const ClassTable ZuCenterTextFieldCell::table{
    "ZuCenterTextFieldCell", &NSTextFieldCell::table, {}, {}, makeObject<ZuCenterTextFieldCell>};

const ClassTable& ZuCenterTextFieldCell::classTable() const
{
    return table;
}

Ref<NSCell> ZuCenterTextFieldCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new ZuCenterTextFieldCell(*this));
}

void ZuCenterTextFieldCell::drawWithFrame_inView(NSRect frame, NSView* view)
{
    const double room = std::max(0.0, (frame.size.height - attributedStringValue()->size().height) * 0.5);
    frame.origin.y += room;
    frame.size.height -= room;
    NSTextFieldCell::drawWithFrame_inView(frame, view);
}
