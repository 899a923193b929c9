#include "platform/appkit/NSTableView.h"

#include "platform/appkit/NSCell.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/appkit/NSTableHeaderView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSIndexSet.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/TableItemView.h"
#include "platform/qt/TableModel.h"
#include "platform/qt/ViewPeer.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr double kHeaderHeight = 23.0;

constexpr std::array kProperties{
    property<&NSTableView::dataSource, &NSTableView::setDataSource>("dataSource"),
    property<&NSTableView::delegate, &NSTableView::setDelegate>("delegate"),
    property<&NSTableView::rowHeight, &NSTableView::setRowHeight>("rowHeight"),
    property<&NSTableView::font, &NSTableView::setFont>("font"),
    property<&NSTableView::allowsMultipleSelection, &NSTableView::setAllowsMultipleSelection>(
        "allowsMultipleSelection"),
};

} // namespace

// What an object need not answer.

Ref<NSObject> NSTableViewDataSource::tableView_objectValueForTableColumn_row(NSTableView* /*view*/,
                                                                             NSTableColumn* /*column*/,
                                                                             std::int64_t /*row*/)
{
    return nullptr;
}

void NSTableViewDelegate::tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/,
                                                                       NSCell* /*cell*/,
                                                                       NSTableColumn* /*column*/,
                                                                       std::int64_t /*row*/)
{
}

void NSTableViewDelegate::tableViewSelectionDidChange(NSTableView* /*view*/) {}

void NSTableViewDelegate::tableView_didClickTableColumn(NSTableView* /*view*/, NSTableColumn* /*column*/) {}

constinit const ClassTable NSTableView::table{
    "NSTableView", &NSControl::table, kProperties, {}, makeObject<NSTableView>};

const ClassTable& NSTableView::classTable() const
{
    return table;
}

NSTableView::NSTableView()
{
    _headerView = make<NSTableHeaderView>()->initWithFrame(NSMakeRect(0.0, 0.0, 0.0, kHeaderHeight));
    _headerView->_tableView = this;
}

NSTableView::~NSTableView()
{
    if (_itemView != nullptr) {
        std::exchange(_itemView, nullptr)->abandon();
    }
    if (_headerView) {
        _headerView->_tableView = nullptr;
        _headerView->removeFromSuperview();
    }
    for (const Ref<NSTableColumn>& column : _tableColumns) {
        column->_tableView = nullptr;
    }
}

NSTableView* NSTableView::initWithFrame(NSRect frame)
{
    NSControl::initWithFrame(frame);
    return this;
}

// Columns

void NSTableView::addTableColumn(Ref<NSTableColumn> column)
{
    if (!column || column->_tableView != nullptr) {
        diagnose("addTableColumn", "a column is in one table at most, and null is no column");
        return;
    }
    column->_tableView = this;
    const auto place = static_cast<int>(_tableColumns.size());
    if (_itemView == nullptr) {
        _tableColumns.push_back(std::move(column));
        return;
    }
    _itemView->rows().beginInsertColumns({}, place, place);
    _tableColumns.push_back(std::move(column));
    _itemView->rows().endInsertColumns();
    columnDidResize();
}

void NSTableView::sizeLastColumnToFit()
{
    if (!_tableColumns.empty()) {
        const Ref<NSTableColumn> last = _tableColumns.back();
        const double left = rectOfColumn(static_cast<std::int64_t>(_tableColumns.size()) - 1).origin.x;
        last->setWidth(visibleRect().size.width - left);
    }
}

void NSTableView::columnDidResize()
{
    if (_itemView != nullptr) {
        _itemView->takeSizes();
    }
    tile();
    setNeedsDisplay();
    if (_headerView) {
        _headerView->setNeedsDisplay();
    }
}

void NSTableView::setHeaderView(Ref<NSTableHeaderView> view)
{
    if (_headerView == view) {
        return;
    }
    if (view) {
        if (view->_tableView != nullptr) {
            view->_tableView->setHeaderView(nullptr);
        }
        view->removeFromSuperview();
        if (view->_peer != nullptr) { // of a view like any other
            view->detachPeersOfSubviews();
            std::exchange(view->_peer, nullptr)->abandon();
        }
    }
    if (_headerView) {
        _headerView->_tableView = nullptr;
        _headerView->removeFromSuperview();
        if (_itemView != nullptr) {
            _itemView->tableHeader().peer().show(nullptr);
        }
    }
    _headerView = std::move(view);
    if (_headerView) {
        _headerView->_tableView = this;
    }
    if (_itemView != nullptr) {
        _itemView->takeSizes();
    }
    if (isInScrollView() && _headerView) {
        superview()->addSubview(_headerView);
    }
    tile();
}

