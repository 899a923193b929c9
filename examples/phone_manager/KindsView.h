#pragma once

#include "Phone.h"

#include <window/ZuOutlineView.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

class NSImage;
class ZuOutlineItem;

/// The outline of what the phone holds: the kinds with their groups, how many there are of each, and checks
/// that check all of it for an export. It is its own data source and delegate, and sends its action when
/// the user selects another kind.
class KindsView final : public ZuOutlineView, public NSOutlineViewDataSource, public NSOutlineViewDelegate
{
public:
    enum class Kind { Contacts, Messages, Pictures };

    KindsView();

    void awakeFromNib() override;

    /// What the outline shows from now on; null, as at first, for nothing.
    void setPhone(Ref<Phone> phone);
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

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~KindsView() override;

private:
    /// A row: a kind, or below it one of its groups.
    struct Entry {
        Ref<ZuOutlineItem> item;
        std::size_t records = 0;
        std::size_t checkable = 0;
        std::size_t checked = 0;
    };
    /// Kind and group; the group of a kind itself is empty.
    using Key = std::pair<Kind, std::string>;
    /// What is called for a record: its row, and its check, null if it cannot be checked.
    using Visitor = std::function<void(const Key& group, bool* check)>;

    void visitRecords(const Visitor& visit) const;
    Entry& entryOf(const Key& key);
    Key keyOf(const ZuOutlineItem& item) const;
    ZuOutlineItem& itemOf(NSObject* item) const;

    Ref<Phone> _phone;
    Ref<ZuOutlineItem> _root;
    std::map<Key, Entry> _entries;
    std::array<Ref<NSImage>, 4> _checkImages; // of none, some and all, and where nothing can be
    Kind _selectedKind = Kind::Contacts;
};
