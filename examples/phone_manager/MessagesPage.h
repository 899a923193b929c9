#pragma once

#include "ChoicesPopover.h"
#include "Page.h"

#include <platform/foundation/Weak.h>
#include <window/WyClickableURLTextField.h>
#include <window/ZuComboBox.h>
#include <window/ZuMultiSelectComboBox.h>

/// The messages: those of a name, or part of one, that is chosen or typed, and of the kinds that are checked.
/// The one that is selected shows whole, with its links. Names can be edited where they stand, which renames
/// all that goes by the same number, or without one by the same name.
class MessagesPage final : public Page, public NSTextFieldDelegate, public WyClickableURLTextFieldDelegate
{
public:
    // Outlets
    Ref<ZuComboBox> nameFilter;
    Ref<ZuMultiSelectComboBox> kindFilter;
    Ref<WyClickableURLTextField> messageField;

    void awakeFromNib() override;
    void update() override;

    /// Null unless a name is being edited.
    Ref<NSTextField> nameField() const { return _nameField.get(); }
    /// The list in which the kinds are checked.
    NSTableView* kindChoices() const { return _kinds->tableView(); }

    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;
    void tableViewSelectionDidChange(NSTableView* view) override;
    void controlTextDidEndEditing(NSTextField* field) override;
    /// Tells which link of the message is being opened.
    bool textField_openURL(NSTextField* field, NSObject* url) override;

    // Actions
    void filter(NSObject* sender);
    void PopOver(NSObject* sender);
    void switchEditing(NSObject* button);
    /// A click on the name in a row, whose number it takes.
    void editName(NSObject* row);

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    bool* checkOf(std::size_t record) const override { return &phone()->messages()[record].isChecked; }
    std::size_t recordCount() const override { return phone()->messages().size(); }
    const char* statusKey() const override { return "%s of %s messages checked"; }

private:
    const Message& messageAtRow(std::int64_t row) const { return phone()->messages()[recordAtRow(row)]; }
    void showNames();

    Ref<ChoicesPopover> _kinds;
    std::size_t _namesShown = 0; // of how many messages
    bool _editsNames = false;
    Weak<NSTextField> _nameField; // a subview of the table
    std::size_t _edited = 0;      // the message whose name that shows
};
