#pragma once

#include "Page.h"

#include <platform/foundation/Weak.h>
#include <window/WyClickableURLTextField.h>

#include <string>
#include <vector>

class ChoicesPopover;
class ZuComboBox;
class ZuMultiSelectComboBox;
class ZuSimpleButton;

/// The messages: those of a name, or part of one, that is chosen or typed, and of the kinds that are checked.
/// The one that is selected shows whole, with its links. Names can be edited where they stand, which renames
/// all that goes by the same number.
class MessagesPage final : public Page, public NSTextFieldDelegate, public WyClickableURLTextFieldDelegate
{
public:
    MessagesPage();

    void awakeFromNib() override;
    void update() override;

    // Outlets
    Ref<ZuComboBox> nameFilter() const;
    void setNameFilter(Ref<ZuComboBox> comboBox);
    Ref<ZuMultiSelectComboBox> kindFilter() const;
    void setKindFilter(Ref<ZuMultiSelectComboBox> comboBox);
    Ref<ZuSimpleButton> editButton() const;
    void setEditButton(Ref<ZuSimpleButton> button);
    Ref<WyClickableURLTextField> messageField() const { return _messageField; }
    void setMessageField(Ref<WyClickableURLTextField> field) { _messageField = std::move(field); }

    /// Null unless a name is being edited.
    Ref<NSTextField> nameField() const { return _nameField.get(); }

    NSTableView* kindChoices() const;

    // What the table asks and tells.
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;
    void tableViewSelectionDidChange(NSTableView* view) override;
    void controlTextDidEndEditing(NSTextField* field) override;

    /// Tells which link of the message is being opened.
    bool textField_openURL(NSTextField* field, NSObject* url) override;

    // Actions and messages of the controls.
    void filter(NSObject* sender);
    void PopOver(NSObject* sender);
    void switchEditing(NSObject* sender);
    void editName(NSObject* row);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~MessagesPage() override;

    bool* checkOf(std::size_t record) const override;
    std::size_t recordCount() const override { return phone()->messages().size(); }
    const char* statusKey() const override { return "%s of %s messages checked"; }

private:
    const Message& messageAtRow(std::int64_t row) const { return phone()->messages()[recordAtRow(row)]; }
    void showNames();
    void showMessage();

    std::vector<Ref<NSImage>> _images; // by kind
    Ref<ZuComboBox> _nameFilter;
    Ref<ZuMultiSelectComboBox> _kindFilter;
    Ref<ZuSimpleButton> _editButton;
    Ref<WyClickableURLTextField> _messageField;
    Ref<ChoicesPopover> _kinds;
    Weak<NSTextField> _nameField; // a subview of the table
    std::size_t _edited = 0;      // the message whose name that shows
    std::size_t _namesShown = 0;  // of how many messages
    bool _editsNames = false;
};
