#include "platform/appkit/NSOutlineView.h"

#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSTextFieldCell.h"
#include "platform/foundation/NSIndexSet.h"
#include "support/Accessibility.h"
#include "support/Tables.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <functional>
#include <map>

namespace
{

/// Names of items, those below each by the name of the one above.
using Tree = std::map<std::string, std::vector<std::string>>;

class TreeOwner : public NSObject, public NSOutlineViewDataSource, public NSOutlineViewDelegate
{
public:
    const std::vector<std::string>& below(NSObject* item)
    {
        return tree[item == nullptr ? "" : utf8(Ref<NSString>(dynamic_cast<NSString*>(item)))];
    }
    Ref<NSObject> item(const std::string& name)
    {
        Ref<NSObject>& item = _items[name];
        if (!item) {
            item = text(name.c_str());
        }
        return item;
    }

    std::int64_t outlineView_numberOfChildrenOfItem(NSOutlineView* /*view*/, NSObject* above) override
    {
        ++questions;
        onQuestion();
        return static_cast<std::int64_t>(below(above).size());
    }
    Ref<NSObject> outlineView_child_ofItem(NSOutlineView* /*view*/, std::int64_t index,
                                           NSObject* above) override
    {
        const std::string& name = below(above)[static_cast<std::size_t>(index)];
        return name != "null" ? item(name) : nullptr;
    }
    bool outlineView_isItemExpandable(NSOutlineView* /*view*/, NSObject* above) override
    {
        return !below(above).empty();
    }
    Ref<NSObject> outlineView_objectValueForTableColumn_byItem(NSOutlineView* /*view*/,
                                                               NSTableColumn* /*column*/,
                                                               NSObject* shown) override
    {
        return shown;
    }
    void outlineViewSelectionDidChange(NSOutlineView* /*view*/) override { ++selections; }

    Tree tree;
    int questions = 0;
    std::function<void()> onQuestion = [] {};
    int selections = 0;

private:
    std::map<std::string, Ref<NSObject>> _items;
};

class NSOutlineViewTest : public testing::Test
{
protected:
    NSOutlineViewTest()
    {
        owner->tree = {{"", {"A", "B", "C"}}, {"A", {"a1", "a2"}}, {"C", {"c1"}}, {"c1", {"d"}}};
        outline = tableOf<NSOutlineView>(*owner, make<NSTextFieldCell>());
        outline->setRowHeight(20.0);
        scrollView->setDocumentView(outline);
        scrollView->imageOfBounds(1.0); // lays it out
    }

    /// What the rows show, with a dot for each level.
    std::string rows() const
    {
        std::string all;
        for (std::int64_t row = 0; row < outline->numberOfRows(); ++row) {
            const Ref<NSObject> item = outline->itemAtRow(row);
            EXPECT_EQ(outline->rowForItem(item.get()), row);
            all += std::string(static_cast<std::size_t>(outline->levelForRow(row)), '.') +
                   utf8(Ref<NSString>(dynamic_cast<NSString*>(item.get()))) + ' ';
        }
        return all;
    }

    void click(NSPoint point)
    {
        QWidget& widget = *outline->widget();
        const QPointF place(point.x, point.y);
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
            QCoreApplication::sendEvent(&widget, &event);
        }
    }

    void key(int code)
    {
        QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier);
        QCoreApplication::sendEvent(scrollView->widget()->findChild<QAbstractItemView*>(), &event);
    }

    void expand(const char* name) { outline->expandItem(owner->item(name).get()); }
    void collapse(const char* name) { outline->collapseItem(owner->item(name).get()); }

    Ref<TreeOwner> owner = make<TreeOwner>();
    Ref<NSOutlineView> outline;
    Ref<NSScrollView> scrollView = make<NSScrollView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 223.0));
};

