#pragma once

#include "Contacts.h"
#include "TablePage.h"

#include <platform/appkit/NSTableView.h>

#include <map>
#include <string>
#include <vector>

class NSImage;
class NSString;
class ZuCheckTableHeaderView;

/// The page with the address book: a table in which contacts are checked for an export, one by one or all at
/// once by the image over its header, and which a click on a header sorts. It answers what the table asks,
/// and keeps what is checked, which the table does not know.
class ContactsView final : public TablePage, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    ContactsView();

    ContactsView* initWithFrame(NSRect frame) override;

    void setContacts(std::vector<Contact> contacts);

    NSTableView* tableView() const { return _tableView.get(); }
    ZuCheckTableHeaderView* headerView() const { return _headerView.get(); }

    // What the table asks.
    std::int64_t numberOfRowsInTableView(NSTableView* view) override;
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;

    // What the user does.
    void tableView_didClickTableColumn(NSTableView* view, NSTableColumn* column) override;
    /// A click on the image of a row, whose number it takes.
    void setCheckItem(NSObject* row);
    /// A click on the image over the header, which takes whether it is checked now.
    void setHeaderCheckItem(NSObject* checked);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ContactsView() override;

private:
    struct Group {
        Ref<NSImage> picture;
        Ref<NSString> name; // in the user's language
    };

    Contact& contactAtRow(std::int64_t row);
    void showChecks();
    void sort();

    Ref<NSTableView> _tableView;
    Ref<ZuCheckTableHeaderView> _headerView;
    std::vector<Ref<NSImage>> _checkImages; // which the cells do not keep alive, nor the names of groups
    std::map<std::string, Group> _groups;
    std::vector<Contact> _contacts;
    std::vector<Contact*> _rows; // what each shows
    std::size_t _sortColumn = 0;
    bool _descending = false;
};
