#pragma once

// The rows of a table as the toolkit asks for them. Private to the platform layer.

#include "platform/appkit/NSTableView.h"
#include "platform/foundation/NSRange.h"
#include "platform/qt/ViewPeer.h"

#include <QAbstractItemModel>
#include <QItemSelection>

#include <cstdint>
#include <limits>
#include <vector>

/// Answers for a table's rows what its data source and its cells say; keeps only how many rows there are.
class TableModel : public QAbstractItemModel
{
public:
    /// What all rows may come to, in points, and how many there may be: the toolkit counts in integers, and
    /// keeps note of each row.
    static constexpr double kHighest = std::numeric_limits<int>::max();
    static constexpr std::int64_t kMostRows = 10'000'000;

    explicit TableModel(NSTableView& view) : _view(&view) {}

    /// Whether the data source or the delegate is being asked, so that what was said must stay.
    bool isAsking() const { return _asking > 0; }

    /// To be called when the view goes: nothing reaches it any more.
    void abandon() { _view = nullptr; }

    /// Asks the data source for all rows again, between the beginning and the end of a reset. `selected` and
    /// `current` (-1 for none) follow what these rows showed, so far as it is still there.
    virtual void load(std::vector<NSRange>& selected, std::int64_t& current);
    /// What has become expanded since it was so before a reset, for the toolkit to hear of; each once.
    virtual QModelIndexList takeRestored() { return {}; }
    /// To be called when the toolkit has done so to what an index shows.
    virtual void setExpanded(const QModelIndex& /*index*/, bool /*expanded*/) {}

    virtual std::int64_t rows() const { return _rows; }
    /// The row that shows an index; -1 if none does.
    virtual std::int64_t rowOf(const QModelIndex& index) const;
    /// The index that a row shows; invalid if there is no such row or column.
    virtual QModelIndex indexOfRow(std::int64_t row, int column = 0) const;

    /// Ranges of rows to and from what the toolkit selects.
    virtual QItemSelection selectionOf(NSRange rows) const;
    virtual std::vector<NSRange> rowsOf(const QItemSelection& selection) const;

    /// Tells the toolkit, and through it assistive technology, that a row says something new.
    void rowDidChange(std::int64_t row);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // Columns are added by the table, which keeps them.
    using QAbstractItemModel::beginInsertColumns;
    using QAbstractItemModel::beginResetModel;
    using QAbstractItemModel::endInsertColumns;
    using QAbstractItemModel::endResetModel;

protected:
    NSTableView* view() const { return _view; }

    /// To be alive while the data source or the delegate is asked: nothing is destroyed or loaded anew.
    class Asking
    {
    public:
        explicit Asking(const TableModel& model);
        ~Asking();
        Asking(const Asking&) = delete;
        Asking& operator=(const Asking&) = delete;

    private:
        EventInProgress _progress;
        Ref<NSTableView> _view;
        const TableModel& _model;
    };
    /// As many of `count` rows as there may be.
    std::int64_t possible(std::int64_t count) const;

private:
    NSTableView* _view; // null once the view is gone
    int _rows = 0;
    mutable int _asking = 0;
};
