#pragma once

#include "Phone.h"

#include <Tessaline.h>

#include <map>
#include <string>
#include <utility>

/// The outline of what the phone holds: the kinds with their groups, how many there are of each, and checks
/// that check all of it for an export. It is its own data source and delegate, and sends its action when
/// the user selects another kind.
class KindsView final : public ZuOutlineView, public NSOutlineViewDataSource, public NSOutlineViewDelegate
{
public:
    /// What the outline shows. Whoever sets it calls `update`.
    Ref<Phone> phone;

    void awakeFromNib() override;

    /// Shows what has become of the phone.
    void update();

    /// That of the selected row, or else the one before.
    Kind selectedKind() const { return _selectedKind; }
    /// Sends no action.
    void selectKind(Kind kind);

    /// Turns round the check of a row, and with it those of all records that it stands for.
    void toggleRow(std::int64_t row);

    // What the outline asks and tells.
    std::int64_t outlineView_numberOfChildrenOfItem(NSOutlineView* view, NSObject* item) override;
    Ref<NSObject> outlineView_child_ofItem(NSOutlineView* view, std::int64_t index, NSObject* item) override;
    bool outlineView_isItemExpandable(NSOutlineView* view, NSObject* item) override;
    void outlineView_willDisplayCell_forTableColumn_item(NSOutlineView* view, NSCell* cell,
                                                         NSTableColumn* column, NSObject* item) override;
    void outlineViewSelectionDidChange(NSOutlineView* view) override;

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

private:
    /// A row: a kind, or below it one of its groups. Its number is how many records there are.
    struct Item final : ZuOutlineItem {
        Kind kind() const { return static_cast<Kind>(id_()); }

        std::string group; // empty for the kind itself
        std::int64_t checked = 0;
    };

    Item& itemOf(Kind kind, const std::string& group);

    Ref<ZuOutlineItem> _root;
    std::map<std::pair<Kind, std::string>, Ref<Item>> _items; // by kind and group
    Kind _selectedKind = Kind::Contacts;
};