void NSTableView::didClickColumn(std::int64_t column)
{
    const Ref<NSTableView> self(this);
    const Ref<NSTableColumn> clicked = _tableColumns[static_cast<std::size_t>(column)];
    const Ref<NSObject> hearing = delegate();
    if (auto* delegate = dynamic_cast<NSTableViewDelegate*>(hearing.get())) {
        delegate->tableView_didClickTableColumn(this, clicked.get());
    }
}

// Rows

void NSTableView::setDataSource(NSObject* dataSource)
{
    _dataSource = dataSource;
    reloadData();
}

void NSTableView::setDelegate(NSObject* delegate)
{
    _delegate = delegate;
    setNeedsDisplay();
}

void NSTableView::reloadData()
{
    const Ref<NSTableView> self(this);
    if (_itemView != nullptr) {
        _itemView->reload();
    } else {
        itemView();
    }
    rowsDidMove();
}

void NSTableView::rowsDidMove()
{
    _selection = nullptr;
    tile();
    setNeedsDisplay();
}

std::int64_t NSTableView::numberOfRows() const
{
    return _itemView != nullptr ? _itemView->rows().rows() : 0;
}

void NSTableView::setRowHeight(double height)
{
    constexpr double kHighest = 10000.0;
    const double rows = std::max(1.0, static_cast<double>(numberOfRows()));
    const double highest = std::min(kHighest, std::floor(TableModel::kHighest / rows));
    _rowHeight = std::isnan(height) ? 1.0 : std::round(std::clamp(height, 1.0, highest));
    columnDidResize();
}

Ref<NSFont> NSTableView::font() const
{
    return _font;
}

void NSTableView::setFont(Ref<NSFont> font)
{
    _font = std::move(font);
    setNeedsDisplay();
}

// Places

std::int64_t NSTableView::rowAtPoint(NSPoint point) const
{
    const double row = std::floor(point.y / _rowHeight);
    return row >= 0.0 && row < static_cast<double>(numberOfRows()) ? static_cast<std::int64_t>(row) : -1;
}

std::int64_t NSTableView::columnAtPoint(NSPoint point) const
{
    double left = 0.0;
    for (std::size_t column = 0; column < _tableColumns.size(); ++column) {
        const double right = left + _tableColumns[column]->width();
        if (point.x >= left && point.x < right) {
            return static_cast<std::int64_t>(column);
        }
        left = right;
    }
    return -1;
}

NSRect NSTableView::rectOfRow(std::int64_t row) const
{
    return row >= 0 && row < numberOfRows()
               ? NSMakeRect(0.0, static_cast<double>(row) * _rowHeight, bounds().size.width, _rowHeight)
               : NSZeroRect;
}

NSRect NSTableView::rectOfColumn(std::int64_t column) const
{
    if (column < 0 || column >= static_cast<std::int64_t>(_tableColumns.size())) {
        return NSZeroRect;
    }
    const auto place = static_cast<std::size_t>(column);
    double left = 0.0;
    for (std::size_t before = 0; before < place; ++before) {
        left += _tableColumns[before]->width();
    }
    return NSMakeRect(left, 0.0, _tableColumns[place]->width(), bounds().size.height);
}

NSRect NSTableView::frameOfCellAtColumn_row(std::int64_t column, std::int64_t row) const
{
    const NSRect columnRect = rectOfColumn(column);
    const NSRect rowRect = rectOfRow(row);
    return rowRect == NSZeroRect
               ? NSZeroRect
               : NSMakeRect(columnRect.origin.x, rowRect.origin.y, columnRect.size.width, _rowHeight);
}

NSRect NSTableView::visibleRect() const
{
    if (_itemView == nullptr || _peer == nullptr || !isInScrollView()) {
        return bounds();
    }
    return {originOfPeer(), fromQt(QRectF(_itemView->viewport()->rect())).size};
}

void NSTableView::scrollRowToVisible(std::int64_t row)
{
    if (_itemView != nullptr && row >= 0 && row < numberOfRows()) {
        const auto top = static_cast<int>(static_cast<double>(row) * _rowHeight);
        _itemView->reveal(top, top + static_cast<int>(_rowHeight));
    }
}

// Selection

void NSTableView::setAllowsMultipleSelection(bool allows)
{
    _allowsMultipleSelection = allows;
    if (_itemView != nullptr) {
        _itemView->takeSizes();
    }
}

Ref<NSIndexSet> NSTableView::selectedRowIndexes() const
{
    if (!_selection) {
        _selection = NSIndexSet::indexSetWithIndexesInRanges(_itemView != nullptr ? _itemView->selectedRows()
                                                                                  : std::vector<NSRange>{});
    }
    return _selection;
}

std::int64_t NSTableView::selectedRow() const
{
    const Ref<NSIndexSet> selected = selectedRowIndexes();
    if (selected->count() == 0) {
        return -1;
    }
    const std::int64_t current = _itemView != nullptr ? _itemView->currentRow() : -1;
    return current >= 0 && selected->containsIndex(static_cast<std::size_t>(current))
               ? current
               : static_cast<std::int64_t>(selected->firstIndex());
}

