#include "platform/qt/OutlineModel.h"

#include "platform/appkit/NSOutlineView.h"
#include "platform/foundation/Diagnostics.h"

#include <algorithm>
#include <utility>

OutlineModel::OutlineModel(NSOutlineView& view) : TableModel(view)
{
    _nodes.emplace_back().loaded = true;
}

NSOutlineView& OutlineModel::outline() const
{
    return static_cast<NSOutlineView&>(*view());
}

void OutlineModel::load(std::vector<NSRange>& selected, std::int64_t& current)
{
    const std::deque<Node> before = std::exchange(_nodes, {}); // keeps the items alive up to the end
    const std::vector<Node*> rowsBefore = std::exchange(_rows, {});
    for (const Node& node : before) {
        if (node.expanded && node.item) {
            _remembered.emplace(node.item.get(), node.item);
        }
    }
    _restored.clear();
    _nodesOfItems.clear();
    loadChildren(_nodes.emplace_back());
    for (std::size_t place = 1; place < _nodes.size(); ++place) { // which adds those below behind
        if (_nodes[place].expanded) {
            loadChildren(_nodes[place]);
        }
    }
    layOutRows();
    const auto rowNow = [&](std::size_t row) {
        return row < rowsBefore.size() ? rowForItem(rowsBefore[row]->item.get()) : -1;
    };
    std::vector<NSRange> kept;
    for (const NSRange& range : selected) {
        for (std::size_t row = range.location; row < NSMaxRange(range); ++row) {
            if (const std::int64_t now = rowNow(row); now >= 0) {
                kept.push_back({static_cast<std::size_t>(now), 1});
            }
        }
    }
    selected = std::move(kept);
    current = current < 0 ? -1 : rowNow(static_cast<std::size_t>(current));
}

QModelIndexList OutlineModel::takeRestored()
{
    QModelIndexList indexes;
    for (Node* node : std::exchange(_restored, {})) {
        indexes.append(createIndex(node->place, 0, node));
    }
    return indexes;
}

QItemSelection OutlineModel::selectionOf(NSRange rows) const
{
    QItemSelection selection;
    const std::size_t behind = std::min(NSMaxRange(rows), _rows.size());
    for (std::size_t first = rows.location; first < behind;) {
        // Neighbours that are children of one are one range to the toolkit, which is slow with many.
        std::size_t last = first;
        while (last + 1 < behind && _rows[last + 1]->parent == _rows[first]->parent) {
            ++last;
        }
        selection.append({indexOfRow(static_cast<std::int64_t>(first)),
                          indexOfRow(static_cast<std::int64_t>(last), columnCount() - 1)});
        first = last + 1;
    }
    return selection;
}

std::vector<NSRange> OutlineModel::rowsOf(const QItemSelection& selection) const
{
    std::vector<NSRange> rows;
    for (const QItemSelectionRange& range : selection) {
        for (int place = range.top(); place <= range.bottom(); ++place) {
            const std::int64_t row = rowOf(index(place, 0, range.parent()));
            if (row >= 0) {
                rows.push_back({static_cast<std::size_t>(row), 1});
            }
        }
    }
    return rows;
}

void OutlineModel::loadChildren(Node& node) const
{
    if (std::exchange(node.loaded, true) || view() == nullptr) {
        return;
    }
    const Asking asking(*this);
    const Ref<NSObject> answering = outline().dataSource();
    auto* source = dynamic_cast<NSOutlineViewDataSource*>(answering.get());
    if (source == nullptr) {
        return;
    }
    const std::int64_t count =
        possible(source->outlineView_numberOfChildrenOfItem(&outline(), node.item.get()));
    for (std::int64_t index = 0; index < count; ++index) {
        Ref<NSObject> item = source->outlineView_child_ofItem(&outline(), index, node.item.get());
        if (!item) {
            diagnose("reloadData", "a child of an outline's item is null");
            continue;
        }
        Node& child = _nodes.emplace_back();
        child.item = std::move(item);
        child.parent = &node;
        child.place = static_cast<int>(node.children.size());
        child.level = node.level + 1;
        node.children.push_back(&child);
        _nodesOfItems.emplace(child.item.get(), &child);
        const auto remembered = _remembered.find(child.item.get());
        if (remembered != _remembered.end()) {
            // Not another one that has got the place of one that is gone.
            child.expanded = remembered->second.get() != nullptr && isExpandable(child);
            _remembered.erase(remembered);
        }
        if (child.expanded) {
            _restored.push_back(&child);
        }
    }
}

