#include "window/ZuCenterTextFieldCell.h"

#include "platform/foundation/NSAttributedString.h"
#include "support/Tables.h"

#include <gtest/gtest.h>

namespace
{

TEST(ZuCenterTextFieldCellTest, DrawsItsTextInTheMiddle)
{
    const Ref<NSView> view = make<NSView>();
    const Ref<ZuCenterTextFieldCell> cell = make<ZuCenterTextFieldCell>();
    cell->setStringValue(text("Lake"));
    const double height = cell->attributedStringValue()->size().height;
    const auto drawnAs = [](NSRect rect) { // which the base class leaves 2 points free of at either side
        return Operations{"drawText \"Lake\" " + NSStringFromRect(NSInsetRect(rect, 2.0, 0.0))};
    };
    const Ref<NSCell> copy = cell->copyWithZone(nullptr);
    for (const Ref<NSCell>& each : {Ref<NSCell>(cell), copy}) {
        EXPECT_EQ(operationsOf(*each, NSMakeRect(5.0, 20.0, 100.0, height + 14.0), *view),
                  drawnAs(NSMakeRect(5.0, 27.0, 100.0, height + 7.0)));
        const NSRect low = NSMakeRect(5.0, 20.0, 100.0, height - 2.0);
        EXPECT_EQ(operationsOf(*each, low, *view), drawnAs(low)) << "not moved up";
    }
}

} // namespace