bool NSTableView::isRowSelected(std::int64_t row) const
{
    return row >= 0 && selectedRowIndexes()->containsIndex(static_cast<std::size_t>(row));
}

void NSTableView::selectRowIndexes_byExtendingSelection(const NSIndexSet* rows, bool extend)
{
    itemView().select(rows != nullptr ? rows->ranges() : std::vector<NSRange>{}, extend);
}

void NSTableView::selectionDidChange()
{
    _selection = nullptr;
    setNeedsDisplay();
    tellOfSelection();
}

void NSTableView::tellOfSelection()
{
    const Ref<NSObject> hearing = delegate();
    if (auto* delegate = dynamic_cast<NSTableViewDelegate*>(hearing.get())) {
        delegate->tableViewSelectionDidChange(this);
    }
}

bool NSTableView::hasKeyboard() const
{
    return _itemView != nullptr && _itemView->hasFocus() && _itemView->isActiveWindow();
}

// Drawing

Ref<NSCell> NSTableView::preparedCellAtColumn_row(std::int64_t column, std::int64_t row)
{
    if (column < 0 || column >= static_cast<std::int64_t>(_tableColumns.size()) || row < 0 ||
        row >= numberOfRows()) {
        diagnose("preparedCellAtColumn", "there is no such column, or no such row");
        return nullptr;
    }
    const Ref<NSTableColumn> shown = _tableColumns[static_cast<std::size_t>(column)];
    Ref<NSCell> cell = shown->dataCell();
    cell->setHighlighted(isRowSelected(row));
    setUpCell_forTableColumn_row(cell.get(), shown.get(), row);
    return cell;
}

void NSTableView::setUpCell_forTableColumn_row(NSCell* cell, NSTableColumn* column, std::int64_t row)
{
    const Ref<NSObject> answering = dataSource();
    if (auto* source = dynamic_cast<NSTableViewDataSource*>(answering.get())) {
        if (const Ref<NSObject> value = source->tableView_objectValueForTableColumn_row(this, column, row)) {
            cell->setObjectValue(value.get());
        }
    }
    const Ref<NSObject> deciding = delegate();
    if (auto* delegate = dynamic_cast<NSTableViewDelegate*>(deciding.get())) {
        delegate->tableView_willDisplayCell_forTableColumn_row(this, cell, column, row);
    }
}

void NSTableView::drawRect(NSRect rect)
{
    NSColor::whiteColor()->setFill();
    NSBezierPath::fillRect(rect);
    const std::int64_t rows = numberOfRows();
    const double bottom = std::min(rect.origin.y + rect.size.height, static_cast<double>(rows) * _rowHeight);
    const auto first = static_cast<std::int64_t>(std::max(0.0, std::floor(rect.origin.y / _rowHeight)));
    const auto behind = static_cast<std::int64_t>(std::ceil(bottom / _rowHeight));
    const std::int64_t current = hasKeyboard() ? _itemView->currentRow() : -1;
    for (std::int64_t row = first; row < std::min(behind, numberOfRows()); ++row) { // they may become fewer
        const bool isSelected = isRowSelected(row);
        if (isSelected) {
            (hasKeyboard() ? NSColor::alternateSelectedControlColor()
                           : NSColor::secondarySelectedControlColor())
                ->setFill();
            NSBezierPath::fillRect(rectOfRow(row));
        }
        drawRow(row, rect);
        if (row == current && !isSelected) {
            NSColor::alternateSelectedControlColor()->setStroke();
            NSBezierPath::strokeRect(NSInsetRect(rectOfRow(row), 0.5, 0.5));
        }
    }
}

void NSTableView::drawRow(std::int64_t row, NSRect rect)
{
    NSGraphicsContext* context = NSGraphicsContext::currentContext();
    if (context == nullptr) {
        return;
    }
    const std::vector<Ref<NSTableColumn>> columns = _tableColumns; // the delegate may add some
    for (std::size_t place = 0; place < columns.size(); ++place) {
        const auto column = static_cast<std::int64_t>(place);
        // One that is left of the rectangle may draw beyond its own right edge.
        if (row >= numberOfRows() || rectOfColumn(column).origin.x >= rect.origin.x + rect.size.width) {
            break;
        }
        const Ref<NSCell> cell = preparedCellAtColumn_row(column, row);
        context->saveGraphicsState();
        cell->drawWithFrame_inView(frameOfCellAtColumn_row(column, row), this);
        context->restoreGraphicsState();
    }
}

void NSTableView::redrawRow(std::int64_t row)
{
    if (_itemView != nullptr) {
        _itemView->rows().rowDidChange(row);
    }
    setNeedsDisplayInRect(rectOfRow(row));
}

