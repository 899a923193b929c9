#pragma once

#include "Page.h"

#include <map>
#include <string>
#include <vector>

/// The address book, which a click on a header sorts.
class ContactsPage final : public Page
{
public:
    void awakeFromNib() override;
    void update() override;

    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;
    void tableView_didClickTableColumn(NSTableView* view, NSTableColumn* column) override;

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    bool* checkOf(std::size_t record) const override;
    std::size_t recordCount() const override { return phone()->contacts().size(); }
    const char* statusKey() const override { return "%s of %s contacts checked"; }

private:
    /// The place of a column.
    std::size_t placeOf(const NSTableColumn& column) const;
    /// In the user's language, kept, since cells do not keep what they show.
    const Ref<NSString>& groupOf(std::size_t record);
    std::string textIn(std::size_t record, std::size_t column);
    void sort();

    std::vector<std::string> _titles; // of the columns
    std::vector<std::size_t> _order;
    std::size_t _sortColumn = 0;
    bool _descending = false;
    std::map<std::string, Ref<NSString>> _groups;
};
