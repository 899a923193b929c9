#include "window/ZuFlippedView.h"

#include "picture_sheet/Scenes.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QRect>

namespace
{

TEST(ZuFlippedViewTest, HasItsOriginAboveAndDrawsNothing)
{
    const Ref<NSView> view = look("ZuFlippedView", "origin above");
    ASSERT_NE(dynamic_cast<ZuFlippedView*>(view.get()), nullptr);
    EXPECT_EQ(operationsOf(*view), Operations{});
    EXPECT_EQ(inkOf(pixelsOf(*view->imageOfBounds(1.0))), QRect(4, 4, 16, 16)) << "but for its subview";
}

} // namespace
