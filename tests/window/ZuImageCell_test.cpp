#include "window/ZuImageCell.h"

#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSIndexSet.h"
#include "platform/graphics/NSFont.h"
#include "support/Tables.h"

#include <gtest/gtest.h>

namespace
{

class ZuImageCellTest : public testing::Test
{
protected:
    ZuImageCellTest()
    {
        table->setRowHeight(50.0);
        table->setAllowsMultipleSelection(true);
        cell->setImage(blankImage("lake", 20.0, 10.0));
        cell->setDescription(caption.get());
        cell->setOffset(40);
    }

    /// What the cell draws in the middle of a row.
    Operations drawn(double row)
    {
        return operationsOf(*cell, NSMakeRect(10.0, row * 50.0 + 10.0, 100.0, 30.0), *table);
    }
    /// In that row, in Arial of that size.
    Operations expected(int row, double fontSize, const std::string& color) const
    {
        const Ref<NSFont> shownFont = NSFont::fontWithName_size("Arial", fontSize);
        const double height = caption->sizeWithAttributes({{NSFontAttributeName, shownFont}}).height;
        const double top = row * 50.0 + 10.0;
        return {"drawImage \"lake\" " + NSStringFromRect(NSMakeRect(50.0, top + 10.0, 20.0, 10.0)) +
                    " from {{0, 0}, {0, 0}} operation 2 fraction 1 respectFlipped",
                "drawText \"Lake\" at " + NSStringFromPoint({50.0, top + (30.0 - height) * 0.5}) +
                    " font \"Arial\" " + NSStringFromNumber(fontSize) + " color " + color};
    }

    Ref<NSString> caption = text("Lake");
    Ref<NSFont> font = NSFont::fontWithName_size("Arial", 14.0);
    Ref<TableOwner> owner = make<TableOwner>(4);
    Ref<ZuImageCell> cell = make<ZuImageCell>();
    Ref<NSTableView> table = tableOf(*owner, cell);
};

TEST_F(ZuImageCellTest, DrawsItsCaptionOverItsImage)
{
    cell->setFont(font);
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndexesInRange({1, 2}).get(), false);
    EXPECT_EQ(drawn(0), expected(0, 14.0, "white(0, 1)"));
    EXPECT_EQ(drawn(1), expected(1, 14.0, "white(1, 1)"));
    EXPECT_EQ(drawn(2), expected(2, 14.0, "white(1, 1)")) << "both are selected";
    EXPECT_EQ(drawn(4), expected(4, 14.0, "white(0, 1)")) << "there is no such row";
    const Ref<NSCell> copy = cell->copyWithZone(nullptr);
    EXPECT_EQ(operationsOf(*copy, NSMakeRect(10.0, 60.0, 100.0, 30.0), *table), drawn(1));
    EXPECT_EQ(utf8(copy->accessibilityLabel()), "Lake");

    const Ref<NSView> noTable = make<NSView>();
    EXPECT_EQ(operationsOf(*cell, NSMakeRect(10.0, 60.0, 100.0, 30.0), *noTable),
              expected(1, 14.0, "white(0, 1)"));
}

TEST_F(ZuImageCellTest, TakesTheFontOfItsTable)
{
    const Operations imageOnly{expected(0, 12.0, "")[0]};
    EXPECT_EQ(drawn(0), imageOnly) << "no one has a font";
    table->setFont(font);
    cell->setDescription(nullptr);
    EXPECT_EQ(drawn(0), imageOnly);
    EXPECT_EQ(static_cast<NSCell&>(*cell).font(), font) << "taken over even so";
    const Ref<NSFont> another = NSFont::fontWithName_size("Arial", 16.0);
    table->setFont(another);
    cell->setDescription(caption.get());
    EXPECT_EQ(drawn(0), expected(0, 14.0, "white(0, 1)")) << "once taken over, it stays";
    cell->setFont(nullptr);
    EXPECT_EQ(drawn(0), expected(0, 16.0, "white(0, 1)"));

    cell->setDescription(text("Sea").get()); // which is gone by the end of the line
    EXPECT_EQ(drawn(0), imageOnly) << "it is not kept alive";
    EXPECT_EQ(cell->accessibilityLabel(), nullptr);
}

} // namespace
