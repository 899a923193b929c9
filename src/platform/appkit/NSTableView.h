#pragma once

#include "platform/appkit/NSControl.h"

#include <memory>
#include <vector>

class NSCell;
class NSFont;
class NSIndexSet;
class NSScrollView;
class NSTableColumn;
class NSTableHeaderView;
class NSTableView;
class TableItemView;
class TableModel;

/// Answers what a table shows. To be implemented by an object (`NSObject`).
class TESSALINE_EXPORT NSTableViewDataSource
{
public:
    virtual std::int64_t numberOfRowsInTableView(NSTableView* view) = 0;
    /// What the column's cell shows of a row (`setObjectValue`). Here null: the delegate sets the cell.
    virtual Ref<NSObject> tableView_objectValueForTableColumn_row(NSTableView* view, NSTableColumn* column,
                                                                  std::int64_t row);

protected:
    ~NSTableViewDataSource() = default;
};

/// Has a say in how a table looks and hears of what the user does. To be implemented by an object
/// (`NSObject`); each method does nothing unless it is overridden. Some cells and headers send messages of
/// their own to the same object.
class TESSALINE_EXPORT NSTableViewDelegate
{
public:
    /// Sets a cell up for a row, before it draws it, takes a press on it, or is asked what it says.
    virtual void tableView_willDisplayCell_forTableColumn_row(NSTableView* view, NSCell* cell,
                                                              NSTableColumn* column, std::int64_t row);
    virtual void tableViewSelectionDidChange(NSTableView* view);
    /// A click on a column's header.
    virtual void tableView_didClickTableColumn(NSTableView* view, NSTableColumn* column);

protected:
    ~NSTableViewDelegate() = default;
};

/// Rows of equal height, in columns whose cells draw them: those rows that have to be redrawn, however many
/// there are. The rows are the data source's, which is asked again by `reloadData`; the table keeps only
/// which of them are selected. There can be 10,000,000. It shows in a scroll view, where the toolkit scrolls,
/// selects, moves through the rows by keys and changes the widths of columns, and nowhere else; a host
/// application embeds the scroll view. Its coordinates begin at the first row and grow downwards, whatever is
/// scrolled to. Before there are columns, nothing can be selected. An application (`NSApplication`) has to
/// exist.
class TESSALINE_EXPORT NSTableView : public NSControl
{
public:
    NSTableView();

    NSTableView* initWithFrame(NSRect frame) override;
    bool isFlipped() const override { return true; }

    // Columns

    /// Adds a column behind the others, from where the table keeps it alive. One that is in a table already
    /// is reported, and nothing happens, as for null.
    void addTableColumn(Ref<NSTableColumn> column);
    const std::vector<Ref<NSTableColumn>>& tableColumns() const { return _tableColumns; }
    /// Makes the last column as wide as the visible width leaves room for, within its limits; this happens
    /// by itself whenever that width changes.
    void sizeLastColumnToFit();

    /// What shows above the columns; null for nothing. Default an `NSTableHeaderView`, 23 points high.
    NSTableHeaderView* headerView() const { return _headerView.get(); }
    void setHeaderView(Ref<NSTableHeaderView> view);

    // Rows

    /// Not retained. The setters ask for the rows (`reloadData`), or for a redraw.
    Ref<NSObject> dataSource() const { return _dataSource.get(); }
    void setDataSource(NSObject* dataSource);
    Ref<NSObject> delegate() const { return _delegate.get(); }
    void setDelegate(NSObject* delegate);

    /// Asks the data source again. Rows stay selected by their numbers, those that there are.
    void reloadData();

    std::int64_t numberOfRows() const;

    /// In whole points, at least 1 and so much at most that all rows come to less than 2^31. Default 17.
    double rowHeight() const { return _rowHeight; }
    void setRowHeight(double height);

    /// For cells that draw with the table's font. Default null. Asks for a redraw.
    Ref<NSFont> font() const;
    void setFont(Ref<NSFont> font);

    // Places, in the table's coordinates

