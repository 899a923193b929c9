#include "window/ZuFlippedView.h"

#include "support/Drawing.h"
#include "support/Looks.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QRect>

namespace
{

TEST(ZuFlippedViewTest, HasItsOriginAboveAndDrawsNothing)
{
    const Ref<ZuFlippedView> view = shown<ZuFlippedView>("origin above");
    EXPECT_EQ(operationsOf(*view), Operations{});
    EXPECT_EQ(inkOf(pixelsOf(*view->imageOfBounds(1.0))), QRect(4, 4, 16, 16)) << "but for its subview";
}

} // namespace
