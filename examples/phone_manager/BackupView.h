#pragma once

#include "TablePage.h"

#include <platform/appkit/NSOutlineView.h>

#include <string>
#include <vector>

class NSImage;
class ZuOutlineItem;
class ZuOutlineView;

/// A kind of data in a backup, which is in folders. The names are shown in the user's language.
struct BackupKind {
    struct Folder {
        std::string name;
        std::int64_t count;
    };

    std::string name;
    std::string icon;
    std::vector<Folder> folders;
};

/// The page with what a backup holds: a tree of kinds of data and their folders, in which the user chooses by
/// checks. That of a kind follows those of its folders, and they follow it. The page answers what the tree's
/// view asks; the items of the tree keep what is checked.
class BackupView final : public TablePage, public NSOutlineViewDataSource, public NSOutlineViewDelegate
{
public:
    BackupView();

    BackupView* initWithFrame(NSRect frame) override;

    /// Shows these, collapsed and all of them checked.
    void setKinds(const std::vector<BackupKind>& kinds);

    ZuOutlineView* outlineView() const { return _outlineView.get(); }

    /// Has what depends on the check of a row follow it, when the user has toggled it.
    void checkDidChange(std::int64_t row);

    // What the view of the tree asks.
    std::int64_t outlineView_numberOfChildrenOfItem(NSOutlineView* view, NSObject* item) override;
    Ref<NSObject> outlineView_child_ofItem(NSOutlineView* view, std::int64_t index, NSObject* item) override;
    bool outlineView_isItemExpandable(NSOutlineView* view, NSObject* item) override;
    void outlineView_willDisplayCell_forTableColumn_item(NSOutlineView* view, NSCell* cell,
                                                         NSTableColumn* column, NSObject* item) override;

protected:
    ~BackupView() override;

private:
    /// The root for null.
    ZuOutlineItem& itemOf(NSObject* item) const;
    void showChecks();

    Ref<ZuOutlineView> _outlineView;
    Ref<ZuOutlineItem> _root; // of the kinds; does not show
    Ref<NSImage> _unchecked;
    Ref<NSImage> _checked;
    Ref<NSImage> _mixed;
};
