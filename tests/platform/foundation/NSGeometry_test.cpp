#include "platform/foundation/NSGeometry.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(NSGeometryTest, EdgesBelongToOneOfTwoNeighbours)
{
    const NSRect rect = NSMakeRect(10.0, 20.0, 30.0, 40.0);
    EXPECT_TRUE(NSPointInRect({10.0, 20.0}, rect));
    EXPECT_FALSE(NSPointInRect({40.0, 20.0}, rect));
    EXPECT_FALSE(NSPointInRect({kNaN, 30.0}, rect));
    EXPECT_TRUE(NSMouseInRect({10.0, 20.0}, rect, true));
    EXPECT_FALSE(NSMouseInRect({10.0, 60.0}, rect, true));
    EXPECT_FALSE(NSMouseInRect({10.0, 20.0}, rect, false));
    EXPECT_TRUE(NSMouseInRect({10.0, 60.0}, rect, false));
}

TEST(NSGeometryTest, RectanglesWithoutAreaCountForNothing)
{
    const NSRect rect = NSMakeRect(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(NSUnionRect(rect, NSMakeRect(100.0, 100.0, 0.0, 5.0)), rect);
    EXPECT_EQ(NSUnionRect(NSMakeRect(100.0, 100.0, -1.0, 5.0), rect), rect);
    EXPECT_EQ(NSUnionRect(NSZeroRect, NSMakeRect(1.0, 1.0, kNaN, 1.0)), NSZeroRect);
    EXPECT_EQ(NSUnionRect(rect, NSMakeRect(-1.0, 5.0, 1.0, 10.0)), NSMakeRect(-1.0, 2.0, 5.0, 13.0));
}

TEST(NSGeometryTest, CutsRectanglesInTwo)
{
    const NSRect rect = NSMakeRect(10.0, 20.0, 30.0, 40.0);
    struct Cut {
        CGRectEdge edge;
        double amount;
        NSRect slice;
        NSRect remainder;
    };
    const Cut cuts[] = {
        {CGRectEdge::MinX, 5.0, {{10.0, 20.0}, {5.0, 40.0}}, {{15.0, 20.0}, {25.0, 40.0}}},
        {CGRectEdge::MinY, 5.0, {{10.0, 20.0}, {30.0, 5.0}}, {{10.0, 25.0}, {30.0, 35.0}}},
        {CGRectEdge::MaxX, 5.0, {{35.0, 20.0}, {5.0, 40.0}}, {{10.0, 20.0}, {25.0, 40.0}}},
        {CGRectEdge::MaxY, 5.0, {{10.0, 55.0}, {30.0, 5.0}}, {{10.0, 20.0}, {30.0, 35.0}}},
        {CGRectEdge::MaxX, 100.0, rect, {{10.0, 20.0}, {0.0, 40.0}}},
        {CGRectEdge::MinX, -1.0, {{10.0, 20.0}, {0.0, 40.0}}, rect},
        {CGRectEdge::MaxY, kNaN, {{10.0, 60.0}, {30.0, 0.0}}, rect},
    };
    for (const Cut& cut : cuts) {
        NSRect slice;
        NSRect remainder;
        CGRectDivide(rect, &slice, nullptr, cut.amount, cut.edge);
        CGRectDivide(rect, nullptr, &remainder, cut.amount, cut.edge);
        EXPECT_EQ(slice, cut.slice) << static_cast<int>(cut.edge) << ' ' << cut.amount;
        EXPECT_EQ(remainder, cut.remainder) << static_cast<int>(cut.edge) << ' ' << cut.amount;
    }
}

} // namespace
