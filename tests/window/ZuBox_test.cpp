#include "window/ZuBox.h"

#include "platform/graphics/NSColor.h"
#include "support/Drawing.h"
#include "support/Looks.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QRect>

#include <algorithm>

namespace
{

/// What the box draws after all that a plain one draws; fails unless it begins with that.
Operations lineOf(ZuBox& box, NSRect rect)
{
    const Ref<NSBox> plain = make<NSBox>()->initWithFrame(box.frame());
    plain->setTitle(box.title());
    const Operations base = operationsOf(*plain);
    const Operations all = operationsOf(box, rect);
    const auto end = all.begin() + static_cast<std::ptrdiff_t>(std::min(base.size(), all.size()));
    EXPECT_EQ(Operations(all.begin(), end), base);
    return {end, all.end()};
}

TEST(ZuBoxTest, DrawsItsLooks)
{
    const Ref<ZuBox> awake = shown<ZuBox>("awake");
    EXPECT_EQ(lineOf(*awake, awake->bounds()),
              (Operations{"strokeColor sRGB(0.8627450980392157, 0.8627450980392157, 0.8627450980392157, 1)",
                          "strokePath move {0, 0} line {200, 0} width 1"}));
    const Ref<ZuBox> other = shown<ZuBox>("title, other line");
    EXPECT_EQ(lineOf(*other, NSMakeRect(20.0, 10.0, 50.0, 5.0)),
              (Operations{"strokeColor sRGB(0.12549019607843137, 0.7294117647058823, 0.9176470588235294, 1)",
                          "strokePath move {0, 0} line {50, 0} width 6"}));
    EXPECT_EQ(pixel(*other->imageOfBounds(1.0), 100, 57), "#ff20baea");
    EXPECT_NE(pixel(*other->imageOfBounds(1.0), 100, 56), "#ff20baea") << "half of it shows";

    other->imageOfBounds(1.0);
    other->setColor(nullptr);
    other->setHeight(-3);
    EXPECT_FALSE(other->needsDisplay()) << "stored without a redraw";
    EXPECT_EQ(lineOf(*other, other->bounds()), Operations{});
    other->awakeFromNib();
    EXPECT_EQ(lineOf(*other, other->bounds()), lineOf(*awake, awake->bounds()));
}

TEST(ZuBoxTest, HasNoLineWhenMadeInCode)
{
    const Ref<ZuBox> box = make<ZuBox>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    EXPECT_EQ(lineOf(*box, box->bounds()), Operations{});
    box->setColor(NSColor::blackColor());
    EXPECT_EQ(lineOf(*box, box->bounds())[1], "strokePath move {0, 0} line {200, 0} width 0");
    box->setTransparent(true);
    EXPECT_EQ(operationsOf(*box).size(), 2U) << "whatever the box shows";
    EXPECT_EQ(inkOf(pixelsOf(*box->imageOfBounds(2.0))), QRect(0, 119, 400, 1)) << "the thinnest line";
}

} // namespace
