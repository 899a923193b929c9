#include "window/ZuFlippedView.h"

#include "platform/foundation/ClassTable.h"

constinit const ClassTable ZuFlippedView::table{
    "ZuFlippedView", &NSView::table, {}, {}, makeObject<ZuFlippedView>};

const ClassTable& ZuFlippedView::classTable() const
{
    return table;
}

ZuFlippedView* ZuFlippedView::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}
