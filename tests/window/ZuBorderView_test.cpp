#include "window/ZuBorderView.h"

#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSShadow.h"
#include "support/Drawing.h"
#include "support/Looks.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QRect>

namespace
{

Operations border(const std::string& color, const char* width)
{
    return {"fillColor " + color, "strokeColor " + color,
            std::string("strokePath move {0, 0} line {100, 0} line {100, 60} line {0, 60} close width ") +
                width};
}

TEST(ZuBorderViewTest, DrawsItsLooks)
{
    for (const char* name : {"origin below", "flipped"}) {
        EXPECT_EQ(operationsOf(*shown<ZuBorderView>(name)), border("white(0, 1)", "1")) << name;
    }
    const Ref<ZuBorderView> wide = shown<ZuBorderView>("wide");
    EXPECT_EQ(operationsOf(*wide, NSMakeRect(20.0, 10.0, 50.0, 5.0)),
              border("sRGB(0.12549019607843137, 0.7294117647058823, 0.9176470588235294, 1)", "6"))
        << "around the bounds, whatever is redrawn";
    const Ref<NSImage> picture = wide->imageOfBounds(1.0);
    EXPECT_EQ(pixel(*picture, 2, 30), "#ff20baea");
    EXPECT_EQ(pixel(*picture, 3, 30), "#00000000") << "half of it shows";

    wide->setColor_border_(NSColor::blackColor());
    wide->setWidth_border_(0.0);
    EXPECT_FALSE(wide->needsDisplay()) << "stored without a redraw";
    EXPECT_EQ(inkOf(pixelsOf(*wide->imageOfBounds(2.0))), QRect(0, 0, 200, 120)) << "the thinnest line";
    wide->setColor_border_(nullptr);
    EXPECT_EQ(operationsOf(*wide), Operations{});
    EXPECT_EQ(operationsOf(*make<ZuBorderView>()), Operations{}) << "one from an interface file";
}

TEST(ZuBorderViewTest, TurnsUpsideDown)
{
    const Ref<ZuBorderView> view = shown<ZuBorderView>("origin below");
    const auto markTop = [&] {
        const QImage picture = pixelsOf(*view->imageOfBounds(1.0));
        int y = 0;
        while (y < picture.height() && picture.pixelColor(10, y).name() != "#e06820") {
            ++y;
        }
        return y;
    };
    EXPECT_EQ(markTop(), 40);
    view->setFlipped(true);
    EXPECT_TRUE(view->isFlipped());
    EXPECT_FALSE(view->needsDisplay());
    EXPECT_EQ(markTop(), 4);
    view->initWithFrame(view->frame());
    EXPECT_FALSE(view->isFlipped());
    EXPECT_EQ(view->width_border_(), 1.0);
}

TEST(ZuBorderViewTest, CastsAShadow)
{
    const Ref<ZuBorderView> view = make<ZuBorderView>()->initWithFrame(NSMakeRect(10.0, 10.0, 100.0, 60.0));
    EXPECT_EQ(view->shadow(), nullptr);
    view->setShadow();
    const Ref<NSShadow> shadow = view->shadow();
    EXPECT_EQ(shadow->shadowColor(), NSColor::grayColor());
    EXPECT_EQ(shadow->shadowOffset(), (NSSize{0.0, -4.0}));
    EXPECT_EQ(shadow->shadowBlurRadius(), 2.0);
    EXPECT_TRUE(view->wantsLayer());
    view->setShadow();
    EXPECT_NE(view->shadow(), shadow) << "each call makes one";

    // Downwards on the screen, whichever way the view and the one around it are flipped.
    for (const bool flipped : {false, true}) {
        const Ref<ZuBorderView> parent =
            make<ZuBorderView>()->initWithFrame(NSMakeRect(0.0, 0.0, 120.0, 80.0));
        parent->setColor_border_(nullptr);
        parent->setFlipped(flipped);
        view->setFlipped(flipped);
        parent->addSubview(view);
        const QRect ink = inkOf(pixelsOf(*parent->imageOfBounds(1.0)));
        EXPECT_EQ(ink.top(), 10);
        EXPECT_GE(ink.bottom(), 69 + 4) << "by the offset, and somewhat more by the blur";
        EXPECT_LE(ink.bottom(), 69 + 4 + 4);
    }
}

} // namespace
