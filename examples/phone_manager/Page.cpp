#include "Page.h"

#include "Resources.h"

#include <algorithm>
#include <array>
#include <utility>

constexpr std::array kProperties{
    outlet<&Page::tableView>("tableView"),
    outlet<&Page::status>("status"),
};
constexpr std::array kSelectors{
    selector<&Page::setCheckItem>("setCheckItem:"),
    selector<&Page::setHeaderCheckItem>("setHeaderCheckItem:"),
};
constinit const ClassTable Page::table{"Page", &ZuFlippedView::table, kProperties, kSelectors};

void Page::awakeFromNib()
{
    constexpr std::int32_t kCheckLeft = 8;
    dynamic_cast<ZuCheckTableHeaderView&>(*tableView->headerView()).setImageOffset(kCheckLeft);
    auto& check = dynamic_cast<ZuTableCheckImageCell&>(*tableView->tableColumns().front()->dataCell());
    check.loadImage_withSecond_withThird(icon("content-check-no").get(), icon("content-check-yes").get(),
                                         icon("content-check-off").get());
    check.setImageOffset(kCheckLeft);
}

// Rows

void Page::update()
{
    std::vector<std::size_t> rows;
    for (std::size_t record = 0; record < recordCount(); ++record) {
        if (isShown(record)) {
            rows.push_back(record);
        }
    }
    if (rows != _rows) {
        const auto row = static_cast<std::size_t>(tableView->selectedRow());
        const bool staysSelected =
            tableView->selectedRow() >= 0 && row < rows.size() && rows[row] == _rows[row];
        _rows = std::move(rows);
        tableView->reloadData();
        if (!staysSelected) {
            tableView->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSet().get(), false);
        }
    }
    showChecks();
}

std::int64_t Page::numberOfRowsInTableView(NSTableView* /*view*/)
{
    return static_cast<std::int64_t>(_rows.size());
}

void Page::tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell,
                                                        NSTableColumn* column, std::int64_t row)
{
    if (auto* check = dynamic_cast<ZuTableCheckImageCell*>(cell)) {
        check->setIsChecked(isChecked(recordAtRow(row)) ? 1 : 0);
    } else if (cell != nullptr) {
        const auto& columns = view->tableColumns();
        const auto place = std::ranges::find(columns, column, &Ref<NSTableColumn>::get) - columns.begin();
        show(recordAtRow(row), *cell, static_cast<std::size_t>(place));
    }
}

// Checks

void Page::setCheckItem(NSObject* row)
{
    bool& check = isChecked(recordAtRow(dynamic_cast<NSNumber&>(*row).integerValue()));
    check = !check;
    phone->didChange();
}

void Page::setHeaderCheckItem(NSObject* checked)
{
    for (const std::size_t record : _rows) {
        isChecked(record) = dynamic_cast<NSNumber&>(*checked).integerValue() != 0;
    }
    phone->didChange();
}

void Page::showChecks()
{
    const auto checked = static_cast<std::size_t>(
        std::ranges::count_if(_rows, [&](std::size_t record) { return isChecked(record); }));
    status->setStringValue(
        text(localised("%s of %s checked", {std::to_string(checked), std::to_string(_rows.size())})));
    auto& header = dynamic_cast<ZuCheckTableHeaderView&>(*tableView->headerView());
    header.setShowChecked(!_rows.empty());
    header.setIsChecked(!_rows.empty() && checked == _rows.size() ? 1 : 0);
    header.setNeedsDisplay();
    tableView->setNeedsDisplay();
}
