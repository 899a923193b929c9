#include "platform/appkit/NSTableHeaderView.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/appkit/NSTableHeaderCell.h"
#include "platform/appkit/NSTableView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/qt/TableItemView.h"
#include "platform/qt/ViewPeer.h"

#include <algorithm>
#include <utility>

constinit const ClassTable NSTableHeaderView::table{
    "NSTableHeaderView", &NSView::table, {}, {}, makeObject<NSTableHeaderView>};

const ClassTable& NSTableHeaderView::classTable() const
{
    return table;
}

NSTableHeaderView* NSTableHeaderView::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}

NSRect NSTableHeaderView::headerRectOfColumn(std::int64_t column) const
{
    NSRect rect = _tableView != nullptr ? _tableView->rectOfColumn(column) : NSZeroRect;
    rect.size.height = rect.size.width > 0.0 ? bounds().size.height : 0.0;
    return rect;
}

void NSTableHeaderView::drawRect(NSRect /*rect*/)
{
    double right = 0.0;
    const std::vector<Ref<NSTableColumn>> columns =
        _tableView != nullptr ? _tableView->tableColumns() : std::vector<Ref<NSTableColumn>>{};
    for (std::size_t place = 0; place < columns.size(); ++place) {
        const auto column = static_cast<std::int64_t>(place);
        const NSRect rect = headerRectOfColumn(column);
        const Ref<NSTableHeaderCell> cell = columns[place]->headerCell();
        cell->drawWithFrame_highlighted_inView(rect, column == _pressedColumn, this);
        right = rect.origin.x + rect.size.width;
    }
    if (right < bounds().size.width) {
        const NSRect rest = NSMakeRect(right, 0.0, bounds().size.width - right, bounds().size.height);
        make<NSTableHeaderCell>()->drawWithFrame_inView(rest, this);
    }
}

void NSTableHeaderView::setPressedColumn(std::int64_t column)
{
    _pressedColumn = column;
    setNeedsDisplay();
}

void NSTableHeaderView::mouseDown(NSEvent* event)
{
    _pressed = true;
    if (_peer != nullptr) {
        _peer->handOn(event->type());
    }
}

void NSTableHeaderView::mouseDragged(NSEvent* event)
{
    if (_pressed && _peer != nullptr) {
        _peer->handOn(event->type());
    }
}

void NSTableHeaderView::mouseUp(NSEvent* event)
{
    const Ref<NSTableHeaderView> self(this);
    setPressedColumn(-1);
    if (std::exchange(_pressed, false) && _peer != nullptr) {
        _peer->handOn(event->type());
    }
}

void NSTableHeaderView::viewDidHide()
{
    _pressed = false;
    setPressedColumn(-1);
}

ViewPeer* NSTableHeaderView::makePeer()
{
    if (_tableView == nullptr) {
        return NSView::makePeer();
    }
    ViewPeer& peer = _tableView->itemView().tableHeader().peer();
    peer.show(this);
    return &peer;
}

NSPoint NSTableHeaderView::originOfPeer() const
{
    return {_tableView != nullptr ? _tableView->originOfPeer().x : 0.0, 0.0};
}