void OutlineModel::layOutRows()
{
    for (Node* node : _rows) {
        node->row = -1;
    }
    _rows.clear();
    std::vector<Node*> ahead(_nodes.front().children.rbegin(), _nodes.front().children.rend());
    while (!ahead.empty()) {
        Node* node = ahead.back();
        ahead.pop_back();
        node->row = static_cast<int>(_rows.size());
        _rows.push_back(node);
        if (node->expanded) {
            loadChildren(*node);
            ahead.insert(ahead.end(), node->children.rbegin(), node->children.rend());
        }
    }
}

OutlineModel::Node& OutlineModel::nodeOf(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<Node*>(index.internalPointer()) : _nodes.front();
}

std::int64_t OutlineModel::rowOf(const QModelIndex& index) const
{
    return nodeOf(index).row;
}

QModelIndex OutlineModel::indexOfRow(std::int64_t row, int column) const
{
    if (row < 0 || row >= rows() || column < 0 || column >= columnCount()) {
        return {};
    }
    Node* node = _rows[static_cast<std::size_t>(row)];
    return createIndex(node->place, column, node);
}

Ref<NSObject> OutlineModel::itemAtRow(std::int64_t row) const
{
    return row >= 0 && row < rows() ? _rows[static_cast<std::size_t>(row)]->item : nullptr;
}

std::int64_t OutlineModel::rowForItem(const NSObject* item) const
{
    const auto found = _nodesOfItems.find(item);
    return found != _nodesOfItems.end() ? found->second->row : -1;
}

std::int64_t OutlineModel::levelOfRow(std::int64_t row) const
{
    return row >= 0 && row < rows() ? _rows[static_cast<std::size_t>(row)]->level : -1;
}

bool OutlineModel::isExpanded(std::int64_t row) const
{
    return row >= 0 && row < rows() && _rows[static_cast<std::size_t>(row)]->expanded;
}

bool OutlineModel::isExpandable(std::int64_t row) const
{
    return row >= 0 && row < rows() && isExpandable(*_rows[static_cast<std::size_t>(row)]);
}

bool OutlineModel::isExpandable(const Node& node) const
{
    if (view() == nullptr) {
        return false;
    }
    const Asking asking(*this);
    const Ref<NSObject> answering = outline().dataSource();
    auto* source = dynamic_cast<NSOutlineViewDataSource*>(answering.get());
    return source != nullptr && source->outlineView_isItemExpandable(&outline(), node.item.get());
}

void OutlineModel::setExpanded(const QModelIndex& index, bool expanded)
{
    if (std::exchange(nodeOf(index).expanded, expanded) != expanded) {
        layOutRows();
    }
}

QModelIndex OutlineModel::index(int row, int column, const QModelIndex& parent) const
{
    const std::vector<Node*>& children = nodeOf(parent).children;
    const bool exists = parent.column() <= 0 && row >= 0 && row < static_cast<int>(children.size()) &&
                        column >= 0 && column < columnCount();
    return exists ? createIndex(row, column, children[static_cast<std::size_t>(row)]) : QModelIndex();
}

QModelIndex OutlineModel::parent(const QModelIndex& index) const
{
    Node* parent = nodeOf(index).parent;
    return parent == nullptr || parent->parent == nullptr ? QModelIndex()
                                                          : createIndex(parent->place, 0, parent);
}

int OutlineModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0) {
        return 0;
    }
    Node& node = nodeOf(parent);
    loadChildren(node);
    return static_cast<int>(node.children.size());
}

bool OutlineModel::hasChildren(const QModelIndex& parent) const
{
    return parent.isValid() ? parent.column() == 0 && isExpandable(nodeOf(parent)) : rowCount() > 0;
}

Qt::ItemFlags OutlineModel::flags(const QModelIndex& index) const
{
    return TableModel::flags(index) & ~Qt::ItemFlags(Qt::ItemNeverHasChildren);
}
