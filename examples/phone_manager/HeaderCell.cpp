#include "HeaderCell.h"

#include <platform/foundation/ClassTable.h>

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&HeaderCell::titleShift, &HeaderCell::setTitleShift>("titleShift"),
};

} // namespace

constinit const ClassTable HeaderCell::table{
    "HeaderCell", &ZuTableHeaderCell::table, kProperties, {}, makeObject<HeaderCell>};

const ClassTable& HeaderCell::classTable() const
{
    return table;
}

Ref<NSCell> HeaderCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new HeaderCell(*this));
}

void HeaderCell::drawInteriorWithFrame_inView(NSRect frame, NSView* view)
{
    frame.origin.x += _titleShift;
    frame.size.width -= _titleShift;
    ZuTableHeaderCell::drawInteriorWithFrame_inView(frame, view);
}
