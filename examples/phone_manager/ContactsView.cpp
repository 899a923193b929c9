#include "ContactsView.h"

#include "Look.h"
#include "Texts.h"

#include <platform/appkit/NSTableColumn.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSIndexSet.h>
#include <platform/foundation/NSNumber.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuCenterTextFieldCell.h>
#include <window/ZuCheckTableHeaderView.h>
#include <window/ZuImageCell.h>
#include <window/ZuTableCheckImageCell.h>
#include <window/ZuTableHeaderCell.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <utility>

namespace
{

constexpr double kRowHeight = 24.0;
constexpr double kHeaderHeight = 26.0;
constexpr std::int64_t kGroupNameLeft = 22; // beside the picture

struct Column {
    const char* title;
    double width;      // the last one takes what is left
    double titleShift; // to where the column's content begins
};
constexpr std::array kColumns{Column{"Name", 166.0, 20.0}, Column{"Group", 100.0, -5.0},
                              Column{"Telephone", 100.0, -4.0}};

constexpr std::array kSelectors{
    selector<&ContactsView::setCheckItem>("setCheckItem:"),
    selector<&ContactsView::setHeaderCheckItem>("setHeaderCheckItem:"),
};

/// A header whose title is moved to the right.
class HeaderCell final : public ZuTableHeaderCell
{
public:
    explicit HeaderCell(double shift) : _shift(shift) {}

    Ref<NSCell> copyWithZone(std::nullptr_t /*zone*/) const override
    {
        return Ref<NSCell>::adopt(new HeaderCell(*this));
    }

    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override
    {
        frame.origin.x += _shift;
        frame.size.width -= _shift;
        ZuTableHeaderCell::drawInteriorWithFrame_inView(frame, view);
    }

private:
    double _shift;
};

std::string textIn(const Contact& contact, std::size_t column)
{
    const bool isName = column == 0;
    const bool isGroup = column == 1;
    return isName ? contact.name : isGroup ? localised(contact.group) : contact.number;
}

std::int64_t numberIn(NSObject* number)
{
    return dynamic_cast<NSNumber&>(*number).integerValue();
}

} // namespace

constinit const ClassTable ContactsView::table{"ContactsView", &NSView::table, {}, kSelectors};

const ClassTable& ContactsView::classTable() const
{
    return table;
}

ContactsView::ContactsView() = default;

ContactsView::~ContactsView() = default;

ContactsView* ContactsView::initWithFrame(NSRect frame)
{
    TablePage::initWithFrame(frame);
    _tableView = make<NSTableView>();
    _tableView->setRowHeight(kRowHeight);
    _tableView->setFont(NSFont::fontWithName_size("Arial", 12.0)); // that of the groups' names
    _tableView->setAllowsMultipleSelection(true);

    for (const char* image : {"content-check-no", "content-check-yes", "content-check-off"}) {
        _checkImages.push_back(icon(image));
    }
    const Ref<ZuTableCheckImageCell> name = make<ZuTableCheckImageCell>();
    name->awakeFromNib();
    name->loadImage_withSecond_withThird(_checkImages[0].get(), _checkImages[1].get(), _checkImages[2].get());
    const Ref<ZuImageCell> group = make<ZuImageCell>();
    group->setImageAlignment(NSImageAlignment::Left);
    group->setOffset(kGroupNameLeft);
    const std::array<Ref<NSCell>, kColumns.size()> cells{name, group, make<ZuCenterTextFieldCell>()};
    for (std::size_t place = 0; place < kColumns.size(); ++place) {
        const Ref<NSTableColumn> column = make<NSTableColumn>();
        column->setWidth(kColumns[place].width);
        column->setHeaderCell(make<HeaderCell>(kColumns[place].titleShift));
        column->setDataCell(cells[place]);
        _tableView->addTableColumn(column);
    }

    _headerView = make<ZuCheckTableHeaderView>()->initWithFrame(NSMakeRect(0.0, 0.0, 0.0, kHeaderHeight));
    _headerView->awakeFromNib();
    _headerView->setAccessibilityLabel(text(localised("All contacts")));
    _tableView->setHeaderView(_headerView);
    _tableView->setDelegate(this);
    _tableView->setDataSource(this);
    setTable(_tableView);
    setContacts({});
    return this;
}