TEST_F(NSOutlineViewTest, ShowsWhatIsExpanded)
{
    EXPECT_EQ(rows(), "A B C ");
    expand("C");
    expand("B"); // has nothing below
    expand("c1");
    expand("a1"); // does not show
    EXPECT_EQ(rows(), "A B C .c1 ..d ");
    EXPECT_TRUE(outline->isItemExpanded(owner->item("C").get()));
    EXPECT_FALSE(outline->isItemExpanded(owner->item("A").get()));
    EXPECT_FALSE(outline->isItemExpanded(nullptr));
    EXPECT_EQ(outline->rowForItem(owner->item("a1").get()), -1);
    EXPECT_EQ(outline->rowForItem(nullptr), -1);
    EXPECT_EQ(outline->itemAtRow(5), nullptr);
    EXPECT_EQ(outline->levelForRow(-1), -1);
    EXPECT_EQ(outline->bounds().size.height, 200.0);
    collapse("C");
    EXPECT_EQ(rows(), "A B C ");
    expand("C");
    EXPECT_EQ(rows(), "A B C .c1 ..d ") << "as it was when it was collapsed";
    collapse("C");
    outline->reloadData();
    expand("C");
    EXPECT_EQ(rows(), "A B C .c1 ..d ") << "over a reload, too";
}

TEST_F(NSOutlineViewTest, KeepsWhatIsExpandedAndSelectedOverAReload)
{
    expand("A");
    expand("C");
    expand("c1");
    outline->selectRowIndexes_byExtendingSelection(
        NSIndexSet::indexSetWithIndex(static_cast<std::size_t>(outline->rowForItem(owner->item("d").get())))
            .get(),
        false);
    const int told = owner->selections;
    owner->tree[""] = {"C", "N", "A"};
    owner->tree["A"] = {};
    outline->reloadData();
    EXPECT_EQ(rows(), "C .c1 ..d N A ");
    EXPECT_EQ(outline->selectedRow(), 2);
    EXPECT_EQ(owner->selections, told + 1) << "another row";
    owner->tree["c1"] = {};
    outline->reloadData();
    EXPECT_EQ(outline->selectedRow(), -1);

    owner->tree = {{"", {"A"}}, {"A", {"A", "b", "b"}}};
    outline->reloadData();
    expand("A");
    EXPECT_EQ(outline->numberOfRows(), 4) << "an item at several places counts as at the first";
    EXPECT_EQ(outline->rowForItem(owner->item("b").get()), 2);
    outline->reloadData();
    EXPECT_EQ(outline->numberOfRows(), 4) << "and is expanded once";
    outline->setDataSource(nullptr);
    EXPECT_EQ(outline->numberOfRows(), 0);
}

TEST_F(NSOutlineViewTest, ExpandsByTriangleAndKeys)
{
    click({8.0, 10.0});
    EXPECT_EQ(rows(), "A .a1 .a2 B C ");
    EXPECT_EQ(outline->selectedRow(), -1) << "its triangle does not select it";
    click({20.0, 30.0});
    EXPECT_EQ(outline->selectedRow(), 1);
    click({8.0, 10.0});
    EXPECT_EQ(rows(), "A B C ");
    EXPECT_EQ(outline->selectedRow(), -1) << "what no longer shows is no longer selected";
    expand("A");
    EXPECT_EQ(outline->selectedRow(), -1) << "and not again when it shows";
    collapse("A");
    click({40.0, 50.0});
    EXPECT_EQ(outline->selectedRow(), 2);
    expand("A");
    EXPECT_EQ(outline->selectedRow(), 4) << "it goes where its item goes";
    collapse("A");
    key(Qt::Key_Right);
    EXPECT_EQ(rows(), "A B C .c1 ");
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    EXPECT_EQ(rows(), "A B C .c1 ..d ");
    key(Qt::Key_Left);
    EXPECT_EQ(rows(), "A B C .c1 ");
    EXPECT_EQ(outline->selectedRow(), 3);
}

