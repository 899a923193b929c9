#include "Page.h"

#include "Look.h"
#include "Texts.h"

#include <platform/appkit/NSTableColumn.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSIndexSet.h>
#include <platform/foundation/NSNumber.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuCheckTableHeaderView.h>
#include <window/ZuTableCheckImageCell.h>

#include <array>
#include <optional>
#include <set>
#include <utility>

namespace
{

constexpr std::array kProperties{
    property<&Page::tableView, &Page::setTableView>("tableView"),
    property<&Page::status, &Page::setStatus>("status"),
};
constexpr std::array kSelectors{
    selector<&Page::setCheckItem>("setCheckItem:"),
    selector<&Page::setHeaderCheckItem>("setHeaderCheckItem:"),
};

} // namespace

constinit const ClassTable Page::table{"Page", &ZuFlippedView::table, kProperties, kSelectors};

const ClassTable& Page::classTable() const
{
    return table;
}

Page::Page() = default;

Page::~Page() = default;

void Page::awakeFromNib()
{
    for (const char* image : {"content-check-no", "content-check-yes", "content-check-off"}) {
        _checkImages.push_back(icon(image));
    }
    constexpr std::int32_t kCheckLeft = 8;
    header().setImageOffset(kCheckLeft);
    auto& check = dynamic_cast<ZuTableCheckImageCell&>(*_tableView->tableColumns().front()->dataCell());
    check.loadImage_withSecond_withThird(_checkImages[0].get(), _checkImages[1].get(), _checkImages[2].get());
    check.setImageOffset(kCheckLeft);
}

ZuCheckTableHeaderView& Page::header() const
{
    return dynamic_cast<ZuCheckTableHeaderView&>(*_tableView->headerView());
}

void Page::setPhone(Ref<Phone> phone)
{
    _phone = std::move(phone);
    update();
}

void Page::update()
{
    std::vector<std::size_t> rows(_phone ? recordCount() : 0);
    for (std::size_t record = 0; record < rows.size(); ++record) {
        rows[record] = record;
    }
    setRows(std::move(rows));
}

void Page::setRows(std::vector<std::size_t> rows)
{
    std::set<std::size_t> selected;
    for (const NSRange& range : _tableView->selectedRowIndexes()->ranges()) {
        for (std::size_t row = range.location; row < NSMaxRange(range) && row < _rows.size(); ++row) {
            selected.insert(_rows[row]);
        }
    }
    const std::int64_t last = _tableView->selectedRow();
    const std::optional<std::size_t> current = last >= 0 && last < numberOfRowsInTableView(nullptr)
                                                   ? std::optional(recordAtRow(last))
                                                   : std::nullopt;
    _rows = std::move(rows);
    std::vector<NSRange> ranges;
    std::optional<std::size_t> currentRow;
    for (std::size_t row = 0; row < _rows.size() && !selected.empty(); ++row) {
        if (selected.contains(_rows[row])) {
            ranges.push_back({row, 1});
        }
        if (current == _rows[row]) {
            currentRow = row;
        }
    }
    _tableView->reloadData();
    _tableView->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndexesInRanges(ranges).get(),
                                                      false);
    if (currentRow) { // from where keys go on
        _tableView->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(*currentRow).get(),
                                                          true);
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
    _status->setStringValue(text(localised(statusKey(), {std::to_string(checked), std::to_string(all)})));
    header().setShowChecked(all > 0);
    header().setIsChecked(all > 0 && checked == all ? 1 : 0);
    header().setNeedsDisplay();
    _tableView->setNeedsDisplay();
}
