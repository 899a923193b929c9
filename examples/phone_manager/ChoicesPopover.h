#pragma once

#include <Tessaline.h>

/// The list of a multi-select combo box, in which its choices are checked. With each check the combo box
/// sends its action.
class ChoicesPopover final : public NSObject, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    explicit ChoicesPopover(Ref<ZuMultiSelectComboBox> comboBox);

    /// Opens the list at the combo box.
    void show();
    NSTableView* tableView() const { return _tableView.get(); }

    // What the list asks and tells.
    std::int64_t numberOfRowsInTableView(NSTableView* view) override;
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;
    void setCheckItem(NSObject* row);

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

private:
    ZuMultiSelectComboBoxData& choiceAtRow(std::int64_t row) const;

    Ref<ZuMultiSelectComboBox> _comboBox;
    Ref<NSTableView> _tableView;
    Ref<NSPopover> _popover;
};
