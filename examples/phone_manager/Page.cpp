#include "Page.h"

#include "Resources.h"

#include <platform/appkit/NSTableColumn.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSIndexSet.h>
#include <platform/foundation/NSNumber.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuTableCheckImageCell.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace
{

constexpr std::int32_t kCheckLeft = 8;

constexpr std::array kProperties{
    outlet<&Page::tableView>("tableView"),
    outlet<&Page::status>("status"),
};
constexpr std::array kSelectors{
    selector<&Page::setCheckItem>("setCheckItem:"),
    selector<&Page::setHeaderCheckItem>("setHeaderCheckItem:"),
};

} // namespace

constinit const ClassTable Page::table{"Page", &ZuFlippedView::table, kProperties, kSelectors};

void Page::awakeFromNib()
{
    header().setImageOffset(kCheckLeft);
    auto& check = dynamic_cast<ZuTableCheckImageCell&>(*tableView->tableColumns().front()->dataCell());
    check.loadImage_withSecond_withThird(icon("content-check-no").get(), icon("content-check-yes").get(),
                                         icon("content-check-off").get());
    check.setImageOffset(kCheckLeft);
}

ZuCheckTableHeaderView& Page::header() const
{
    return dynamic_cast<ZuCheckTableHeaderView&>(*tableView->headerView());
}

// Rows

void Page::setPhone(Ref<Phone> phone)
{
    _phone = std::move(phone);
    update();
}

void Page::update()
{
    setRows(allRecords());
}

std::vector<std::size_t> Page::allRecords() const
{
    std::vector<std::size_t> records(_phone ? recordCount() : 0);
    std::iota(records.begin(), records.end(), 0);
    return records;
}

void Page::setRows(std::vector<std::size_t> rows)
{
    if (rows != _rows) {
        const std::int64_t before = tableView->selectedRow();
        const auto selected = before < 0 ? rows.end() : std::ranges::find(rows, recordAtRow(before));
        const auto row = static_cast<std::size_t>(selected - rows.begin());
        const Ref<NSIndexSet> selection = selected == rows.end() ? NSIndexSet::indexSetWithIndexesInRanges({})
                                                                 : NSIndexSet::indexSetWithIndex(row);
        _rows = std::move(rows);
        tableView->reloadData();
        tableView->selectRowIndexes_byExtendingSelection(selection.get(), false);
    }
    showChecks();
}

std::int64_t Page::numberOfRowsInTableView(NSTableView* /*view*/)
{
    return static_cast<std::int64_t>(_rows.size());
}

void Page::tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/, NSCell* cell,
                                                        NSTableColumn* /*column*/, std::int64_t row)
{
    if (auto* check = dynamic_cast<ZuTableCheckImageCell*>(cell)) {
        const bool* isChecked = checkOf(recordAtRow(row));
        check->setIsChecked(isChecked != nullptr && *isChecked ? 1 : 0);
        check->setEnabled(isChecked != nullptr);
    }
}

// Checks

void Page::setCheckItem(NSObject* row)
{
    if (bool* isChecked = checkOf(recordAtRow(dynamic_cast<NSNumber&>(*row).integerValue()))) {
        *isChecked = !*isChecked;
        _phone->didChange();
    }
}

void Page::setHeaderCheckItem(NSObject* checked)
{
    for (const std::size_t record : _rows) {
        if (bool* isChecked = checkOf(record)) {
            *isChecked = dynamic_cast<NSNumber&>(*checked).integerValue() != 0;
        }
    }
    if (_phone) {
        _phone->didChange();
    }
}

void Page::showChecks()
{
    std::size_t checked = 0;
    std::size_t all = 0;
    for (const std::size_t record : _rows) {
        if (const bool* isChecked = checkOf(record)) {
            checked += *isChecked ? 1 : 0;
            ++all;
        }
    }
    status->setStringValue(text(localised(statusKey(), {std::to_string(checked), std::to_string(all)})));
    header().setShowChecked(all > 0);
    header().setIsChecked(all > 0 && checked == all ? 1 : 0);
    header().setNeedsDisplay();
    tableView->setNeedsDisplay();
}
