#include "platform/graphics/NSGraphicsContext.h"

#include "platform/appkit/NSView.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSAttributes.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

/// A view that draws what it is told, either way up.
class Canvas : public NSView
{
public:
    Canvas(bool flipped, std::function<void()> draw) : _flipped(flipped), _draw(std::move(draw)) {}

    bool isFlipped() const override { return _flipped; }
    void drawRect(NSRect) override { _draw(); }

private:
    bool _flipped;
    std::function<void()> _draw;
};

Ref<NSImage> paint(bool flipped, std::function<void()> draw, double scale = 1.0)
{
    const Ref<Canvas> canvas = make<Canvas>(flipped, std::move(draw));
    canvas->initWithFrame(NSMakeRect(0.0, 0.0, 40.0, 30.0));
    return canvas->imageOfBounds(scale);
}

Ref<NSColor> red()
{
    return NSColor::colorWithSRGBRed_green_blue_alpha(1.0, 0.0, 0.0, 1.0);
}

constexpr const char* kRed = "#ffff0000";
constexpr const char* kBlue = "#ff0000ff";
constexpr const char* kNothing = "#00000000";

TEST(NSGraphicsContextTest, PaintsEitherWayUp)
{
    const auto draw = [] {
        red()->setFill();
        NSBezierPath::fillRect(NSMakeRect(10.0, 0.0, 5.0, 10.0));
    };
    EXPECT_EQ(pixel(*paint(true, draw), 12, 2), kRed);
    EXPECT_EQ(pixel(*paint(true, draw), 12, 27), kNothing);
    EXPECT_EQ(pixel(*paint(false, draw), 12, 2), kNothing);
    EXPECT_EQ(pixel(*paint(false, draw), 12, 27), kRed);
    EXPECT_EQ(pixel(*paint(false, draw, 2.0), 20, 59), kRed);
    EXPECT_EQ(pixel(*paint(false, draw, 2.0), 19, 59), kNothing);
    EXPECT_EQ(pixel(*paint(false, draw, 1.5), 15, 44), kRed);
}

TEST(NSGraphicsContextTest, CentresLinesOnTheirPaths)
{
    const auto frame = [] {
        red()->setStroke();
        NSBezierPath::strokeRect(NSMakeRect(5.5, 5.5, 20.0, 10.0));
    };
    const Ref<NSImage> framed = paint(true, frame);
    EXPECT_EQ(pixel(*framed, 5, 5), kRed) << "corners are square";
    EXPECT_EQ(pixel(*framed, 25, 15), kRed);
    EXPECT_EQ(pixel(*framed, 4, 5), kNothing);
    EXPECT_EQ(pixel(*framed, 6, 6), kNothing);

    const auto path = [] {
        red()->set();
        const Ref<NSBezierPath> line = NSBezierPath::bezierPath();
        line->moveToPoint({0.0, 10.0});
        line->lineToPoint({20.0, 10.0});
        line->setLineWidth(4.0);
        line->stroke();
        const Ref<NSBezierPath> box = NSBezierPath::bezierPathWithRect(NSMakeRect(30.0, 20.0, 5.0, 5.0));
        box->fill();
    };
    const Ref<NSImage> drawn = paint(true, path);
    EXPECT_EQ(pixel(*drawn, 10, 8), kRed);
    EXPECT_EQ(pixel(*drawn, 10, 11), kRed);
    EXPECT_EQ(pixel(*drawn, 10, 12), kNothing);
    EXPECT_EQ(pixel(*drawn, 20, 10), kNothing) << "lines end at their end";
    EXPECT_EQ(pixel(*drawn, 32, 22), kRed);
}

TEST(NSGraphicsContextTest, RecordsPathsAndStates)
{
    const Ref<Canvas> canvas = make<Canvas>(true, [] {
        NSGraphicsContext::currentContext()->saveGraphicsState();
        const Ref<NSBezierPath> path = NSBezierPath::bezierPath();
        path->closePath();
        path->lineToPoint({1.5, 2.0});
        path->curveToPoint_controlPoint1_controlPoint2({5.0, 6.0}, {1.0, 2.0}, {3.0, 4.0});
        path->closePath();
        path->fill();
        path->setLineWidth(0.5);
        path->stroke();
        NSColor::grayColor()->set();
        NSGraphicsContext::currentContext()->restoreGraphicsState();
    });
    EXPECT_EQ(operationsOf(*canvas),
              (Operations{"save", "fillPath move {1.5, 2} line {1.5, 2} curve {1, 2} {3, 4} {5, 6} close",
                          "strokePath move {1.5, 2} line {1.5, 2} curve {1, 2} {3, 4} {5, 6} close width 0.5",
                          "fillColor white(0.5, 1)", "strokeColor white(0.5, 1)", "restore"}));
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST(NSGraphicsContextTest, BringsColoursBack)
{
    const Ref<NSImage> image = paint(true, [] {
        NSGraphicsContext& context = *NSGraphicsContext::currentContext();
        red()->setFill();
        context.saveGraphicsState();
        NSColor::whiteColor()->setFill();
        context.restoreGraphicsState();
        context.restoreGraphicsState(); // one too many
        NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 10.0, 10.0));
    });
    EXPECT_EQ(pixel(*image, 5, 5), kRed);
}

