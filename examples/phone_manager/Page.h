#pragma once

#include "Phone.h"

#include <Tessaline.h>

#include <vector>

/// A page with a table of what the phone holds of one kind, in which records are checked for an export, one
/// by one or all at once by the image over the header. The page is the table's data source and delegate.
class Page : public ZuFlippedView, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    // Outlets
    Ref<NSTableView> tableView; // its first column shows the checks
    Ref<NSTextField> status;    // tells how many are checked

    /// What the page shows. Whoever sets it calls `update`.
    Ref<Phone> phone;

    void awakeFromNib() override;

    /// Shows what has become of the phone.
    virtual void update();

    std::int64_t numberOfRowsInTableView(NSTableView* view) override;
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;
    /// A click on the check of a row, whose number it takes.
    void setCheckItem(NSObject* row);
    /// A click on the check over the header, which takes whether it is checked now.
    void setHeaderCheckItem(NSObject* checked);

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    // Records of the page's kind, by their places on the phone
    virtual std::size_t recordCount() const = 0;
    virtual bool& isChecked(std::size_t record) const = 0;
    virtual bool isShown(std::size_t /*record*/) const { return true; }
    /// Has the cell of a column show the record.
    virtual void show(std::size_t record, NSCell& cell, std::size_t column) = 0;

    std::size_t recordAtRow(std::int64_t row) const { return _rows[static_cast<std::size_t>(row)]; }

private:
    void showChecks();

    std::vector<std::size_t> _rows; // their records
};
