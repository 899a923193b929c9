#include "platform/graphics/NSGraphicsContext.h"

#include "platform/appkit/NSView.h"
#include "platform/foundation/NSAttributes.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

#include <functional>

namespace
{

/// A view that draws what it is told, either way up.
Ref<NSImage> paint(bool flipped, std::function<void()> draw, double scale = 1.0)
{
    return make<Canvas>(NSSize{40.0, 30.0}, flipped, std::move(draw))->imageOfBounds(scale);
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
    const Ref<Canvas> canvas = make<Canvas>(NSSize{40.0, 30.0}, true, [] {
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
    EXPECT_EQ(pixel(*paint(true, draw(NSZeroRect, 0.5, true)), 10, 2), "#7fff0000") << "half, rounded down";
}

NSAttributes attributes(double size, const char* font = "Arial")
{
    return {{NSFontAttributeName, NSFont::fontWithName_size(font, size)},
            {NSForegroundColorAttributeName, red()}};
}

/// A picture of `string` drawn into `rect` of a canvas.
QImage written(const char* string, NSRect rect, const NSAttributes& attributes, bool flipped = true)
{
    const Ref<NSString> drawn = text(string);
    return pixelsOf(*paint(
        flipped, [&] { drawn->drawInRect_withAttributes(rect, attributes); }, 2.0));
}

/// The part of a picture that is painted on, in points.
QRectF pointsOfInk(const QImage& picture)
{
    const QRect ink = inkOf(picture);
    return {ink.x() / 2.0, ink.y() / 2.0, ink.width() / 2.0, ink.height() / 2.0};
}

TEST(NSGraphicsContextTest, WrapsTextAtWords)
{
    // In turn, so that no layout is taken for another of another width or size.
    for (const double size : {7.0, 6.5, 7.5}) {
        const double width = text("ab ab")->sizeWithAttributes(attributes(size)).width;
        for (const double room : {width * 1.03, width * 0.7}) {
            EXPECT_EQ(written("ab ab ab", NSMakeRect(0.0, 0.0, room, 30.0), attributes(size)),
                      written(room > width ? "ab ab\nab" : "ab\nab\nab", NSMakeRect(0.0, 0.0, 40.0, 30.0),
                              attributes(size)))
                << size << ' ' << room;
        }
    }
    EXPECT_EQ(written("HHHH", NSMakeRect(0.0, 0.0, 12.0, 30.0), attributes(7.0)),
              written("HH\nHH", NSMakeRect(0.0, 0.0, 40.0, 30.0), attributes(7.0)))
        << "a word that is too wide";
}

TEST(NSGraphicsContextTest, SetsTextInItsPlaceColourAndSize)
{
    for (const bool flipped : {true, false}) {
        const QImage picture =
            written("IH", NSMakeRect(5.0, 0.0, 35.0, 30.0), attributes(25.0, "Arial Bold"), flipped);
        const QRectF ink = pointsOfInk(picture);
        EXPECT_GE(ink.left(), 5.0);
        EXPECT_LT(ink.left(), 8.0);
        EXPECT_NEAR(ink.top(), 25.0 * (1854.0 - 1466.0) / 2048.0, 1.0)
            << "the capitals' height under the ascent";
        EXPECT_EQ(picture.pixelColor(ink.topLeft().toPoint() * 2 + QPoint(4, 8)).name(QColor::HexArgb), kRed);
    }
    const double whole =
        pointsOfInk(written("HHHH", NSMakeRect(0.0, 0.0, 40.0, 30.0), attributes(13.0))).width();
    const double half =
        pointsOfInk(written("HHHH", NSMakeRect(0.0, 0.0, 40.0, 30.0), attributes(12.5))).width();
    EXPECT_NEAR(half / whole, 12.5 / 13.0, 0.02);
}

TEST(NSGraphicsContextTest, ClipsTextToItsRectangleButNotItsGlyphs)
{
    const auto name = attributes(14.0, "Arial Bold");
    const NSSize size = text("Aff")->sizeWithAttributes(name);
    for (int tenth = 0; tenth < 10; ++tenth) {
        const double x = tenth / 10.0;
        EXPECT_EQ(written("Aff", {{x, 0.0}, size}, name),
                  written("Aff", NSMakeRect(x, 0.0, 39.0, 30.0), name))
            << x;
    }
    EXPECT_LE(pointsOfInk(written("TT\nTT", NSMakeRect(0.0, 0.0, 40.0, 14.0), attributes(12.0))).bottom(),
              14.0);
    EXPECT_TRUE(pointsOfInk(written("T", NSMakeRect(0.0, 0.0, -40.0, 28.0), attributes(12.0))).isEmpty());
}

} // namespace
