#pragma once

#include "platform/appkit/NSTableView.h"

class NSOutlineView;
class OutlineModel;

/// Answers what an outline shows: items that have items below them. Null stands for what is above the topmost
/// ones. To be implemented by an object (`NSObject`).
class TESSALINE_EXPORT NSOutlineViewDataSource
{
public:
    virtual std::int64_t outlineView_numberOfChildrenOfItem(NSOutlineView* view, NSObject* item) = 0;
    virtual Ref<NSObject> outlineView_child_ofItem(NSOutlineView* view, std::int64_t index,
                                                   NSObject* item) = 0;
    virtual bool outlineView_isItemExpandable(NSOutlineView* view, NSObject* item) = 0;
    /// What the column's cell shows of an item (`setObjectValue`). Here null: the delegate sets the cell.
    virtual Ref<NSObject> outlineView_objectValueForTableColumn_byItem(NSOutlineView* view,
                                                                       NSTableColumn* column, NSObject* item);

protected:
    ~NSOutlineViewDataSource() = default;
};

/// Has a say in how an outline looks and hears of what the user does. To be implemented by an object
/// (`NSObject`); each method does nothing unless it is overridden.
class TESSALINE_EXPORT NSOutlineViewDelegate
{
public:
    /// Sets a cell up for an item, before it draws it, takes a press on it, or is asked what it says.
    virtual void outlineView_willDisplayCell_forTableColumn_item(NSOutlineView* view, NSCell* cell,
                                                                 NSTableColumn* column, NSObject* item);
    virtual void outlineViewSelectionDidChange(NSOutlineView* view);

protected:
    ~NSOutlineViewDelegate() = default;
};

/// A table whose rows are items of a tree: those below an item show, indented in the first column, while it
/// is expanded, which the user changes by its triangle or by keys. Data source and delegate are those above,
/// not a table's. An item is kept alive from when it was first asked for to the next `reloadData`, which
/// keeps items expanded and selected that are still there. An item that is at several places counts as at the
/// first.
class TESSALINE_EXPORT NSOutlineView : public NSTableView
{
public:
    NSOutlineView();

    NSOutlineView* initWithFrame(NSRect frame) override;

    /// How much farther right the first column's cells begin with each level, in points. Cells of the
    /// topmost level begin one such step from the left, which leaves room for the triangle; for both, whole
    /// points count. Default 16. Asks for a redraw.
    double indentationPerLevel() const { return _indentationPerLevel; }
    void setIndentationPerLevel(double points);

    /// The item that a row shows; null if there is no such row.
    Ref<NSObject> itemAtRow(std::int64_t row) const;
    /// The row that shows an item; -1 for null and if none does.
    std::int64_t rowForItem(const NSObject* item) const;
    /// How many items are above that of a row; -1 if there is no such row.
    std::int64_t levelForRow(std::int64_t row) const;

    bool isExpandable(const NSObject* item) const;
    bool isItemExpanded(const NSObject* item) const;
    /// For an item that shows and is expandable; others are left as they are.
    void expandItem(const NSObject* item);
    void collapseItem(const NSObject* item);

    NSRect frameOfCellAtColumn_row(std::int64_t column, std::int64_t row) const override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~NSOutlineView() override;

    void setUpCell_forTableColumn_row(NSCell* cell, NSTableColumn* column, std::int64_t row) override;
    void drawRow(std::int64_t row, NSRect rect) override;
    void tellOfSelection() override;

private:
    std::unique_ptr<TableModel> makeModel() override;
    void setUpItemView(TableItemView& view) override;

    /// Null before the data source was asked for the first time.
    OutlineModel* model() const;
    /// One step in whole points.
    double indentation() const;

    double _indentationPerLevel = 16.0;
};
