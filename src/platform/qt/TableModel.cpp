#include "platform/qt/TableModel.h"

#include "platform/appkit/NSCell.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSString.h"
#include "platform/qt/Conversions.h"

#include <algorithm>
#include <string>

TableModel::Asking::Asking(const TableModel& model) : _view(model._view), _model(model)
{
    ++_model._asking;
}

TableModel::Asking::~Asking()
{
    --_model._asking;
}

std::int64_t TableModel::possible(std::int64_t count) const
{
    const auto most = std::min(kMostRows, static_cast<std::int64_t>(kHighest / _view->rowHeight()));
    if (count < 0 || count > most) {
        diagnose("reloadData", "there cannot be " + std::to_string(count) + " rows");
    }
    return std::clamp<std::int64_t>(count, 0, most);
}

void TableModel::load(std::vector<NSRange>& selected, std::int64_t& current)
{
    const Asking asking(*this);
    const Ref<NSObject> answering = _view->dataSource();
    auto* source = dynamic_cast<NSTableViewDataSource*>(answering.get());
    _rows = static_cast<int>(possible(source != nullptr ? source->numberOfRowsInTableView(_view) : 0));
    for (NSRange& range : selected) {
        range = NSIntersectionRange(range, {0, static_cast<std::size_t>(_rows)});
    }
    current = current < _rows ? current : -1;
}

std::int64_t TableModel::rowOf(const QModelIndex& index) const
{
    return index.row();
}

QModelIndex TableModel::indexOfRow(std::int64_t row, int column) const
{
    return row >= 0 && row < _rows ? index(static_cast<int>(row), column) : QModelIndex();
}

QItemSelection TableModel::selectionOf(NSRange rows) const
{
    const NSRange there = NSIntersectionRange(rows, {0, static_cast<std::size_t>(_rows)});
    if (there.length == 0 || columnCount() == 0) {
        return {};
    }
    return {index(static_cast<int>(there.location), 0),
            index(static_cast<int>(NSMaxRange(there)) - 1, columnCount() - 1)};
}

std::vector<NSRange> TableModel::rowsOf(const QItemSelection& selection) const
{
    std::vector<NSRange> rows;
    for (const QItemSelectionRange& range : selection) {
        rows.push_back({static_cast<std::size_t>(range.top()), static_cast<std::size_t>(range.height())});
    }
    return rows;
}

void TableModel::rowDidChange(std::int64_t row)
{
    const QModelIndex first = indexOfRow(row);
    if (first.isValid()) {
        Q_EMIT dataChanged(first, indexOfRow(row, columnCount() - 1));
    }
}

QModelIndex TableModel::index(int row, int column, const QModelIndex& parent) const
{
    const bool exists = !parent.isValid() && row >= 0 && row < _rows && column >= 0 && column < columnCount();
    return exists ? createIndex(row, column) : QModelIndex();
}

QModelIndex TableModel::parent(const QModelIndex& /*index*/) const
{
    return {};
}

int TableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : _rows;
}

int TableModel::columnCount(const QModelIndex& /*parent*/) const
{
    return _view != nullptr ? static_cast<int>(_view->tableColumns().size()) : 0;
}

QVariant TableModel::data(const QModelIndex& index, int role) const
{
    const std::int64_t row = _view != nullptr ? rowOf(index) : -1;
    if (row < 0 || (role != Qt::DisplayRole && role != Qt::CheckStateRole)) {
        return {};
    }
    const Asking asking(*this);
    const Ref<NSCell> cell = _view->preparedCellAtColumn_row(index.column(), row);
    if (role == Qt::CheckStateRole) {
        const std::optional<bool> checked = cell->accessibilityChecked();
        return checked ? QVariant(*checked ? Qt::Checked : Qt::Unchecked) : QVariant();
    }
    const Ref<NSString> label = cell->accessibilityLabel();
    return label ? QVariant(toQt(*label)) : QVariant();
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columnCount()) {
        return {};
    }
    return toQt(*_view->tableColumns()[static_cast<std::size_t>(section)]->title());
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const
{
    if (_view == nullptr || !index.isValid()) {
        return Qt::NoItemFlags;
    }
    const NSCell* cell = _view->tableColumns()[static_cast<std::size_t>(index.column())]->dataCell();
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren |
           (cell->accessibilityChecked() ? Qt::ItemIsUserCheckable : Qt::NoItemFlags);
}
