#include "ContactsPage.h"

#include "Look.h"
#include "Texts.h"

#include <platform/appkit/NSTableColumn.h>
#include <platform/foundation/ClassTable.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuCenterTextFieldCell.h>
#include <window/ZuImageCell.h>
#include <window/ZuTableCheckImageCell.h>

#include <algorithm>
#include <cstring>
#include <numeric>

namespace
{

/// The place of a column in its table.
std::size_t placeOf(const NSTableColumn* column)
{
    const auto& columns = column->tableView()->tableColumns();
    return static_cast<std::size_t>(std::ranges::find(columns, column, &Ref<NSTableColumn>::get) -
                                    columns.begin());
}

} // namespace

constinit const ClassTable ContactsPage::table{
    "ContactsPage", &Page::table, {}, {}, makeObject<ContactsPage>};

const ClassTable& ContactsPage::classTable() const
{
    return table;
}

ContactsPage::ContactsPage() = default;

ContactsPage::~ContactsPage() = default;

void ContactsPage::awakeFromNib()
{
    Page::awakeFromNib();
    for (const Ref<NSTableColumn>& column : tableView()->tableColumns()) {
        _titles.push_back(column->title()->UTF8String());
        if (auto* group = dynamic_cast<ZuImageCell*>(column->dataCell())) {
            group->setImageAlignment(NSImageAlignment::Left);
        }
    }
}

bool* ContactsPage::checkOf(std::size_t record) const
{
    Contact& contact = phone()->contacts()[record];
    return contact.isFixed ? nullptr : &contact.isChecked;
}

std::string ContactsPage::textIn(std::size_t record, std::size_t column) const
{
    const Contact& contact = phone()->contacts()[record];
    switch (column) {
    case 0:
        return contact.name;
    case 1:
        return localised(contact.group);
    case 2:
        return contact.number;
    default:
        return contact.email;
    }
}

void ContactsPage::tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell,
                                                                NSTableColumn* column, std::int64_t row)
{
    Page::tableView_willDisplayCell_forTableColumn_row(view, cell, column, row);
    const std::size_t record = recordAtRow(row);
    if (auto* group = dynamic_cast<ZuImageCell*>(cell)) {
        const std::string& name = phone()->contacts()[record].group;
        const auto [shown, isNew] = _groups.try_emplace(name);
        if (isNew) {
            shown->second = {name.empty() ? nullptr : icon(name), text(localised(name))};
        }
        group->setImage(shown->second.picture);
        group->setDescription(shown->second.name.get());
    } else if (cell != nullptr) {
        cell->setStringValue(text(textIn(record, placeOf(column))));
    }
}

// Order

void ContactsPage::tableView_didClickTableColumn(NSTableView* /*view*/, NSTableColumn* column)
{
    const std::size_t clicked = placeOf(column);
    _descending = clicked == _sortColumn && !_descending;
    _sortColumn = clicked;
    update();
}

void ContactsPage::update()
{
    std::vector<std::size_t> rows(phone() != nullptr ? recordCount() : 0);
    std::iota(rows.begin(), rows.end(), 0);
    std::vector<std::string> keys; // in which texts compare as people order them
    for (const std::size_t record : rows) {
        const std::string shown = textIn(record, _sortColumn);
        std::string key(std::strxfrm(nullptr, shown.c_str(), 0), '\0');
        std::strxfrm(key.data(), shown.c_str(), key.size() + 1);
        keys.push_back(std::move(key));
    }
    std::ranges::stable_sort(rows, [&](std::size_t a, std::size_t b) {
        return _descending ? keys[b] < keys[a] : keys[a] < keys[b];
    });
    setRows(std::move(rows));
    for (std::size_t number = 0; number < _titles.size(); ++number) {
        const char* mark = number != _sortColumn ? "" : _descending ? " ▼" : " ▲";
        tableView()->tableColumns()[number]->setTitle(text(_titles[number] + mark));
    }
    tableView()->setNeedsDisplay();
}
