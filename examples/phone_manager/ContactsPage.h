#pragma once

#include "Page.h"

#include <map>
#include <string>
#include <vector>

/// The address book, which a click on a header sorts.
class ContactsPage final : public Page
{
public:
    ContactsPage();

    void awakeFromNib() override;
    void update() override;

    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;
    void tableView_didClickTableColumn(NSTableView* view, NSTableColumn* column) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ContactsPage() override;

    bool* checkOf(std::size_t record) const override;
    std::size_t recordCount() const override { return phone()->contacts().size(); }
    const char* statusKey() const override { return "%s of %s contacts checked"; }

private:
    struct Group { // which the cells do not keep alive
        Ref<NSImage> picture;
        Ref<NSString> name; // in the user's language
    };

    std::string textIn(std::size_t record, std::size_t column) const;

    std::vector<std::string> _titles; // of the columns
    std::map<std::string, Group> _groups;
    std::size_t _sortColumn = 0;
    bool _descending = false;
};
