#pragma once

// The toolkit's view behind a table. Private to the platform layer.

#include "platform/foundation/NSRange.h"

#include <QHeaderView>
#include <QTreeView>

#include <cstdint>
#include <memory>
#include <vector>

class NSTableHeaderView;
class NSTableView;
class TableModel;
class ViewPeer;

/// Has the toolkit's side of a table's header: place and width of the columns, the press of one.
class TableHeader final : public QHeaderView
{
public:
    explicit TableHeader(NSTableView& view);

    /// Stands for the view that is the header.
    ViewPeer& peer() const;
    void abandon() { _view = nullptr; }

    QSize sizeHint() const override;

protected:
    bool viewportEvent(QEvent* event) override;

private:
    NSTableView* _view; // null once the view is gone
};

/// Scrolls, selects, and moves through the rows by keys; tells assistive technology of them. All that shows,
/// the table draws, and it sees the presses first. Belongs to the table; should Qt destroy it first (with a
/// host's window), the table makes a new one when needed.
class TableItemView final : public QTreeView
{
public:
    TableItemView(NSTableView& view, std::unique_ptr<TableModel> model);
    ~TableItemView() override;

    /// Called by the view's destructor: nothing reaches the view any more, and this is destroyed.
    void abandon();

    TableModel& rows() const { return *_model; }
    TableHeader& tableHeader() const { return *static_cast<TableHeader*>(header()); }
    /// Stands for the table.
    ViewPeer& peer() const;

    /// Asks for all rows again, where the rows are being asked about, as soon as that is done.
    void reload();
    /// Takes over the row height, the width of the columns, and whether there is a header and how high.
    void takeSizes();

    /// Where the rows are scrolled to.
    QPoint offset() const;
    /// Scrolls as little as brings what is between `top` and `bottom` into view.
    void reveal(int top, int bottom);

    /// The rows that are selected, and the one that keys act on, -1 for none.
    std::vector<NSRange> selectedRows() const;
    void select(std::vector<NSRange> rows, bool extend);
    std::int64_t currentRow() const;
    void setCurrentRow(std::int64_t row);

    /// Has the toolkit do what it does by itself with the key that is being handled, if one is; whether it
    /// did something.
    bool handOnKey();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void verticalScrollbarValueChanged(int value) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void selectionDidChange();
    /// Expands what has been restored.
    void expandRestored();
    void reloadLater();
    /// Takes note that what is below an index shows or no longer does.
    void setShown(const QModelIndex& index, bool expanded);

    NSTableView* _view; // null once the view is gone
    std::unique_ptr<TableModel> _model;
    QKeyEvent* _key = nullptr; // that is being handled
    int _width = 0;            // of the viewport
    bool _reloading = false;
    bool _reloadsLater = false;
};
