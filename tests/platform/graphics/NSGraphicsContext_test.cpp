#include "platform/graphics/NSGraphicsContext.h"

#include "platform/appkit/NSView.h"
#include "platform/graphics/NSAttributes.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
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

const Ref<NSColor>& red()
{
    static const Ref<NSColor> color = NSColor::colorWithSRGBRed_green_blue_alpha(1.0, 0.0, 0.0, 1.0);
    return color;
}

constexpr const char* kRed = "#ffff0000";
constexpr const char* kBlack = "#ff000000";
constexpr const char* kNothing = "#00000000";

TEST(NSGraphicsContextTest, PaintsEitherWayUpAtEveryScale)
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
    const Ref<NSImage> image = paint(true, [] {
        red()->set();
        NSBezierPath::strokeRect(NSMakeRect(5.5, 15.5, 20.0, 10.0));
        const Ref<NSBezierPath> line = NSBezierPath::bezierPath();
        line->moveToPoint({0.0, 5.0});
        line->lineToPoint({20.0, 5.0});
        line->setLineWidth(4.0);
        line->stroke();
    });
    EXPECT_EQ(pixel(*image, 5, 15), kRed) << "corners are square";
    EXPECT_EQ(pixel(*image, 25, 25), kRed);
    EXPECT_EQ(pixel(*image, 4, 15), kNothing);
    EXPECT_EQ(pixel(*image, 6, 16), kNothing);
    EXPECT_EQ(pixel(*image, 10, 3), kRed);
    EXPECT_EQ(pixel(*image, 10, 6), kRed);
    EXPECT_EQ(pixel(*image, 10, 7), kNothing);
    EXPECT_EQ(pixel(*image, 20, 5), kNothing) << "lines end at their end";
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
        NSBezierPath::bezierPathWithRect(NSMakeRect(0.0, 0.0, 10.0, 10.0))->fill();
    });
    EXPECT_EQ(pixel(*image, 5, 5), kRed);
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
    NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 1.0, 1.0)); // drawn nowhere
}

TEST(NSGraphicsContextTest, RecordsPathsAndStates)
{
    const Ref<Canvas> canvas = make<Canvas>(true, [] {
        NSGraphicsContext::currentContext()->saveGraphicsState();
        const Ref<NSBezierPath> path = NSBezierPath::bezierPath();
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
}

TEST(NSGraphicsContextTest, KeepsImagesUpright)
{
    const Ref<NSImage> image = paint(true, [] { // red above black
        red()->setFill();
        NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 40.0, 15.0));
        NSColor::blackColor()->setFill();
        NSBezierPath::fillRect(NSMakeRect(0.0, 15.0, 40.0, 15.0));
    });
    const auto draw = [&](NSRect from, double fraction, bool respectFlipped) {
        return [=] {
            image->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
                NSMakeRect(0.0, 0.0, 20.0, 20.0), from, NSCompositingOperation::SourceOver, fraction,
                respectFlipped, nullptr);
        };
    };
    EXPECT_EQ(pixel(*paint(true, draw(NSZeroRect, 1.0, true)), 10, 2), kRed);
    EXPECT_EQ(pixel(*paint(true, draw(NSZeroRect, 1.0, true)), 10, 18), kBlack);
    EXPECT_EQ(pixel(*paint(true, draw(NSZeroRect, 1.0, false)), 10, 2), kBlack) << "upside down on demand";
    EXPECT_EQ(pixel(*paint(false, draw(NSZeroRect, 1.0, true)), 10, 12), kRed);
    EXPECT_EQ(pixel(*paint(false, draw(NSZeroRect, 1.0, true)), 10, 28), kBlack);
    EXPECT_EQ(pixel(*paint(true, draw(NSMakeRect(0.0, 20.0, 40.0, 10.0), 1.0, true)), 10, 2), kBlack);
    EXPECT_EQ(pixel(*paint(true, draw(NSZeroRect, 0.5, true)), 10, 2), "#7fff0000") << "half, rounded down";
}

TEST(NSGraphicsContextTest, KeepsTextUprightAndInsideItsRectangle)
{
    const auto draw = [](NSRect rect) {
        return [=] {
            text("TT\nTT")->drawInRect_withAttributes(rect, {{NSForegroundColorAttributeName, red()}});
        };
    };
    const auto hasInk = [](const Ref<NSImage>& image, int top, int bottom) {
        for (int i = 40 * top; i < 40 * bottom; ++i) {
            if (pixel(*image, i % 40, i / 40) != kNothing) {
                return true;
            }
        }
        return false;
    };
    // The bar of a T is at its top: two to three points under the top of the line.
    const Ref<NSImage> flipped = paint(true, draw(NSMakeRect(0.0, 0.0, 40.0, 13.0)));
    EXPECT_NE(pixel(*flipped, 1, 3), kNothing);
    EXPECT_FALSE(hasInk(flipped, 13, 30)) << "the second line is clipped";
    const Ref<NSImage> unflipped = paint(false, draw(NSMakeRect(0.0, 0.0, 40.0, 28.0)));
    EXPECT_NE(pixel(*unflipped, 1, 5), kNothing);
    EXPECT_TRUE(hasInk(unflipped, 16, 30));
    EXPECT_FALSE(hasInk(paint(true, draw(NSMakeRect(0.0, 0.0, -40.0, 28.0))), 0, 30));
}

} // namespace
