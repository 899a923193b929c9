#include "ContactsPage.h"

#include "Resources.h"

#include <platform/appkit/NSTableColumn.h>
#include <platform/foundation/ClassTable.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuImageCell.h>

#include <algorithm>
#include <cstring>
#include <utility>

constinit const ClassTable ContactsPage::table{
    "ContactsPage", &Page::table, {}, {}, makeObject<ContactsPage>};

void ContactsPage::awakeFromNib()
{
    Page::awakeFromNib();
    for (const Ref<NSTableColumn>& column : tableView->tableColumns()) {
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

std::size_t ContactsPage::placeOf(const NSTableColumn& column) const
{
    const auto& columns = tableView->tableColumns();
    return static_cast<std::size_t>(std::ranges::find(columns, &column, &Ref<NSTableColumn>::get) -
                                    columns.begin());
}

const Ref<NSString>& ContactsPage::groupOf(std::size_t record)
{
    const std::string& group = phone()->contacts()[record].group;
    const auto [known, isNew] = _groups.try_emplace(group);
    if (isNew) {
        known->second = text(shownGroup(group));
    }
    return known->second;
}

std::string ContactsPage::textIn(std::size_t record, std::size_t column)
{
    const Contact& contact = phone()->contacts()[record];
    switch (column) {
    case 0:
        return contact.name;
    case 1:
        return groupOf(record)->UTF8String();
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
        group->setImage(groupIcon(phone()->contacts()[record].group));
        group->setDescription(groupOf(record).get());
    } else if (cell != nullptr) {
        cell->setStringValue(text(textIn(record, placeOf(*column))));
    }
}

// Order

void ContactsPage::update()
{
    if (allRecords().size() != _order.size()) {
        sort();
    }
    setRows(_order);
}

void ContactsPage::tableView_didClickTableColumn(NSTableView* /*view*/, NSTableColumn* column)
{
    const std::size_t before = std::exchange(_sortColumn, placeOf(*column));
    _descending = before == _sortColumn && !_descending;
    sort();
    update();
}

void ContactsPage::sort()
{
    _order = allRecords();
    std::vector<std::string> keys; // in which texts compare as people order them
    for (const std::size_t record : _order) {
        const std::string shown = textIn(record, _sortColumn);
        std::string key(std::strxfrm(nullptr, shown.c_str(), 0), '\0');
        std::strxfrm(key.data(), shown.c_str(), key.size() + 1);
        keys.push_back(std::move(key));
    }
    std::ranges::stable_sort(_order, [&](std::size_t a, std::size_t b) {
        return _descending ? keys[b] < keys[a] : keys[a] < keys[b];
    });
    for (std::size_t number = 0; number < _titles.size(); ++number) {
        const char* mark = number != _sortColumn ? "" : _descending ? " ▼" : " ▲";
        tableView->tableColumns()[number]->setTitle(text(_titles[number] + mark));
    }
}
