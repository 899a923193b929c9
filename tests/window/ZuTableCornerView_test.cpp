#include "window/ZuTableCornerView.h"

#include "support/Drawing.h"
#include "support/Looks.h"

#include <gtest/gtest.h>

#include <QImage>

namespace
{

TEST(ZuTableCornerViewTest, IsAPatchOfGrey)
{
    const std::string grey = "calibratedRGB(0.9490196078431372, 0.9490196078431372, 0.9490196078431372, 1)";
    const Ref<NSView> corner = shown<ZuTableCornerView>("corner");
    EXPECT_EQ(operationsOf(*corner, NSMakeRect(2.0, 3.0, 10.0, 20.0)),
              (Operations{"fillColor " + grey, "replaceRect {{2, 3}, {10, 20}}", "strokeColor " + grey,
                          "strokePath move {2, 3} line {12, 3} width 1",
                          "strokePath move {2, 3} line {12, 3} move {2, 23} line {12, 23} width 1"}));
    const QImage picture = pixelsOf(*corner->imageOfBounds(1.5));
    QImage uniform(24, 36, picture.format());
    uniform.fill(QColor(242, 242, 242));
    EXPECT_EQ(picture, uniform);
}

} // namespace
