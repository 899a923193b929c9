#include "window/PelSmsTableCheckImageCell.h"

#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSAttributes.h"
#include "platform/graphics/NSFont.h"
#include "support/Tables.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

/// A subview that is told when it no longer shows.
class Leaver final : public NSView
{
public:
    void viewDidHide() override { onHide(); }

    std::function<void()> onHide = [] {};
};

/// Writes down what presses hit.
class NotingCell final : public PelSmsTableCheckImageCell
{
public:
    NSCellHitResult hitTestForEvent_inRect_ofView(NSEvent* event, NSRect frame, NSView* view) override
    {
        hits.push_back(PelSmsTableCheckImageCell::hitTestForEvent_inRect_ofView(event, frame, view));
        return hits.back();
    }

    std::vector<NSCellHitResult> hits;
};

class PelSmsTableCheckImageCellTest : public testing::Test
{
protected:
    PelSmsTableCheckImageCellTest()
    {
        cell->setTitle(text("Anna"));
        cell->setFrontImage(picture.get());
        cell->setEditNameFlag(true);
    }

    static double widthInArial13(const char* words)
    {
        return text(words)
            ->sizeWithAttributes({{NSFontAttributeName, NSFont::fontWithName_size("Arial", 13.0)}})
            .width;
    }

    /// What an event hits, at a place of the table, whatever the cell's frame.
    NSCellHitResult hit(double x, NSEventType type = NSEventType::LeftMouseDown)
    {
        return cell->hitTestForEvent_inRect_ofView(eventAt(*table, {x, 10.0}, type).get(),
                                                   NSMakeRect(90.0, 0.0, 9.0, 9.0), table.get());
    }
    std::size_t subviews() const { return table->subviews().size(); }

    Ref<NSImage> picture = blankImage("face", 30.0, 20.0);
    Ref<TableOwner> owner = make<TableOwner>(3);
    Ref<NotingCell> cell = make<NotingCell>();
    Ref<NSTableView> table = tableOf(*owner, cell);
};

TEST_F(PelSmsTableCheckImageCellTest, TakesPressesOnPictureAndTitleWhileNamesAreEdited)
{
    struct Case {
        const char* title;
        bool hasPicture;
        bool edits;
    };
    for (const auto& [title, hasPicture, edits] :
         {Case{"Anna", true, true}, {"Anna", false, true}, {"", true, true}, {"Anna", true, false}}) {
        cell->setTitle(text(title));
        cell->setFont(NSFont::fontWithName_size("Arial Bold", 30.0)); // which does not count
        cell->setFrontImage(hasPicture ? picture.get() : nullptr);
        cell->setEditNameFlag(edits);
        const double last = (hasPicture ? 30.0 : 0.0) + 5.0 + widthInArial13(title);
        const double behind = std::nextafter(last, std::numeric_limits<double>::infinity());
        const NSCellHitResult taken = edits ? NSCellHitContentArea : NSCellHitNone;
        for (const auto& [x, result] : {std::pair{-5.0, taken}, {last, taken}, {behind, NSCellHitNone}}) {
            table->addSubview(make<NSView>());
            table->addSubview(make<NSView>());
            EXPECT_EQ(hit(x), result) << title << " at " << x;
            EXPECT_EQ(subviews(), 0U) << "whatever is hit";
            table->addSubview(make<NSView>());
            EXPECT_EQ(hit(x, NSEventType::LeftMouseUp), NSCellHitContentArea);
            EXPECT_EQ(subviews(), 1U);
        }
    }
    cell->setEditNameFlag(true);
    EXPECT_TRUE(dynamic_cast<PelSmsTableCheckImageCell&>(*cell->copyWithZone(nullptr)).editNameFlag());
    cell->awakeFromNib();
    EXPECT_FALSE(cell->editNameFlag());
}

TEST_F(PelSmsTableCheckImageCellTest, AnswersTheFrameThatItWasGivenForItsTitle)
{
    const NSRect frame = NSMakeRect(3.0, 4.0, 50.0, 30.0);
    EXPECT_EQ(cell->drawTitle_withFrame_inView(cell->attributedTitle().get(), frame, table.get()), frame);
}

TEST_F(PelSmsTableCheckImageCellTest, MeasuresPressesFromTheLeftEdgeOfTheTable)
{
    const Ref<NSTableColumn> second = make<NSTableColumn>();
    second->setWidth(200.0);
    const Ref<NotingCell> right = make<NotingCell>();
    right->setEditNameFlag(true);
    right->setFrontImage(picture.get());
    right->setTitle(text("As long as it takes to reach into the second column"));
    second->setDataCell(right);
    table->addTableColumn(second);
    const double last = 35.0 + widthInArial13(utf8(right->title()).c_str());
    ASSERT_GT(last, 200.0);
    ASSERT_LT(last, 399.0);
    for (const double x : {200.0, last, last + 1.0}) {
        table->mouseDown(eventAt(*table, {x, 25.0}).get());
        table->mouseUp(eventAt(*table, {x, 25.0}, NSEventType::LeftMouseUp).get());
    }
    EXPECT_EQ(right->hits, (std::vector{NSCellHitContentArea, NSCellHitContentArea, NSCellHitNone}));
    EXPECT_TRUE(cell->hits.empty());
}

TEST_F(PelSmsTableCheckImageCellTest, OutlivesWhatItsPressTakesAway)
{
    const Ref<NSWindow> window = make<NSWindow>()->initWithContentRect_styleMask(
        NSMakeRect(0.0, 0.0, 200.0, 100.0), NSWindowStyleMaskTitled);
    Ref<NSScrollView> scrollView = make<NSScrollView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 100.0));
    scrollView->setDocumentView(table);
    window->setContentView(scrollView);
    window->makeKeyAndOrderFront();

    // The first changes the list of those that are taken away, and switches the editing off.
    const Ref<Leaver> field = make<Leaver>();
    field->setFrame(NSMakeRect(0.0, 0.0, 50.0, 17.0));
    const Ref<NSView> sibling = make<NSView>();
    const Ref<NSView> late = make<NSView>();
    table->addSubview(field);
    table->addSubview(sibling);
    field->onHide = [&] {
        sibling->removeFromSuperview();
        table->addSubview(late);
        cell->setEditNameFlag(false);
    };
    EXPECT_EQ(hit(6.0), NSCellHitNone) << "it is edited no longer";
    EXPECT_EQ(table->subviews(), std::vector<Ref<NSView>>{late});

    // The last ones that have a hold of cell and table.
    cell->setEditNameFlag(true);
    const Weak<NSTableView> watched = table;
    const Weak<NotingCell> watchedCell = cell;
    const Ref<NSEvent> event = eventAt(*table, {6.0, 10.0});
    NSTableView* const pressed = table.get();
    table->addSubview(field);
    field->onHide = [&] {
        window->setContentView(nullptr);
        scrollView = nullptr;
        cell = nullptr;
        table = nullptr;
    };
    pressed->mouseDown(event.get());
    EXPECT_EQ(watched.get(), nullptr);
    EXPECT_EQ(watchedCell.get(), nullptr);
}

} // namespace