/// A picture whose upper half is red and whose lower half is blue.
Ref<NSImage> redOverBlue()
{
    return paint(true, [] {
        red()->setFill();
        NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 40.0, 15.0));
        NSColor::colorWithSRGBRed_green_blue_alpha(0.0, 0.0, 1.0, 1.0)->setFill();
        NSBezierPath::fillRect(NSMakeRect(0.0, 15.0, 40.0, 15.0));
    });
}

TEST(NSGraphicsContextTest, KeepsImagesUpright)
{
    const Ref<NSImage> image = redOverBlue();
    const auto draw = [&](NSRect from, double fraction, bool respectFlipped) {
        return [=] {
            image->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
                NSMakeRect(0.0, 0.0, 20.0, 20.0), from, NSCompositingOperation::SourceOver, fraction,
                respectFlipped, nullptr);
        };
    };
    const Ref<NSImage> flipped = paint(true, draw(NSZeroRect, 1.0, true));
    EXPECT_EQ(pixel(*flipped, 10, 2), kRed);
    EXPECT_EQ(pixel(*flipped, 10, 18), kBlue);
    EXPECT_EQ(pixel(*paint(true, draw(NSZeroRect, 1.0, false)), 10, 2), kBlue) << "upside down on demand";
    const Ref<NSImage> unflipped = paint(false, draw(NSZeroRect, 1.0, true));
    EXPECT_EQ(pixel(*unflipped, 10, 12), kRed);
    EXPECT_EQ(pixel(*unflipped, 10, 28), kBlue);

    EXPECT_EQ(pixel(*paint(true, draw(NSMakeRect(0.0, 20.0, 40.0, 10.0), 1.0, true)), 10, 2), kBlue);
    EXPECT_EQ(pixel(*paint(true, draw(NSZeroRect, 0.5, true)), 10, 2), "#7fff0000") << "half, rounded down";
}

TEST(NSGraphicsContextTest, KeepsTextUprightAndInsideItsRectangle)
{
    const auto draw = [](NSRect rect) {
        return [=] {
            text("TT\nTT")->drawInRect_withAttributes(
                rect, {{NSFontAttributeName, NSFont::fontWithName_size("Arial", 12.0)},
                       {NSForegroundColorAttributeName, red()}});
        };
    };
    const auto inkIn = [](const NSImage& image, int top, int bottom) {
        for (int y = top; y < bottom; ++y) {
            for (int x = 0; x < 40; ++x) {
                if (pixel(image, x, y) != kNothing) {
                    return true;
                }
            }
        }
        return false;
    };
    // The bar of a T is at its top: two to three points under the top of the line.
    const Ref<NSImage> flipped = paint(true, draw(NSMakeRect(0.0, 0.0, 40.0, 13.0)));
    EXPECT_NE(pixel(*flipped, 1, 3), kNothing);
    EXPECT_FALSE(inkIn(*flipped, 13, 30)) << "the second line is clipped";
    const Ref<NSImage> unflipped = paint(false, draw(NSMakeRect(0.0, 0.0, 40.0, 28.0)));
    EXPECT_NE(pixel(*unflipped, 1, 5), kNothing);
    EXPECT_TRUE(inkIn(*unflipped, 16, 30));
    EXPECT_FALSE(inkIn(*paint(true, draw(NSMakeRect(0.0, 0.0, -40.0, 28.0))), 0, 30));
    EXPECT_FALSE(inkIn(*paint(true, draw(NSMakeRect(0.0, 0.0, 40.0, 0.0))), 0, 30));
}

TEST(NSGraphicsContextTest, DrawsNothingWithoutAContext)
{
    NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 1.0, 1.0));
    red()->set();
    text("x")->drawInRect_withAttributes(NSMakeRect(0.0, 0.0, 1.0, 1.0), {});
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

} // namespace