// Events

bool NSTableView::cellTakesPress(NSEvent* event, NSPoint point)
{
    const NSRect frame = frameOfCellAtColumn_row(_clickedColumn, _clickedRow);
    if (!NSPointInRect(point, frame)) {
        return false;
    }
    const Ref<NSCell> cell = preparedCellAtColumn_row(_clickedColumn, _clickedRow);
    const NSCellHitResult hit = cell->hitTestForEvent_inRect_ofView(event, frame, this);
    return hit == NSCellHitContentArea ||
           (hit == NSCellHitTrackableArea &&
            cell->trackMouse_inRect_ofView_untilMouseUp(event, frame, this, false));
}

void NSTableView::mouseDown(NSEvent* event)
{
    if (!isEnabled()) {
        return;
    }
    const Ref<NSTableView> self(this);
    const NSPoint point = convertPoint_fromView(event->locationInWindow(), nullptr);
    const std::int64_t row = rowAtPoint(point);
    _clickedRow = row;
    _clickedColumn = columnAtPoint(point);
    const bool taken = cellTakesPress(event, point);
    redrawRow(row);
    if (!taken && _peer != nullptr) {
        _pressed = true;
        _peer->handOn(NSEventType::LeftMouseDown);
    }
}

void NSTableView::mouseDragged(NSEvent* event)
{
    if (_pressed && _peer != nullptr) {
        _peer->handOn(event->type());
    }
}

void NSTableView::mouseUp(NSEvent* event)
{
    const Ref<NSTableView> self(this);
    if (std::exchange(_pressed, false) && _peer != nullptr) {
        _peer->handOn(event->type());
    }
    _clickedRow = -1;
    _clickedColumn = -1;
}

void NSTableView::viewDidHide()
{
    _pressed = false;
    _clickedRow = -1;
    _clickedColumn = -1;
}

bool NSTableView::keyDown(NSEvent* event)
{
    const Ref<NSTableView> self(this);
    const Ref<NSString> characters = event->characters();
    const std::int64_t row = _itemView != nullptr ? _itemView->currentRow() : -1;
    if (row >= 0 && characters && characters->characters() == u" ") {
        for (std::size_t column = 0; column < _tableColumns.size(); ++column) {
            const Ref<NSCell> cell = preparedCellAtColumn_row(static_cast<std::int64_t>(column), row);
            if (!cell->accessibilityChecked()) {
                continue;
            }
            if (!event->isARepeat()) {
                cell->performCheckOfRow_inView(row, this);
                redrawRow(row);
            }
            return true;
        }
    }
    return (_itemView != nullptr && _itemView->handOnKey()) || NSControl::keyDown(event);
}

// The toolkit's view

std::unique_ptr<TableModel> NSTableView::makeModel()
{
    return std::make_unique<TableModel>(*this);
}

TableItemView& NSTableView::itemView()
{
    if (_itemView == nullptr) {
        _itemView = new TableItemView(*this, makeModel());
        setUpItemView(*_itemView);
        _itemView->reload();
    }
    return *_itemView;
}

ViewPeer* NSTableView::makePeer()
{
    itemView().peer().show(this);
    if (_headerView) {
        _headerView->widget();
    }
    return &itemView().peer();
}

NSPoint NSTableView::originOfPeer() const
{
    return _itemView != nullptr ? fromQt(QPointF(_itemView->offset())) : NSPoint{};
}

bool NSTableView::isInScrollView() const
{
    return dynamic_cast<NSScrollView*>(superview()) != nullptr;
}

void NSTableView::placePeer()
{
    if (_peer != nullptr && superview() != nullptr) {
        itemView().setGeometry(isInScrollView() ? superview()->widget()->rect() : QRect());
    }
}

NSRect NSTableView::takeUpdateRect(NSRect exposed)
{
    NSControl::takeUpdateRect(exposed);
    return exposed;
}

void NSTableView::tile()
{
    if (_peer == nullptr || !isInScrollView()) {
        return;
    }
    const NSRect visible = visibleRect();
    double width = visible.size.width;
    if (!_tableColumns.empty()) {
        const NSRect last = rectOfColumn(static_cast<std::int64_t>(_tableColumns.size()) - 1);
        width = std::max(width, last.origin.x + last.size.width);
    }
    const double height = std::max(visible.size.height, static_cast<double>(numberOfRows()) * _rowHeight);
    const double headerHeight = _headerView ? std::round(_headerView->bounds().size.height) : 0.0;
    setFrame(NSMakeRect(-visible.origin.x, headerHeight - visible.origin.y, width, height));
    if (_headerView) {
        _headerView->setFrame(NSMakeRect(-visible.origin.x, 0.0, width, headerHeight));
    }
    placePeersOfSubviews();
}
