#pragma once

#include "platform/appkit/NSCell.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSOutlineView.h"
#include "platform/appkit/NSTableColumn.h"
#include "platform/appkit/NSTableView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/graphics/NSRecordingGraphicsContext.h"
#include "support/Drawing.h"
#include "window/ZuOutlineItem.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

/// Answers what a table asks, and writes down what it is told.
class TableOwner : public NSObject, public NSTableViewDataSource, public NSTableViewDelegate
{
public:
    explicit TableOwner(std::int64_t count) : rows(count) {}

    std::int64_t numberOfRowsInTableView(NSTableView* /*view*/) override { return rows; }
    void tableView_willDisplayCell_forTableColumn_row(NSTableView* /*view*/, NSCell* cell,
                                                      NSTableColumn* /*column*/, std::int64_t row) override
    {
        onDisplay(*cell, row);
    }
    void tableView_didClickTableColumn(NSTableView* /*view*/, NSTableColumn* /*column*/) override
    {
        messages.emplace_back("column");
    }

    // What cells and headers send.
    void setCheckItem(NSObject* number) { hear("setCheckItem ", number); }
    void setHeaderCheckItem(NSObject* number) { hear("setHeaderCheckItem ", number); }

    const ClassTable& classTable() const override
    {
        static constexpr std::array kSelectors{
            selector<&TableOwner::setCheckItem>("setCheckItem:"),
            selector<&TableOwner::setHeaderCheckItem>("setHeaderCheckItem:")};
        static constexpr ClassTable kTable{"TableOwner", &NSObject::table, {}, kSelectors};
        return kTable;
    }

    std::int64_t rows;
    std::function<void(NSCell& cell, std::int64_t row)> onDisplay = [](NSCell&, std::int64_t) {};
    std::function<void()> onMessage = [] {};
    std::vector<std::string> messages; // "setCheckItem 3"

private:
    void hear(const std::string& message, NSObject* number)
    {
        messages.push_back(message + std::to_string(dynamic_cast<NSNumber&>(*number).integerValue()));
        onMessage();
    }
};

/// Answers what an outline of items asks.
class OutlineOwner : public NSObject, public NSOutlineViewDataSource, public NSOutlineViewDelegate
{
public:
    std::int64_t outlineView_numberOfChildrenOfItem(NSOutlineView* /*view*/, NSObject* item) override
    {
        return itemOf(item).numberOfChildren();
    }
    Ref<NSObject> outlineView_child_ofItem(NSOutlineView* /*view*/, std::int64_t index,
                                           NSObject* item) override
    {
        return itemOf(item).childAtIndex(static_cast<std::uint64_t>(index));
    }
    bool outlineView_isItemExpandable(NSOutlineView* /*view*/, NSObject* item) override
    {
        return itemOf(item).numberOfChildren() > 0;
    }
    void outlineView_willDisplayCell_forTableColumn_item(NSOutlineView* /*view*/, NSCell* cell,
                                                         NSTableColumn* /*column*/, NSObject* item) override
    {
        onDisplay(*cell, itemOf(item));
    }

    /// Adds a topmost item, or one below another.
    Ref<ZuOutlineItem> add(const char* name, ZuOutlineItem* parent = nullptr)
    {
        Ref<ZuOutlineItem> item = make<ZuOutlineItem>()->init();
        item->setName(text(name));
        itemOf(parent).addChild(item);
        return item;
    }

    std::function<void(NSCell& cell, ZuOutlineItem& item)> onDisplay = [](NSCell&, ZuOutlineItem&) {};

private:
    ZuOutlineItem& itemOf(NSObject* item) const
    {
        return item != nullptr ? dynamic_cast<ZuOutlineItem&>(*item) : *_root;
    }

    Ref<ZuOutlineItem> _root = make<ZuOutlineItem>()->init();
};

/// A table of 200 points by 100 in no scroll view, which `owner` has to outlive, with one column, as wide,
/// that `cell` draws.
template <class Table = NSTableView> Ref<Table> tableOf(NSObject& owner, Ref<NSCell> cell)
{
    Ref<Table> table = make<Table>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 100.0));
    const Ref<NSTableColumn> column = make<NSTableColumn>();
    column->setWidth(200.0);
    column->setDataCell(std::move(cell));
    table->addTableColumn(column);
    table->setDelegate(&owner);
    table->setDataSource(&owner);
    return table;
}

/// What `cell` draws when it is shown in `frame` of `view`.
inline Operations operationsOf(NSCell& cell, NSRect frame, NSView& view)
{
    const auto context = make<NSRecordingGraphicsContext>(view.isFlipped());
    const NSGraphicsContext::Scope scope(*context);
    cell.drawWithFrame_inView(frame, &view);
    return context->operations();
}

/// A press of the left button, or what else happens to it, at a point of `view`.
inline Ref<NSEvent> eventAt(const NSView& view, NSPoint point, NSEventType type = NSEventType::LeftMouseDown)
{
    return NSEvent::mouseEventWithType_location_window(type, view.convertPoint_toView(point, nullptr),
                                                       nullptr);
}
