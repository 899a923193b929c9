#include "window/ZuTableHeaderCell.h"

#include "platform/appkit/NSTableHeaderView.h"
#include "platform/foundation/NSAttributedString.h"
#include "support/Tables.h"

#include <gtest/gtest.h>

namespace
{

TEST(ZuTableHeaderCellTest, DrawsFaceLineAndTitle)
{
    const Ref<ZuTableHeaderCell> cell = make<ZuTableHeaderCell>();
    cell->setStringValue(text("Name"));
    const double height = cell->attributedStringValue()->size().height;
    // The base class draws the title in the middle of {{2, 4}, {100, 20}}.
    const NSRect title = NSMakeRect(8.0, 4.0 + (20.0 - height) * 0.5, 88.0, height);
    Operations expected{"drawGradient white(1, 1) to deviceWhite(0.9, 1) {{2, 3}, {100, 22}} angle 90",
                        "fillColor deviceWhite(0.8, 1)", "strokeColor deviceWhite(0.8, 1)",
                        "replaceRect {{2, 25}, {100, 1}}", "drawText \"Name\" " + NSStringFromRect(title)};

    const Ref<NSView> view = make<NSTableHeaderView>();
    const NSRect frame = NSMakeRect(2.0, 3.0, 100.0, 23.0);
    testing::internal::CaptureStderr();
    EXPECT_EQ(operationsOf(*cell, frame, *view), expected);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZuTableHeaderCell drawWithFrame 2.000000:3.000000:100.000000:23.000000\n");
    EXPECT_EQ(operationsOf(*cell->copyWithZone(nullptr), frame, *view), expected);

    const auto context = make<NSRecordingGraphicsContext>(true);
    {
        const NSGraphicsContext::Scope scope(*context);
        cell->drawWithFrame_highlighted_inView(frame, true, view.get());
    }
    expected.insert(expected.begin() + 1, {"fillColor deviceWhite(0, 0.1)", "strokeColor deviceWhite(0, 0.1)",
                                           "fillRect {{2, 3}, {100, 22}}"});
    EXPECT_EQ(context->operations(), expected);
}

} // namespace
