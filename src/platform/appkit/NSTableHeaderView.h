#pragma once

#include "platform/appkit/NSView.h"

class NSTableView;

/// The headers of a table's columns, which stay above the rows while these are scrolled up and down. The user
/// changes the width of a column between two of them, and by a click on one tells the table's delegate
/// (`tableView_didClickTableColumn`).
class TESSALINE_EXPORT NSTableHeaderView : public NSView
{
public:
    /// The height of the frame is that of the headers, for which whole points count; the rest is set when
    /// the table shows.
    NSTableHeaderView* initWithFrame(NSRect frame) override;
    bool isFlipped() const override { return true; }

    /// The table whose header this is; borrowed, null for none.
    NSTableView* tableView() const { return _tableView; }

    /// The place of a column's header; empty if there is no such column.
    NSRect headerRectOfColumn(std::int64_t column) const;

    /// Draws the headers by the cells of the columns.
    void drawRect(NSRect rect) override;

    // Changing widths and clicking.
    void mouseDown(NSEvent* event) override;
    void mouseDragged(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    /// Ends a press.
    void viewDidHide() override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    friend class NSTableView;
    friend class TableHeader;

    ViewPeer* makePeer() override;
    NSPoint originOfPeer() const override;
    void placePeer() override {}

    /// Shows the column's header pressed, -1 for none.
    void setPressedColumn(std::int64_t column);

    NSTableView* _tableView = nullptr;
    std::int64_t _pressedColumn = -1;
    bool _pressed = false; // a press that was left to the toolkit is being tracked
};
