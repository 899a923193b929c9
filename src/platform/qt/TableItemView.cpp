#include "platform/qt/TableItemView.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/appkit/NSTableHeaderView.h"
#include "platform/appkit/NSTableView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSIndexSet.h"
#include "platform/foundation/NSString.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/TableModel.h"
#include "platform/qt/ViewPeer.h"

#include <QAbstractItemDelegate>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

/// Tells the height of rows; they are drawn by the table.
class RowDelegate final : public QAbstractItemDelegate
{
public:
    RowDelegate(QObject& parent, double rowHeight)
        : QAbstractItemDelegate(&parent), _rowHeight(static_cast<int>(rowHeight))
    {
    }

    /// Whether that is another one than before.
    bool setRowHeight(double rowHeight)
    {
        const auto before = std::exchange(_rowHeight, static_cast<int>(rowHeight));
        return _rowHeight != before;
    }

    void paint(QPainter* /*painter*/, const QStyleOptionViewItem& /*option*/,
               const QModelIndex& /*index*/) const override
    {
    }
    QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const override
    {
        return {1, _rowHeight};
    }

private:
    int _rowHeight;
};

/// Whether an event is for the view, which leaves it to the toolkit where it has nothing to do with it.
bool isForView(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::Paint:
    case QEvent::ToolTip:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
        return true;
    case QEvent::MouseMove:
        return static_cast<const QMouseEvent&>(event).buttons() != Qt::NoButton;
    default:
        return false;
    }
}

} // namespace

TableHeader::TableHeader(NSTableView& view) : QHeaderView(Qt::Horizontal), _view(&view)
{
    setViewport(new ViewPeer(*this, ViewPeer::Surroundings::Fixed,
                             [this](QEvent* event) { QHeaderView::viewportEvent(event); }));
    setSectionsMovable(false);
    setStretchLastSection(false);
    setHighlightSections(false);
    setMinimumSectionSize(1);
    connect(this, &QHeaderView::sectionResized, this, [this](int column, int /*before*/, int width) {
        if (_view != nullptr) {
            const Ref<NSTableColumn> resized = _view->tableColumns()[static_cast<std::size_t>(column)];
            resized->setWidth(width);
            resizeSection(column, static_cast<int>(resized->width())); // within its limits
            _view->tile();
        }
    });
    connect(this, &QHeaderView::sectionPressed, this, [this](int column) {
        if (_view != nullptr && _view->headerView() != nullptr) {
            _view->headerView()->setPressedColumn(column);
        }
    });
    connect(this, &QHeaderView::sectionClicked, this, [this](int column) {
        if (_view != nullptr) {
            _view->didClickColumn(column);
        }
    });
}

ViewPeer& TableHeader::peer() const
{
    return *static_cast<ViewPeer*>(viewport());
}

QSize TableHeader::sizeHint() const
{
    const NSTableHeaderView* shown = _view != nullptr ? _view->headerView() : nullptr;
    return {0, shown != nullptr ? static_cast<int>(std::lround(shown->frame().size.height)) : 0};
}

bool TableHeader::viewportEvent(QEvent* event)
{
    return !isForView(*event) && QHeaderView::viewportEvent(event) && event->type() != QEvent::MouseMove;
}

TableItemView::TableItemView(NSTableView& view, std::unique_ptr<TableModel> model)
    : _view(&view), _model(std::move(model))
{
    setViewport(new ViewPeer(*this, ViewPeer::Surroundings::Movable,
                             [this](QEvent* event) { QTreeView::viewportEvent(event); }));
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // so that scrolling moves what shows already
    setFrameShape(QFrame::NoFrame);
    setHeader(new TableHeader(view));
    header()->setSectionsClickable(true); // which they cease to be when a tree gets its header
    setItemDelegate(new RowDelegate(*this, view.rowHeight()));
    setUniformRowHeights(true);
    setRootIsDecorated(false);
    setExpandsOnDoubleClick(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setModel(_model.get());
    takeSizes();
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) { setShown(index, true); });
    connect(this, &QTreeView::collapsed, this, [this](const QModelIndex& index) { setShown(index, false); });
}

TableItemView::~TableItemView()
{
    if (_view != nullptr) {
        _view->_itemView = nullptr;
        _view->_selection = nullptr;
    }
    tableHeader().abandon();
    _model->abandon();
}

void TableItemView::abandon()
{
    _view = nullptr;
    tableHeader().abandon();
    tableHeader().peer().show(nullptr);
    _model->abandon();
    destroyWidget(this);
}

ViewPeer& TableItemView::peer() const
{
    return *static_cast<ViewPeer*>(viewport());
}

void TableItemView::reload()
{
    if (_model->isAsking()) {
        reloadLater();
        return;
    }
    std::vector<NSRange> selected = selectedRows();
    std::int64_t current = currentRow();
    const auto before = NSIndexSet::indexSetWithIndexesInRanges(selected);
    _reloading = true;
    _model->beginResetModel();
    _model->load(selected, current);
    _model->endResetModel();
    expandRestored();
    select(selected, false);
    setCurrentRow(current);
    _reloading = false;
    if (!NSIndexSet::indexSetWithIndexesInRanges(selectedRows())->isEqual(before.get())) {
        selectionDidChange();
    }
}

