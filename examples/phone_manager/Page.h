#pragma once

#include "Phone.h"

#include <platform/appkit/NSTableView.h>
#include <platform/appkit/NSTextField.h>
#include <window/ZuCheckTableHeaderView.h>
#include <window/ZuFlippedView.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// A page with a table of what the phone holds of one kind, in which records are checked for an export, one
/// by one or all at once by the image over the header. The page is the table's data source and delegate.
class Page : public ZuFlippedView, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    // Outlets
    Ref<NSTableView> tableView;
    Ref<NSTextField> status; // tells how many are checked

    void awakeFromNib() override;

    /// What the page shows from now on; null, as at first, for nothing.
    void setPhone(Ref<Phone> phone);
    /// Shows what has become of the phone.
    virtual void update();

    std::int64_t numberOfRowsInTableView(NSTableView* view) override;
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;
    /// A click on the image of a row, whose number it takes.
    void setCheckItem(NSObject* row);
    /// A click on the image over the header, which takes whether it is checked now.
    void setHeaderCheckItem(NSObject* checked);

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    /// A record of the page's kind, by its place on the phone. The check is null for one that cannot be
    /// checked.
    virtual bool* checkOf(std::size_t record) const = 0;
    virtual std::size_t recordCount() const = 0;
    /// What to say of so many checked ones of so many.
    virtual const char* statusKey() const = 0;

    Phone* phone() const { return _phone.get(); }
    /// The places of all records.
    std::vector<std::size_t> allRecords() const;
    /// The record that a row shows.
    std::size_t recordAtRow(std::int64_t row) const { return _rows[static_cast<std::size_t>(row)]; }
    /// Shows other records, or in another order. The one that was selected stays so.
    void setRows(std::vector<std::size_t> rows);

private:
    ZuCheckTableHeaderView& header() const;
    void showChecks();

    Ref<Phone> _phone;
    std::vector<std::size_t> _rows;
};