TEST_F(NSOutlineViewTest, DrawsTrianglesAndIndentsTheFirstColumn)
{
    outline->addTableColumn(make<NSTableColumn>());
    outline->tableColumns()[0]->setWidth(60.0);
    expand("C");
    EXPECT_EQ(outline->frameOfCellAtColumn_row(0, 3), NSMakeRect(32.0, 60.0, 28.0, 20.0));
    EXPECT_EQ(outline->frameOfCellAtColumn_row(1, 3).origin.x, 60.0);
    outline->setIndentationPerLevel(40.0);
    EXPECT_EQ(outline->frameOfCellAtColumn_row(0, 3), NSMakeRect(60.0, 60.0, 0.0, 20.0)) << "no room";
    outline->setIndentationPerLevel(19.6);
    EXPECT_EQ(outline->frameOfCellAtColumn_row(0, 3).origin.x, 40.0);

    const auto triangle = [&](double top) {
        Operations all = operationsOf(*outline, NSMakeRect(0.0, top, 200.0, 20.0));
        std::erase_if(all, [](const std::string& one) { return !one.starts_with("fillPath"); });
        return all;
    };
    EXPECT_EQ(triangle(0.0), Operations{"fillPath move {7, 6} line {13, 10} line {7, 14} close"});
    EXPECT_EQ(triangle(20.0), Operations{});
    EXPECT_EQ(triangle(40.0), Operations{"fillPath move {6, 47} line {14, 47} line {10, 53} close"});
    EXPECT_EQ(triangle(60.0), Operations{"fillPath move {27, 66} line {33, 70} line {27, 74} close"});
}

TEST_F(NSOutlineViewTest, DrawsCellsThatReachLeftOfTheirFrames)
{
    expand("C");
    const Operations all = operationsOf(*outline, NSMakeRect(0.0, 60.0, 10.0, 20.0));
    EXPECT_TRUE(std::ranges::any_of(all, [](const auto& one) { return one.starts_with("drawText \"c1\""); }));
}

TEST_F(NSOutlineViewTest, TakesTreesThatAreNone)
{
    owner->tree = {{"", {"A", "null", "B"}}, {"A", {"A"}}};
    outline->reloadData(); // null is reported
    EXPECT_EQ(rows(), "A B ");
    click({40.0, 10.0});
    key(Qt::Key_Asterisk); // would be endless
    EXPECT_EQ(outline->numberOfRows(), 2);
    expand("A");
    EXPECT_EQ(outline->numberOfRows(), 3);

    owner->onQuestion = [this] { outline->reloadData(); };
    outline->reloadData();
    owner->onQuestion = [] {};
    EXPECT_EQ(outline->numberOfRows(), 3) << "not while it asks";
    owner->tree = {{"", {"B"}}};
    QCoreApplication::processEvents();
    EXPECT_EQ(rows(), "B ") << "but afterwards";
}

TEST_F(NSOutlineViewTest, SelectsManyRowsAtOnce)
{
    std::vector<std::string>& many = owner->tree["A"];
    for (int place = 0; place < 20'000; ++place) {
        many.push_back(std::to_string(place));
    }
    outline->setAllowsMultipleSelection(true);
    expand("A");
    const auto all = static_cast<std::size_t>(outline->numberOfRows());
    outline->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndexesInRange({0, all}).get(),
                                                   false);
    EXPECT_EQ(outline->selectedRowIndexes()->count(), all);
    outline->reloadData();
    EXPECT_EQ(outline->selectedRowIndexes()->count(), all);
    collapse("A");
    EXPECT_EQ(outline->selectedRowIndexes()->count(), 3U);
}

TEST_F(NSOutlineViewTest, AsksOnlyForWhatIsExpanded)
{
    std::vector<std::string>& many = owner->tree[""];
    many.clear();
    for (int place = 0; place < 2000; ++place) {
        many.push_back(std::to_string(place));
        owner->tree[many.back()] = {"x"};
    }
    owner->questions = 0;
    outline->reloadData();
    scrollView->imageOfBounds(1.0);
    outline->scrollRowToVisible(1999);
    scrollView->imageOfBounds(1.0);
    EXPECT_EQ(owner->questions, 1);
}

TEST_F(NSOutlineViewTest, SaysWhatIsExpanded)
{
    expand("C");
    scrollView->imageOfBounds(1.0);
    QAccessibleInterface& items = *accessible(*scrollView).child(0);
    QAccessibleInterface* above = items.tableInterface()->cellAt(2, 0);
    EXPECT_EQ(above->text(QAccessible::Name), "C");
    EXPECT_TRUE(above->state().expandable && above->state().expanded);
    EXPECT_FALSE(items.tableInterface()->cellAt(0, 0)->state().expanded);
    EXPECT_FALSE(items.tableInterface()->cellAt(1, 0)->state().expandable);
    EXPECT_EQ(items.tableInterface()->cellAt(3, 0)->text(QAccessible::Name), "c1");
}

} // namespace
