#pragma once

// The items of an outline as the toolkit asks for them. Private to the platform layer.

#include "platform/foundation/Ref.h"
#include "platform/foundation/Weak.h"
#include "platform/qt/TableModel.h"

#include <deque>
#include <unordered_map>
#include <vector>

class NSObject;
class NSOutlineView;

/// Asks the data source for the items below one when that is expanded, and knows which row shows which item.
class OutlineModel final : public TableModel
{
public:
    explicit OutlineModel(NSOutlineView& view);

    void load(std::vector<NSRange>& selected, std::int64_t& current) override;
    QModelIndexList takeRestored() override;
    void setExpanded(const QModelIndex& index, bool expanded) override;
    QItemSelection selectionOf(NSRange rows) const override;
    std::vector<NSRange> rowsOf(const QItemSelection& selection) const override;
    std::int64_t rows() const override { return static_cast<std::int64_t>(_rows.size()); }
    std::int64_t rowOf(const QModelIndex& index) const override;
    QModelIndex indexOfRow(std::int64_t row, int column = 0) const override;

    Ref<NSObject> itemAtRow(std::int64_t row) const;
    /// -1 for null and if no row shows it.
    std::int64_t rowForItem(const NSObject* item) const;
    /// -1 if there is no such row.
    std::int64_t levelOfRow(std::int64_t row) const;
    bool isExpanded(std::int64_t row) const;
    /// Whether the data source says so of the item.
    bool isExpandable(std::int64_t row) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Node {
        Ref<NSObject> item = nullptr; // as for the one above the topmost
        Node* parent = nullptr;
        int place = 0;  // among its parent's children
        int level = -1; // of the topmost, 0
        int row = -1;   // that shows it
        bool loaded = false;
        bool expanded = false;
        std::vector<Node*> children = {};
    };

    NSOutlineView& outline() const;
    Node& nodeOf(const QModelIndex& index) const;
    /// Asks for the items below, unless that has been done.
    void loadChildren(Node& node) const;
    bool isExpandable(const Node& node) const;
    /// Finds out anew which rows there are.
    void layOutRows();

    // Children are asked for when the toolkit first wants to know of them, which changes nothing that it
    // knows.
    mutable std::deque<Node> _nodes; // the one above the topmost is the first
    mutable std::unordered_map<const NSObject*, Node*> _nodesOfItems;
    /// Items that were expanded before the last load and have not been seen since; not kept alive.
    mutable std::unordered_map<const NSObject*, Weak<NSObject>> _remembered;
    mutable std::vector<Node*> _restored; // which the toolkit has not heard of
    std::vector<Node*> _rows;
};