void ContactsView::setContacts(std::vector<Contact> contacts)
{
    _contacts = std::move(contacts);
    _rows.clear();
    for (Contact& contact : _contacts) {
        _rows.push_back(&contact);
        _groups.try_emplace(contact.group, Group{icon(contact.group), text(localised(contact.group))});
    }
    _tableView->selectRowIndexes_byExtendingSelection(nullptr, false);
    sort();
    showChecks();
}

// What the table shows

std::int64_t ContactsView::numberOfRowsInTableView(NSTableView* /*view*/)
{
    return static_cast<std::int64_t>(_rows.size());
}

Contact& ContactsView::contactAtRow(std::int64_t row)
{
    return *_rows[static_cast<std::size_t>(row)];
}

void ContactsView::tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/, NSCell* cell,
                                                                NSTableColumn* /*column*/, std::int64_t row)
{
    const Contact& contact = contactAtRow(row);
    if (auto* name = dynamic_cast<ZuTableCheckImageCell*>(cell)) {
        name->setStringValue(text(contact.name));
        name->setIsChecked(contact.isChecked ? 1 : 0);
        name->setEnabled(!contact.isFixed);
    } else if (auto* group = dynamic_cast<ZuImageCell*>(cell)) {
        const Group& shown = _groups[contact.group];
        group->setImage(shown.picture);
        group->setDescription(shown.name.get());
    } else if (auto* number = dynamic_cast<ZuCenterTextFieldCell*>(cell)) {
        number->setStringValue(text(contact.number));
    }
}

// Checks

void ContactsView::setCheckItem(NSObject* row)
{
    Contact& contact = contactAtRow(numberIn(row));
    contact.isChecked = !contact.isChecked && !contact.isFixed;
    showChecks();
}

void ContactsView::setHeaderCheckItem(NSObject* checked)
{
    for (Contact& contact : _contacts) {
        contact.isChecked = numberIn(checked) != 0 && !contact.isFixed;
    }
    showChecks();
}

void ContactsView::showChecks()
{
    const auto checked = std::ranges::count_if(_contacts, &Contact::isChecked);
    const auto all = std::ranges::count_if(_contacts, [](const Contact& each) { return !each.isFixed; });
    setStatus(localised("%s of %s contacts checked", {std::to_string(checked), std::to_string(all)}));
    _headerView->setIsChecked(all > 0 && checked == all ? 1 : 0);
    _headerView->setNeedsDisplay();
    _tableView->setNeedsDisplay();
}

// Order

void ContactsView::tableView_didClickTableColumn(NSTableView* view, NSTableColumn* column)
{
    const auto clicked =
        static_cast<std::size_t>(std::ranges::find(view->tableColumns(), column, &Ref<NSTableColumn>::get) -
                                 view->tableColumns().begin());
    _descending = clicked == _sortColumn && !_descending;
    _sortColumn = clicked;
    sort();
}

void ContactsView::sort()
{
    std::set<const Contact*> selected; // and so they stay, wherever they go
    for (std::size_t row = 0; row < _rows.size(); ++row) {
        if (_tableView->isRowSelected(static_cast<std::int64_t>(row))) {
            selected.insert(_rows[row]);
        }
    }
    const std::int64_t selectedLast = _tableView->selectedRow();
    const Contact* current = selectedLast >= 0 ? &contactAtRow(selectedLast) : nullptr;
    std::ranges::stable_sort(_rows, [this](const Contact* a, const Contact* b) {
        const int order = std::strcoll(textIn(*a, _sortColumn).c_str(), textIn(*b, _sortColumn).c_str());
        return _descending ? order > 0 : order < 0;
    });
    std::vector<NSRange> ranges;
    for (std::size_t row = 0; row < _rows.size(); ++row) {
        if (selected.contains(_rows[row])) {
            ranges.push_back({row, 1});
        }
    }
    _tableView->reloadData();
    _tableView->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndexesInRanges(ranges).get(),
                                                      false);
    if (current != nullptr) { // from where keys go on
        const auto row = static_cast<std::size_t>(std::ranges::find(_rows, current) - _rows.begin());
        _tableView->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(row).get(), true);
    }
    for (std::size_t column = 0; column < kColumns.size(); ++column) {
        const char* mark = column != _sortColumn ? "" : _descending ? " ▼" : " ▲";
        _tableView->tableColumns()[column]->setTitle(text(localised(kColumns[column].title) + mark));
    }
    _headerView->setNeedsDisplay();
}