void TableItemView::reloadLater()
{
    if (std::exchange(_reloadsLater, true)) {
        return;
    }
    auto* timer = new QTimer(this);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    connect(timer, &QTimer::timeout, this, [this] {
        _reloadsLater = false;
        if (_view != nullptr) {
            _view->reloadData();
        }
    });
    timer->start(0);
}

void TableItemView::expandRestored()
{
    for (QModelIndexList restored = _model->takeRestored(); !restored.isEmpty();
         restored = _model->takeRestored()) { // what shows then may have been expanded, too
        for (const QModelIndex& index : restored) {
            expand(index);
        }
    }
}

void TableItemView::selectionDidChange()
{
    const EventInProgress progress;
    const Ref<NSTableView> view(_view);
    view->selectionDidChange();
}

void TableItemView::setShown(const QModelIndex& index, bool expanded)
{
    if (_view == nullptr) {
        return;
    }
    const EventInProgress progress;
    const Ref<NSTableView> view(_view); // the delegate may let it go
    _model->setExpanded(index, expanded);
    expandRestored();
    QItemSelection hidden;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        if (_model->rowOf(range.topLeft()) < 0) { // and so with its neighbours
            hidden.append(range);
        }
    }
    selectionModel()->select(hidden, QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    view->rowsDidMove();
}

void TableItemView::takeSizes()
{
    if (static_cast<RowDelegate*>(itemDelegate())->setRowHeight(_view->rowHeight())) {
        scheduleDelayedItemsLayout(); // which looks at every row
    }
    for (int column = 0; column < header()->count(); ++column) {
        header()->resizeSection(
            column, static_cast<int>(_view->tableColumns()[static_cast<std::size_t>(column)]->width()));
    }
    setSelectionMode(_view->allowsMultipleSelection() ? ExtendedSelection : SingleSelection);
    setHeaderHidden(_view->headerView() == nullptr);
    updateGeometries();
}

QPoint TableItemView::offset() const
{
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void TableItemView::reveal(int top, int bottom)
{
    executeDelayedItemsLayout();
    QScrollBar& bar = *verticalScrollBar();
    const int height = viewport()->height();
    bar.setValue(std::min(top, std::max(bar.value(), bottom - height)));
}

std::vector<NSRange> TableItemView::selectedRows() const
{
    return _model->rowsOf(selectionModel()->selection());
}

void TableItemView::select(std::vector<NSRange> rows, bool extend)
{
    const std::vector<NSRange> joined = NSIndexSet::indexSetWithIndexesInRanges(std::move(rows))->ranges();
    QItemSelection selection;
    for (const NSRange& range : joined) {
        selection.append(_model->selectionOf(range));
    }
    const auto how = extend ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect;
    if (!selection.isEmpty()) {
        setCurrentRow(_model->rowOf(selection.last().topLeft()));
    }
    selectionModel()->select(selection, how | QItemSelectionModel::Rows);
}

void TableItemView::setCurrentRow(std::int64_t row)
{
    setAutoScroll(false); // to the row
    selectionModel()->setCurrentIndex(_model->indexOfRow(row), QItemSelectionModel::NoUpdate);
    setAutoScroll(true);
}

std::int64_t TableItemView::currentRow() const
{
    return currentIndex().isValid() ? _model->rowOf(currentIndex()) : -1;
}

bool TableItemView::handOnKey()
{
    // An asterisk would expand all that is below a row, without end where that is below itself.
    if (_key == nullptr || _key->key() == Qt::Key_Asterisk) {
        return false;
    }
    QKeyEvent& key = *_key;
    QTreeView::keyPressEvent(&key);
    return key.isAccepted();
}

bool TableItemView::event(QEvent* event)
{
    const EventInProgress progress;
    const Ref<NSTableView> view(_view); // may be let go by whatever the event leads to
    return QTreeView::event(event);
}

bool TableItemView::viewportEvent(QEvent* event)
{
    return !isForView(*event) && QTreeView::viewportEvent(event) && event->type() != QEvent::MouseMove;
}

void TableItemView::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
    if (_view != nullptr) {
        const QPointer<TableItemView> self(this); // may go with a host's window
        QKeyEvent* const outer = std::exchange(_key, event);
        event->setAccepted(_view->keyDown(keyEvent(*event, *_view).get()));
        if (self) {
            _key = outer;
        }
    }
}

void TableItemView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    if (_view != nullptr) {
        _view->tile();
    }
}

void TableItemView::verticalScrollbarValueChanged(int /*value*/)
{
    // Nothing: the toolkit would search all rows for the one that comes under the pointer, to redraw it.
}

void TableItemView::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    // The event need not know the size before: where the view was not shown yet, there may have been others.
    const int before = std::exchange(_width, event->size().width());
    if (_view != nullptr && _view->isInScrollView() && _width != before) {
        _view->sizeLastColumnToFit();
    }
}

void TableItemView::updateGeometries()
{
    QTreeView::updateGeometries();
    if (_view != nullptr) {
        _view->tile();
    }
}

void TableItemView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    if (_view != nullptr && !_reloading) {
        selectionDidChange();
    }
}
