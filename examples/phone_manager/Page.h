#pragma once

#include "Phone.h"

#include <platform/appkit/NSTableView.h>
#include <platform/appkit/NSTextField.h>
#include <window/ZuFlippedView.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class NSImage;
class ZuCheckTableHeaderView;

/// A page with a table of what the phone holds of one kind, in which records are checked for an export, one
/// by one or all at once by the image over the header. The interface file connects the table, whose data
/// source and delegate the page is, and the text below it, which tells how many are checked.
class Page : public ZuFlippedView, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    Page();

    void awakeFromNib() override;

    /// What the page shows from now on; null, as at first, for nothing.
    void setPhone(Ref<Phone> phone);
    /// Shows what has become of the phone.
    virtual void update();

    // Outlets
    Ref<NSTableView> tableView() const { return _tableView; }
    void setTableView(Ref<NSTableView> view) { _tableView = std::move(view); }
    Ref<NSTextField> status() const { return _status; }
    void setStatus(Ref<NSTextField> field) { _status = std::move(field); }

    std::int64_t numberOfRowsInTableView(NSTableView* view) override;
    /// A click on the image of a row, whose number it takes.
    void setCheckItem(NSObject* row);
    /// A click on the image over the header, which takes whether it is checked now.
    void setHeaderCheckItem(NSObject* checked);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~Page() override;

    /// A record of the page's kind, by its place on the phone. The check is null for one that cannot be
    /// checked.
    virtual bool* checkOf(std::size_t record) const = 0;
    virtual std::size_t recordCount() const = 0;
    /// What to say of so many checked ones of so many.
    virtual const char* statusKey() const = 0;

    Phone* phone() const { return _phone.get(); }
    /// The record that a row shows.
    std::size_t recordAtRow(std::int64_t row) const { return _rows[static_cast<std::size_t>(row)]; }
    const std::vector<std::size_t>& rows() const { return _rows; }
    /// Shows other records, or in another order. Those stay selected that were.
    void setRows(std::vector<std::size_t> rows);

    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;

private:
    ZuCheckTableHeaderView& header() const;
    void showChecks();

    Ref<Phone> _phone;
    Ref<NSTableView> _tableView;
    Ref<NSTextField> _status;
    std::vector<Ref<NSImage>> _checkImages; // which the cells do not keep alive
    std::vector<std::size_t> _rows;
};
