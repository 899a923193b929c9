#include "HeaderCell.h"

#include <platform/foundation/ClassTable.h>

#include <array>

namespace
{

constexpr std::array kProperties{outlet<&HeaderCell::titleShift>("titleShift")};

} // namespace

constinit const ClassTable HeaderCell::table{
    "HeaderCell", &ZuTableHeaderCell::table, kProperties, {}, makeObject<HeaderCell>};

Ref<NSCell> HeaderCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new HeaderCell(*this));
}

void HeaderCell::drawInteriorWithFrame_inView(NSRect frame, NSView* view)
{
    frame.origin.x += titleShift;
    frame.size.width -= titleShift;
    ZuTableHeaderCell::drawInteriorWithFrame_inView(frame, view);
}
