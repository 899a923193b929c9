#include "window/ZuTableCheckImageCell.h"

#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSFont.h"
#include "support/Tables.h"

#include <gtest/gtest.h>

namespace
{

class ZuTableCheckImageCellTest : public testing::Test
{
protected:
    ZuTableCheckImageCellTest()
    {
        cell->awakeFromNib();
        cell->loadImage_withSecond_withThird(unchecked.get(), checked.get(), disabled.get());
        cell->setStringValue(text("Lake"));
    }

    /// What is drawn for a state: an image, if there is one, and the text at `x`.
    static Operations expected(const char* image, double x)
    {
        const Ref<NSFont> font = NSFont::fontWithName_size("Arial", 12.0);
        const double height = text("Lake")->sizeWithAttributes({{NSFontAttributeName, font}}).height;
        Operations operations;
        if (*image != '\0') {
            operations.push_back("drawImage " + std::string(image) +
                                 " from {{0, 0}, {0, 0}} operation 2 fraction 1 respectFlipped");
        }
        operations.push_back("drawText \"Lake\" at " + NSStringFromPoint({x, 20.0 + (24.0 - height) * 0.5}) +
                             " font \"Arial\" 12");
        return operations;
    }
    Operations drawn() { return operationsOf(*cell, NSMakeRect(3.0, 20.0, 30.0, 24.0), *table); }

    NSCellHitResult hit(NSPoint point, NSEventType type = NSEventType::LeftMouseDown)
    {
        return cell->hitTestForEvent_inRect_ofView(eventAt(*table, point, type).get(),
                                                   NSMakeRect(30.0, 0.0, 9.0, 9.0), table.get());
    }

    Ref<NSImage> unchecked = blankImage("no", 16.0, 16.0);
    Ref<NSImage> checked = blankImage("yes", 18.0, 18.0);
    Ref<NSImage> disabled = blankImage("grey", 12.0, 15.0);
    Ref<TableOwner> owner = make<TableOwner>(3);
    Ref<ZuTableCheckImageCell> cell = make<ZuTableCheckImageCell>();
    Ref<NSTableView> table = tableOf(*owner, cell);
};

const char* const kNo = "\"no\" {{6, 24}, {16, 16}}";
const char* const kYes = "\"yes\" {{6, 23}, {18, 18}}";
const char* const kGrey = "\"grey\" {{6, 24.5}, {12, 15}}";

TEST_F(ZuTableCheckImageCellTest, DrawsTheImageOfItsStateAndItsText)
{
    struct Case {
        std::int32_t state;
        const char* image;
        double x; // of the text
    };
    for (const auto& [state, image, x] :
         {Case{0, kNo, 26.0}, {1, kYes, 28.0}, {2, kGrey, 22.0}, {3, "", 10.0}, {-1, "", 10.0}}) {
        cell->setIsChecked(state);
        cell->setEnabled(true);
        EXPECT_EQ(drawn(), expected(image, x)) << state;
        EXPECT_EQ(operationsOf(*cell->copyWithZone(nullptr), NSMakeRect(3.0, 20.0, 30.0, 24.0), *table),
                  expected(image, x));
        cell->setEnabled(false);
        EXPECT_EQ(drawn(), expected(kGrey, 22.0)) << state;
        EXPECT_EQ(cell->accessibilityChecked(), state != 0);
    }
}

TEST_F(ZuTableCheckImageCellTest, KeepsTheImagesThatItHasWhileTheyLast)
{
    const Ref<NSImage> other = blankImage("other", 16.0, 16.0);
    cell->loadImage_withSecond_withThird(other.get(), other.get(), other.get());
    EXPECT_EQ(drawn(), expected(kNo, 26.0));
    disabled = nullptr;
    cell->setEnabled(false);
    EXPECT_EQ(drawn(), expected("", 10.0)) << "it is not kept alive";
    cell->loadImage_withSecond_withThird(other.get(), other.get(), other.get());
    EXPECT_EQ(drawn(), expected("\"other\" {{6, 24}, {16, 16}}", 26.0));

    cell->setIsChecked(1);
    cell->setImageOffset(20);
    cell->awakeFromNib();
    EXPECT_EQ(cell->isChecked(), 0);
    EXPECT_EQ(cell->imageOffset(), 6);
    cell->loadImage_withSecond_withThird(nullptr, checked.get(), checked.get());
    testing::internal::CaptureStderr();
    EXPECT_EQ(drawn(), Operations{});
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZuTableCheckImageCell drawWithFrame:inView:: checkImage[0] has to be loaded before\n");
}

TEST_F(ZuTableCheckImageCellTest, TellsOfPressesOnTheImage)
{
    struct Case {
        std::int32_t state;
        double x;
        NSCellHitResult result;
    };
    for (const auto& [state, x, result] : {Case{0, 6.0, NSCellHitNone},
                                           {0, 6.5, NSCellHitContentArea},
                                           {0, 23.5, NSCellHitContentArea},
                                           {0, 24.0, NSCellHitNone},
                                           {1, 25.5, NSCellHitContentArea},
                                           {1, 26.0, NSCellHitNone},
                                           {3, 7.5, NSCellHitContentArea},
                                           {3, 8.0, NSCellHitNone}}) {
        cell->setIsChecked(state);
        owner->messages.clear();
        table->addSubview(make<NSView>());
        table->addSubview(make<NSView>());
        EXPECT_EQ(hit({x, 20.0}), result) << x;
        EXPECT_TRUE(table->subviews().empty()) << "hit or miss";
        EXPECT_EQ(owner->messages.size(), result) << x;
        EXPECT_EQ(cell->isChecked(), state);
    }
    owner->messages.clear();
    table->addSubview(make<NSView>());
    EXPECT_EQ(hit({6.5, 20.0}, NSEventType::LeftMouseUp), NSCellHitContentArea);
    EXPECT_EQ(table->subviews().size(), 1U);
    EXPECT_EQ(owner->messages.size(), 0U);

    table->mouseDown(eventAt(*table, {7.0, 40.0}).get());
    hit({7.0, 60.0}); // below the last row
    cell->setEnabled(false);
    cell->performCheckOfRow_inView(1, table.get());
    EXPECT_EQ(owner->messages,
              (std::vector<std::string>{"setCheckItem 2", "setCheckItem -1", "setCheckItem 1"}));

    table->setDelegate(nullptr);
    EXPECT_EQ(hit({7.0, 20.0}), NSCellHitContentArea) << "no one is told";
    const Ref<NSView> noTable = make<NSView>();
    EXPECT_EQ(
        cell->hitTestForEvent_inRect_ofView(eventAt(*noTable, {7.0, 0.0}).get(), NSZeroRect, noTable.get()),
        NSCellHitContentArea);
}

} // namespace
