#pragma once

#include "ChoicesPopover.h"
#include "Page.h"

#include <string>
#include <vector>

/// The messages: those of a name, or part of one, that is chosen or typed, and of the kinds that are checked.
/// The one that is selected shows whole, with its links.
class MessagesPage final : public Page, public WyClickableURLTextFieldDelegate
{
public:
    // Outlets
    Ref<ZuComboBox> nameFilter;
    Ref<ZuMultiSelectComboBox> kindFilter;
    Ref<WyClickableURLTextField> messageField;

    void awakeFromNib() override;
    void update() override;

    /// The list in which the kinds are checked.
    NSTableView* kindChoices() const { return _kinds->tableView(); }

    void tableViewSelectionDidChange(NSTableView* view) override;
    /// Tells which link of the message is being opened.
    bool textField_openURL(NSTextField* field, NSObject* url) override;

    // Actions of the filters
    void filter(NSObject* /*sender*/) { update(); }
    void PopOver(NSObject* /*sender*/) { _kinds->show(); }

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

protected:
    std::size_t recordCount() const override { return phone->messages.size(); }
    bool& isChecked(std::size_t record) const override { return phone->messages[record].isChecked; }
    bool isShown(std::size_t record) const override;
    void show(std::size_t record, NSCell& cell, std::size_t column) override;

private:
    void showNames();

    Ref<ChoicesPopover> _kinds;
    std::size_t _namesShown = 0; // of how many messages
    Ref<NSString> _name;         // that is looked for; null for everyone
    std::vector<bool> _showsKind;
};