    /// The row or column at a point, upper and left edges belonging to it; -1 if there is none. What is
    /// right of the last column belongs to the row, too.
    std::int64_t rowAtPoint(NSPoint point) const;
    std::int64_t columnAtPoint(NSPoint point) const;
    /// Empty if there is no such row or column.
    NSRect rectOfRow(std::int64_t row) const;
    NSRect rectOfColumn(std::int64_t column) const;
    virtual NSRect frameOfCellAtColumn_row(std::int64_t column, std::int64_t row) const;
    /// What shows of the table.
    NSRect visibleRect() const override;
    void scrollRowToVisible(std::int64_t row);

    // Selection

    /// Whether several rows can be selected at once. Initially not.
    bool allowsMultipleSelection() const { return _allowsMultipleSelection; }
    void setAllowsMultipleSelection(bool allows);

    Ref<NSIndexSet> selectedRowIndexes() const;
    /// The row that was selected last, or if it is no longer, the first that is; -1 for none.
    std::int64_t selectedRow() const;
    bool isRowSelected(std::int64_t row) const;
    /// Selects rows, those that there are, in place of the others or (`extend`) beside them.
    void selectRowIndexes_byExtendingSelection(const NSIndexSet* rows, bool extend);

    /// The row and column on which a press is that is being handled, -1 for none.
    std::int64_t clickedRow() const { return _clickedRow; }
    std::int64_t clickedColumn() const { return _clickedColumn; }

    /// Whether keys reach the table: it has the focus in a window that is key.
    bool hasKeyboard() const;

    // Drawing

    /// The column's cell, set up for a row; the next call for the column sets it up anew. Null, which is
    /// reported, if there is no such column or row.
    Ref<NSCell> preparedCellAtColumn_row(std::int64_t column, std::int64_t row);

    /// Draws the rows that are in `rect`: background, selection, cells.
    void drawRect(NSRect rect) override;

    // Events: a cell takes the press first, then the toolkit.

    void mouseDown(NSEvent* event) override;
    void mouseDragged(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    /// The space key does what a press on the check of the current row does, the others move through the
    /// rows.
    bool keyDown(NSEvent* event) override;
    bool acceptsFirstResponder() const override { return isEnabled(); }
    /// Ends a press.
    void viewDidHide() override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~NSTableView() override;

    /// What a cell shows of a row: its value and the delegate's say.
    virtual void setUpCell_forTableColumn_row(NSCell* cell, NSTableColumn* column, std::int64_t row);
    /// Draws the cells of a row, those of the columns that are in `rect`.
    virtual void drawRow(std::int64_t row, NSRect rect);
    /// Tells the delegate.
    virtual void tellOfSelection();

private:
    friend class NSOutlineView;
    friend class NSScrollView;
    friend class NSTableColumn;
    friend class NSTableHeaderView;
    friend class TableHeader;
    friend class TableItemView;
    friend class TableModel;

    ViewPeer* makePeer() override;
    NSPoint originOfPeer() const override;
    void placePeer() override;
    NSRect takeUpdateRect(NSRect exposed) override;

    /// The rows as the toolkit asks for them, and its view, which are made when they are first needed.
    virtual std::unique_ptr<TableModel> makeModel();
    virtual void setUpItemView(TableItemView& /*view*/) {}
    TableItemView& itemView();

    bool isInScrollView() const;
    void columnDidResize();
    void didClickColumn(std::int64_t column);
    bool cellTakesPress(NSEvent* event, NSPoint point);
    /// Gives table and header the places that they are scrolled to.
    void tile();
    void redrawRow(std::int64_t row);
    void selectionDidChange();
    void rowsDidMove();

    std::vector<Ref<NSTableColumn>> _tableColumns;
    Ref<NSTableHeaderView> _headerView;
    Weak<NSObject> _dataSource;
    Weak<NSObject> _delegate;
    double _rowHeight = 17.0;
    Ref<NSFont> _font;
    bool _allowsMultipleSelection = false;
    std::int64_t _clickedRow = -1;
    std::int64_t _clickedColumn = -1;
    bool _pressed = false;              // a press that was left to the toolkit is being tracked
    mutable Ref<NSIndexSet> _selection; // null when out of date
    TableItemView* _itemView = nullptr; // owned; null until needed, or when Qt destroyed it
};
