#pragma once

#include "Messages.h"
#include "TablePage.h"

#include <platform/appkit/NSTableView.h>
#include <platform/appkit/NSTextField.h>
#include <platform/foundation/Weak.h>

#include <cstddef>
#include <vector>

class NSImage;
class NSPopover;
class WyClickableURLTextField;
class ZuComboBox;
class ZuMultiSelectComboBox;
class ZuMultiSelectComboBoxData;
class ZuSimpleButton;

/// The page with the messages: those of a name, or part of one, that is chosen or typed, and of the kinds
/// that are checked. Names can be edited where they stand, which renames all that goes by the same number.
class MessagesView final : public TablePage,
                           public NSTableViewDataSource,
                           public NSTableViewDelegate,
                           public NSTextFieldDelegate
{
public:
    MessagesView();

    MessagesView* initWithFrame(NSRect frame) override;

    /// Shows other messages, in their order.
    void setMessages(std::vector<Message> messages);
    const std::vector<Message>& messages() const { return _messages; }

    NSTableView* tableView() const { return _tableView.get(); }
    ZuComboBox* nameFilter() const { return _nameFilter.get(); }
    ZuMultiSelectComboBox* kindFilter() const { return _kindFilter.get(); }
    ZuSimpleButton* editButton() const { return _editButton.get(); }
    WyClickableURLTextField* help() const { return _help.get(); }
    /// Null unless a name is being edited.
    Ref<NSTextField> nameField() const { return _nameField.get(); }

    // What the table asks and tells.
    std::int64_t numberOfRowsInTableView(NSTableView* view) override;
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell, NSTableColumn* column,
                                                      std::int64_t row) override;
    void controlTextDidEndEditing(NSTextField* field) override;

    // Actions and messages of the controls.
    void filter(NSObject* sender);
    void PopOver(NSObject* sender);
    void setCheckItem(NSObject* row);
    void switchEditing(NSObject* sender);
    void editName(NSObject* row);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~MessagesView() override;

private:
    void buildFilters();
    void buildTable();
    void buildHelp();
    void buildChoices();
    ZuMultiSelectComboBoxData& choiceAtRow(std::int64_t row) const;
    void showNames();

    std::vector<Message> _messages;
    std::vector<std::size_t> _shown; // places in the list, by row
    std::vector<Ref<NSImage>> _images;
    Ref<NSTableView> _tableView;
    Ref<ZuComboBox> _nameFilter;
    Ref<ZuMultiSelectComboBox> _kindFilter;
    Ref<NSPopover> _popover;
    Ref<NSTableView> _choices; // in the pop-over
    Ref<ZuSimpleButton> _editButton;
    Ref<WyClickableURLTextField> _help;
    Weak<NSTextField> _nameField; // a subview of the table
    std::size_t _edited = 0;      // the message whose name that shows
    bool _editsNames = false;
};
