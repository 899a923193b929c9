#include "platform/appkit/NSOutlineView.h"

#include "platform/appkit/NSCell.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/foundation/ClassTable.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/qt/OutlineModel.h"
#include "platform/qt/TableItemView.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr NSSize kTriangleSize{8.0, 6.0}; // pointing down

constexpr std::array kProperties{
    property<&NSOutlineView::indentationPerLevel, &NSOutlineView::setIndentationPerLevel>(
        "indentationPerLevel"),
};

/// A triangle in the middle of `rect`, pointing down, or right.
Ref<NSBezierPath> triangleIn(NSRect rect, bool down)
{
    const double x = rect.origin.x + rect.size.width * 0.5;
    const double y = rect.origin.y + rect.size.height * 0.5;
    const double halfBase = kTriangleSize.width * 0.5;
    const double halfHeight = kTriangleSize.height * 0.5;
    Ref<NSBezierPath> path = NSBezierPath::bezierPath();
    if (down) {
        path->moveToPoint({x - halfBase, y - halfHeight});
        path->lineToPoint({x + halfBase, y - halfHeight});
        path->lineToPoint({x, y + halfHeight});
    } else {
        path->moveToPoint({x - halfHeight, y - halfBase});
        path->lineToPoint({x + halfHeight, y});
        path->lineToPoint({x - halfHeight, y + halfBase});
    }
    path->closePath();
    return path;
}

} // namespace

Ref<NSObject> NSOutlineViewDataSource::outlineView_objectValueForTableColumn_byItem(NSOutlineView* /*view*/,
                                                                                    NSTableColumn* /*column*/,
                                                                                    NSObject* /*item*/)
{
    return nullptr;
}

void NSOutlineViewDelegate::outlineView_willDisplayCell_forTableColumn_item(NSOutlineView* /*view*/,
                                                                            NSCell* /*cell*/,
                                                                            NSTableColumn* /*column*/,
                                                                            NSObject* /*item*/)
{
}

void NSOutlineViewDelegate::outlineViewSelectionDidChange(NSOutlineView* /*view*/) {}

constinit const ClassTable NSOutlineView::table{
    "NSOutlineView", &NSTableView::table, kProperties, {}, makeObject<NSOutlineView>};

const ClassTable& NSOutlineView::classTable() const
{
    return table;
}

NSOutlineView::NSOutlineView() = default;

NSOutlineView::~NSOutlineView() = default;

NSOutlineView* NSOutlineView::initWithFrame(NSRect frame)
{
    NSTableView::initWithFrame(frame);
    return this;
}

OutlineModel* NSOutlineView::model() const
{
    return _itemView != nullptr ? static_cast<OutlineModel*>(&_itemView->rows()) : nullptr;
}

double NSOutlineView::indentation() const
{
    constexpr double kFarthest = 1000.0;
    return std::isnan(_indentationPerLevel) ? 0.0
                                            : std::round(std::clamp(_indentationPerLevel, 0.0, kFarthest));
}

void NSOutlineView::setIndentationPerLevel(double points)
{
    _indentationPerLevel = points;
    if (_itemView != nullptr) {
        setUpItemView(*_itemView);
    }
    setNeedsDisplay();
}

Ref<NSObject> NSOutlineView::itemAtRow(std::int64_t row) const
{
    return _itemView != nullptr ? model()->itemAtRow(row) : nullptr;
}

std::int64_t NSOutlineView::rowForItem(const NSObject* item) const
{
    return _itemView != nullptr ? model()->rowForItem(item) : -1;
}

std::int64_t NSOutlineView::levelForRow(std::int64_t row) const
{
    return _itemView != nullptr ? model()->levelOfRow(row) : -1;
}

bool NSOutlineView::isExpandable(const NSObject* item) const
{
    return _itemView != nullptr && model()->isExpandable(rowForItem(item));
}

bool NSOutlineView::isItemExpanded(const NSObject* item) const
{
    return _itemView != nullptr && model()->isExpanded(rowForItem(item));
}

void NSOutlineView::expandItem(const NSObject* item)
{
    if (isExpandable(item)) {
        _itemView->expand(model()->indexOfRow(rowForItem(item)));
    }
}

void NSOutlineView::collapseItem(const NSObject* item)
{
    if (isItemExpanded(item)) {
        _itemView->collapse(model()->indexOfRow(rowForItem(item)));
    }
}

NSRect NSOutlineView::frameOfCellAtColumn_row(std::int64_t column, std::int64_t row) const
{
    NSRect frame = NSTableView::frameOfCellAtColumn_row(column, row);
    if (column == 0 && levelForRow(row) >= 0) {
        const double indent =
            std::min(frame.size.width, indentation() * static_cast<double>(levelForRow(row) + 1));
        frame.origin.x += indent;
        frame.size.width -= indent;
    }
    return frame;
}

void NSOutlineView::setUpCell_forTableColumn_row(NSCell* cell, NSTableColumn* column, std::int64_t row)
{
    const Ref<NSObject> item = itemAtRow(row);
    const Ref<NSObject> answering = dataSource();
    if (auto* source = dynamic_cast<NSOutlineViewDataSource*>(answering.get())) {
        if (const Ref<NSObject> value =
                source->outlineView_objectValueForTableColumn_byItem(this, column, item.get())) {
            cell->setObjectValue(value.get());
        }
    }
    const Ref<NSObject> deciding = delegate();
    if (auto* delegate = dynamic_cast<NSOutlineViewDelegate*>(deciding.get())) {
        delegate->outlineView_willDisplayCell_forTableColumn_item(this, cell, column, item.get());
    }
}

void NSOutlineView::drawRow(std::int64_t row, NSRect rect)
{
    NSGraphicsContext* context = NSGraphicsContext::currentContext();
    if (context != nullptr && model()->isExpandable(row)) {
        const bool selected = isRowSelected(row);
        const double left = indentation() * static_cast<double>(levelForRow(row));
        context->saveGraphicsState();
        (selected ? NSColor::whiteColor() : NSColor::grayColor())->setFill();
        triangleIn(NSMakeRect(left, rectOfRow(row).origin.y, indentation(), rowHeight()),
                   model()->isExpanded(row))
            ->fill();
        context->restoreGraphicsState();
    }
    NSTableView::drawRow(row, rect);
}

void NSOutlineView::tellOfSelection()
{
    const Ref<NSObject> hearing = delegate();
    if (auto* delegate = dynamic_cast<NSOutlineViewDelegate*>(hearing.get())) {
        delegate->outlineViewSelectionDidChange(this);
    }
}

std::unique_ptr<TableModel> NSOutlineView::makeModel()
{
    return std::make_unique<OutlineModel>(*this);
}

void NSOutlineView::setUpItemView(TableItemView& view)
{
    view.setRootIsDecorated(true);
    view.setIndentation(static_cast<int>(indentation()));
}
