// Tables under a real pointer, at two pixels to the point, so that it can stand on half a point.

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSOutlineView.h"
#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSIndexSet.h"
#include "platform/foundation/NSString.h"
#include "real/Desktop.h"
#include "support/Tables.h"
#include "window/ZuCheckImageCell.h"
#include "window/ZuCheckTableHeaderView.h"
#include "window/ZuOutlineItem.h"
#include "window/ZuOutlineView.h"
#include "window/ZuTableCheckImageCell.h"
#include "window/ZuTableHeaderCell.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QWidget>

#include <cmath>
#include <set>

namespace
{

constexpr double kRowHeight = 20.0;
constexpr double kWidth = 400.0;
constexpr double kHeight = 300.0;

/// A table of 100,000 rows with a check column and a select-all header, scrolled to row 50,000.
class NSTableViewRealTest : public testing::Test
{
protected:
    NSTableViewRealTest()
    {
        check->awakeFromNib();
        check->loadImage_withSecond_withThird(images[0].get(), images[1].get(), images[2].get());
        owner->onDisplay = [this](NSCell& cell, std::int64_t row) {
            if (auto* shown = dynamic_cast<ZuTableCheckImageCell*>(&cell)) {
                shown->setIsChecked(checked.contains(row) ? 1 : 0);
            }
            cell.setStringValue(text(("row " + std::to_string(row)).c_str()));
        };
        table = tableOf(*owner, check);
        table->tableColumns()[0]->setWidth(120.0);
        const Ref<NSTableColumn> names = make<NSTableColumn>();
        table->addTableColumn(names);
        for (const Ref<NSTableColumn>& column : table->tableColumns()) {
            column->setHeaderCell(make<ZuTableHeaderCell>());
        }
        table->setRowHeight(kRowHeight);
        table->setAllowsMultipleSelection(true);
        header->awakeFromNib();
        table->setHeaderView(header);
        scrollView->setDocumentView(table);
        window->setContentView(scrollView);
        desktop::movePointer(QPoint(0, 0));
        window->makeKeyAndOrderFront();
        desktop::focus(scrollView->widget()->window()->winId());
        EXPECT_TRUE(desktop::waitUntil([&] { return window->isKeyWindow(); }));
        table->scrollRowToVisible(table->numberOfRows() - 1);
        table->scrollRowToVisible(50'000);
        EXPECT_EQ(table->visibleRect().origin.y, 50'000 * kRowHeight);
    }

    /// Where a point of a view is on the screen, in pixels.
    QPoint onScreen(const NSView& view, NSPoint point) const
    {
        const NSPoint place = scrollView->convertPoint_fromView(point, &view);
        const QPoint corner = scrollView->widget()->mapToGlobal(QPoint(0, 0));
        return {static_cast<int>(std::lround((corner.x() + place.x) * 2.0)),
                static_cast<int>(std::lround((corner.y() + place.y) * 2.0))};
    }

    /// Clicks and waits until the table has dealt with it.
    void click(const NSView& view, NSPoint point)
    {
        desktop::movePointer(onScreen(view, point));
        desktop::xdotool({"click", "1"});
        desktop::xdotool({"key", "F1"}); // which comes behind
        const int before = keys;
        EXPECT_TRUE(desktop::waitUntil([&] { return keys > before; }));
    }

    void key(const char* name)
    {
        desktop::xdotool({"key", name, "F1"});
        const int before = keys;
        EXPECT_TRUE(desktop::waitUntil([&] { return keys > before; }));
    }

    std::vector<std::string> takeMessages() { return std::exchange(owner->messages, {}); }

    /// A table that counts what keys it has no use for.
    class Keyed : public NSScrollView
    {
    public:
        explicit Keyed(int& count) : _count(count) {}
        bool keyDown(NSEvent* /*event*/) override
        {
            ++_count;
            return true;
        }

    private:
        int& _count;
    };

    int keys = 0;
    Ref<NSApplication> application = NSApplication::sharedApplication();
    std::vector<Ref<NSImage>> images{blankImage("no", 16.0, 16.0), blankImage("yes", 16.0, 16.0),
                                     blankImage("off", 16.0, 16.0)};
    std::set<std::int64_t> checked;
    Ref<TableOwner> owner = make<TableOwner>(100'000);
    Ref<ZuTableCheckImageCell> check = make<ZuTableCheckImageCell>();
    Ref<NSTableView> table;
    Ref<ZuCheckTableHeaderView> header =
        make<ZuCheckTableHeaderView>()->initWithFrame(NSMakeRect(0.0, 0.0, kWidth, 24.0));
    Ref<NSScrollView> scrollView = make<Keyed>(keys);
    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(50.0, 60.0, kWidth, kHeight), 0);
};

using Messages = std::vector<std::string>;

TEST_F(NSTableViewRealTest, ReportsTheRowWhoseCheckIsClicked)
{
    struct Case {
        double x;
        double y; // from the top of row 50,000
        const char* message;
        std::int64_t selected;
    };
    for (const auto& [x, y, message, selected] : {Case{6.0, 10.0, nullptr, 50'000},
                                                  {6.5, 10.0, "setCheckItem 50000", -1},
                                                  {23.5, 10.0, "setCheckItem 50000", -1},
                                                  {24.0, 10.0, nullptr, 50'000},
                                                  {15.0, 0.0, "setCheckItem 50000", -1},
                                                  {15.0, 19.5, "setCheckItem 50000", -1},
                                                  {15.0, 20.0, "setCheckItem 50001", -1},
                                                  {15.0, 40.5, "setCheckItem 50002", -1},
                                                  {130.0, 60.0, nullptr, 50'003}}) {
        table->selectRowIndexes_byExtendingSelection(nullptr, false);
        click(*table, {x, 50'000 * kRowHeight + y});
        EXPECT_EQ(takeMessages(), message != nullptr ? Messages{message} : Messages{}) << x << ", " << y;
        EXPECT_EQ(table->selectedRow(), selected) << x << ", " << y;
        EXPECT_EQ(table->clickedRow(), -1);
    }
    EXPECT_EQ(table->visibleRect().origin.y, 50'000 * kRowHeight) << "nothing is scrolled by it";

    desktop::movePointer(onScreen(*table, {15.0, 50'000 * kRowHeight + 10.0}));
    desktop::xdotool({"click", "--repeat", "3", "--delay", "20", "1"});
    EXPECT_TRUE(desktop::waitUntil([&] { return owner->messages.size() == 3; }))
        << "each of several quick ones";
}

TEST_F(NSTableViewRealTest, SelectsAllByTheHeadersImageWithoutSorting)
{
    struct Case {
        double x;
        const char* message;
        std::int32_t isChecked;
    };
    for (const auto& [x, message, isChecked] : {Case{0.0, "setHeaderCheckItem 1", 1},
                                                {23.5, "setHeaderCheckItem 0", 0},
                                                {24.0, "column", 0},
                                                {200.0, "column", 0}}) {
        click(*header, {x, 12.0});
        EXPECT_EQ(takeMessages(), Messages{message}) << x;
        EXPECT_EQ(header->isChecked(), isChecked);
        EXPECT_EQ(table->selectedRow(), -1);
    }
}

TEST_F(NSTableViewRealTest, ResizesAColumnBetweenTwoHeaders)
{
    desktop::movePointer(onScreen(*header, {120.0, 12.0}));
    desktop::press();
    desktop::movePointer(onScreen(*header, {140.0, 12.0}));
    desktop::movePointer(onScreen(*header, {160.0, 12.0}));
    desktop::release();
    EXPECT_TRUE(desktop::waitUntil([&] { return table->tableColumns()[0]->width() == 160.0; }));
    EXPECT_EQ(table->rectOfColumn(1).origin.x, 160.0);
    EXPECT_EQ(takeMessages(), Messages{}) << "no click";
}

TEST_F(NSTableViewRealTest, GoesThroughTheRowsByKeys)
{
    click(*table, {200.0, 50'000 * kRowHeight + 10.0});
    EXPECT_TRUE(table->hasKeyboard());
    key("Down");
    EXPECT_EQ(table->selectedRow(), 50'001);
    key("space");
    EXPECT_EQ(takeMessages(), Messages{"setCheckItem 50001"});
    key("shift+Down");
    EXPECT_TRUE(
        table->selectedRowIndexes()->isEqual(NSIndexSet::indexSetWithIndexesInRange({50'001, 2}).get()));
    key("End");
    EXPECT_EQ(table->selectedRow(), 99'999);
    EXPECT_EQ(
        table->rowAtPoint({0.0, table->visibleRect().origin.y + table->visibleRect().size.height - 1.0}),
        99'999);

    const QColor strong(64, 128, 217); // of a selected row, right of its text
    const auto colorOfLastRow = [&] {
        return desktop::colorOnScreen(onScreen(*table, {350.0, 100'000 * kRowHeight - 10.0}) / 2);
    };
    EXPECT_TRUE(desktop::waitUntil([&] { return colorOfLastRow() == strong; }));
}

TEST_F(NSTableViewRealTest, ExpandsAnOutlineAndChecksItsItems)
{
    const Ref<OutlineOwner> items = make<OutlineOwner>();
    const Ref<ZuOutlineItem> kind = items->add("Photos");
    kind->addChild(make<ZuOutlineItem>()->init());
    const Ref<ZuOutlineItem> below = kind->childAtIndex(0);
    const Ref<ZuCheckImageCell> cell = make<ZuCheckImageCell>();
    cell->setImage(images[0]);
    items->onDisplay = [](NSCell& shown, ZuOutlineItem& item) {
        dynamic_cast<ZuCheckImageCell&>(shown).setItem(&item);
    };
    const Ref<ZuOutlineView> outline = tableOf<ZuOutlineView>(*items, cell);
    outline->setRowHeight(kRowHeight);
    scrollView->setDocumentView(outline);
    click(*outline, {8.0, 10.0});
    EXPECT_EQ(outline->rowForItem(below.get()), 1);
    // Of the topmost level the check begins at 16, of the one below at 32.
    struct Case {
        double x;
        std::int8_t kindChecked;
        std::int8_t belowChecked;
    };
    for (const auto& [x, kindChecked, belowChecked] :
         {Case{15.5, 1, 1}, {16.0, 0, 1}, {31.5, 1, 1}, {32.0, 1, 0}, {47.5, 1, 1}, {48.0, 1, 1}}) {
        if (x != 15.5) { // the triangle's
            click(*outline, {x, 10.0});
        }
        click(*outline, {x, 30.0});
        EXPECT_EQ(kind->isChecked(), kindChecked) << x;
        EXPECT_EQ(below->isChecked(), belowChecked) << x;
    }
    key("space");
    EXPECT_EQ(below->isChecked(), 0);
    key("Left");
    key("Left");
    EXPECT_EQ(outline->numberOfRows(), 1);
}

} // namespace
