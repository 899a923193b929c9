#include "platform/graphics/NSGraphicsContext.h"

#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSGradient.h"
#include "platform/graphics/NSGraphics.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>

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
constexpr const char* kNothing = "#00000000";

TEST(NSGraphicsContextTest, PaintsEitherWayUpAtEveryScale)
{
    const auto draw = [] {
        red()->setFill();
        NSGraphicsContext::currentContext()->saveGraphicsState();
        NSColor::whiteColor()->setFill();
        NSGraphicsContext::currentContext()->restoreGraphicsState();
        NSGraphicsContext::currentContext()->restoreGraphicsState(); // one too many
        NSBezierPath::bezierPathWithRect(NSMakeRect(10.0, 0.0, 5.0, 10.0))->fill();
    };
    EXPECT_EQ(inkOf(pixelsOf(*paint(true, draw))), QRect(10, 0, 5, 10));
    EXPECT_EQ(inkOf(pixelsOf(*paint(false, draw, 2.0))), QRect(20, 40, 10, 20));
    EXPECT_EQ(pixel(*paint(false, draw, 1.5), 15, 44), kRed);
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
    NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 1.0, 1.0)); // drawn nowhere
}

TEST(NSGraphicsContextTest, CentresLinesOnTheirPaths)
{
    const Ref<NSImage> frame = paint(true, [] {
        red()->set();
        NSBezierPath::strokeRect(NSMakeRect(5.5, 15.5, 20.0, 10.0));
    });
    EXPECT_EQ(inkOf(pixelsOf(*frame)), QRect(5, 15, 21, 11));
    EXPECT_EQ(pixel(*frame, 5, 15), kRed) << "corners are square";
    EXPECT_EQ(pixel(*frame, 6, 16), kNothing);
    const Ref<NSImage> line = paint(true, [] {
        red()->set();
        const Ref<NSBezierPath> path = NSBezierPath::bezierPath();
        path->moveToPoint({1.0, 5.0});
        path->lineToPoint({20.0, 5.0});
        path->setLineWidth(4.0);
        path->stroke();
    });
    EXPECT_EQ(inkOf(pixelsOf(*line)), QRect(1, 3, 19, 4)) << "lines end at their end";
    const auto thin = [] {
        const Ref<NSBezierPath> path = NSBezierPath::bezierPathWithRect(NSMakeRect(10.25, 10.25, 10.0, 10.0));
        path->setLineWidth(0.0);
        path->stroke();
    };
    EXPECT_EQ(pixel(*paint(true, thin, 2.0), 20, 30), "#ff000000");
    EXPECT_EQ(pixel(*paint(true, thin, 2.0), 21, 30), kNothing) << "as thin as the device can";
}

TEST(NSGraphicsContextTest, RecordsPaths)
{
    const Ref<Canvas> canvas = make<Canvas>(NSSize{40.0, 30.0}, true, [] {
        const Ref<NSBezierPath> path = NSBezierPath::bezierPath();
        path->lineToPoint({1.5, 2.0});
        path->curveToPoint_controlPoint1_controlPoint2({5.0, 6.0}, {1.0, 2.0}, {3.0, 4.0});
        path->closePath();
        path->setLineWidth(0.5);
        path->stroke();
    });
    EXPECT_EQ(operationsOf(*canvas)[0],
              "strokePath move {1.5, 2} line {1.5, 2} curve {1, 2} {3, 4} {5, 6} close width 0.5");
}

TEST(NSGraphicsContextTest, RoundsCorners)
{
    const NSRect rect = NSMakeRect(10.0, 20.0, 40.0, 30.0);
    for (const auto& [x, y] : {std::pair(0.0, 4.0), {4.0, 0.0}, {-1.0, 4.0}, {std::nan(""), 4.0}}) {
        EXPECT_EQ(roundedRect(rect, x, y), " move {10, 20} line {50, 20} line {50, 50} line {10, 50} close");
    }
    EXPECT_EQ(roundedRect(rect, 100.0, 15.0), roundedRect(rect, 20.0, 100.0)) << "half of the sides at most";

    const QImage picture = pixelsOf(*paint(
        false,
        [] {
            red()->setFill();
            NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius({{}, {40.0, 30.0}}, 10.0, 5.0)->fill();
        },
        10.0));
    const auto distanceOf = [](int x, int y) { // by the equation of the ellipse
        const double right = std::max({100 - x, x - 299, 0}) / 100.0;
        const double down = std::max({50 - y, y - 249, 0}) / 50.0;
        return right * right + down * down;
    };
    for (int i = 0; i < picture.width() * picture.height(); ++i) {
        const QPoint place(i % picture.width(), i / picture.width());
        const double distance = distanceOf(place.x(), place.y());
        if (std::abs(distance - 1.0) > 0.06) { // but for a pixel or two along the edge
            ASSERT_EQ(qAlpha(picture.pixel(place)), distance < 1.0 ? 255 : 0)
                << place.x() << ' ' << place.y();
        }
    }
}

TEST(NSGraphicsContextTest, DashesLines)
{
    const auto dashed = [](const std::vector<double>& lengths, double phase, double width) {
        return [=] {
            red()->set();
            const Ref<NSBezierPath> path = NSBezierPath::bezierPath();
            path->moveToPoint({0.0, 10.0});
            path->lineToPoint({20.0, 10.0});
            path->setLineWidth(width);
            path->setLineDash_count_phase(lengths.data(), static_cast<long>(lengths.size()), phase);
            path->setLineDash_count_phase(std::array{1.0, -1.0}.data(), 2, 0.0); // no dashes: changes nothing
            path->setLineDash_count_phase(std::array{0.0, 0.0}.data(), 2, 0.0);
            path->setLineDash_count_phase(std::array{HUGE_VAL}.data(), 1, 0.0);
            path->setLineDash_count_phase(std::array{1.0}.data(), 1, std::nan(""));
            path->stroke();
        };
    };
    const auto painted = [](const std::function<void()>& draw) { // "#" for each painted point
        const QImage picture = pixelsOf(*paint(true, draw));
        std::string row;
        for (int x = 0; x < 20; ++x) {
            row += qAlpha(picture.pixel(x, 9)) > 100 ? '#' : '.';
        }
        return row;
    };
    EXPECT_EQ(painted(dashed({3.0, 1.0}, 0.0, 2.0)), "###.###.###.###.###.");
    EXPECT_EQ(painted(dashed({3.0, 1.0}, 2.0, 8.0)), "#.###.###.###.###.##") << "in points, not in widths";
    EXPECT_EQ(painted(dashed({3.0, 1.0}, 2.0, 0.0)), "#.###.###.###.###.##") << "also of the thinnest line";
    EXPECT_EQ(painted(dashed({3.0}, 0.0, 2.0)), "###...###...###...##")
        << "and over again the other way round";
    EXPECT_EQ(painted(dashed({}, 0.0, 2.0)), std::string(20, '#'));
    EXPECT_EQ(operationsOf(*make<Canvas>(NSSize{40.0, 30.0}, true, dashed({3.0, 1.5}, 0.5, 2.0)))[2],
              "strokePath move {0, 10} line {20, 10} width 2 dash 3, 1.5 phase 0.5");
}

TEST(NSGraphicsContextTest, ReplacesWhatIsUnderARectangle)
{
    const auto blue = NSColor::colorWithCalibratedRed_green_blue_alpha(0.0, 0.0, 1.0, 0.5);
    const Ref<NSImage> picture = paint(false, [&] {
        red()->setFill();
        NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 40.0, 30.0));
        blue->set();
        NSRectFill(NSMakeRect(30.0, 20.0, std::numeric_limits<double>::infinity(), 1e300));
        NSRectFill(NSMakeRect(20.0, 10.0, -20.0, 10.0));
        NSRectFill(NSMakeRect(20.0, 10.0, std::nan(""), 10.0));
        NSBezierPath::fillRect(NSMakeRect(0.0, 29.0, 1.0, 1.0));
    });
    EXPECT_EQ(pixel(*picture, 30, 9), "#800000ff") << "the colour as it is";
    EXPECT_EQ(pixel(*picture, 39, 0), "#800000ff");
    EXPECT_EQ(pixel(*picture, 29, 9), kRed);
    EXPECT_EQ(pixel(*picture, 15, 15), kRed) << "nothing for a rectangle without area";
    EXPECT_EQ(pixel(*picture, 0, 0), "#ff7f0080") << "the colour tints";
    NSRectFill(NSMakeRect(0.0, 0.0, 1.0, 1.0)); // nowhere
    const Ref<Canvas> over = make<Canvas>(NSSize{40.0, 30.0}, true, [] {
        NSRectFillUsingOperation(NSMakeRect(1.0, 2.0, 3.0, 4.0), NSCompositingOperation::SourceOver);
        NSRectFillUsingOperation(NSMakeRect(1.0, 2.0, -3.0, 4.0), NSCompositingOperation::SourceOver);
    });
    EXPECT_EQ(operationsOf(*over), Operations{"fillRect {{1, 2}, {3, 4}}"});
}

TEST(NSGraphicsContextTest, PassesFromColourToColourInADirection)
{
    constexpr NSRect kRect{{10.0, 6.0}, {20.0, 12.0}};
    struct Direction {
        double angle;
        double (*part)(double x, double y); // of the way from start to end, at a place in the rectangle
    };
    constexpr std::array kDirections{
        Direction{0.0, [](double x, double) { return x / 20.0; }},
        Direction{90.0, [](double, double y) { return y / 12.0; }},
        Direction{45.0, [](double x, double y) { return (x + y) / 32.0; }},
        Direction{-45.0, [](double x, double y) { return (x + 12.0 - y) / 32.0; }},
        Direction{360.0 + 225.0, [](double x, double y) { return 1.0 - (x + y) / 32.0; }},
    };
    const Ref<NSGradient> gradient = make<NSGradient>()->initWithStartingColor_endingColor(
        NSColor::blackColor(), NSColor::colorWithDeviceWhite_alpha(1.0, 1.0));
    for (const Direction& direction : kDirections) {
        for (const bool flipped : {true, false}) {
            const QImage picture =
                pixelsOf(*paint(flipped, [&] { gradient->drawInRect_angle(kRect, direction.angle); }));
            ASSERT_EQ(inkOf(picture), flipped ? QRect(10, 6, 20, 12) : QRect(10, 12, 20, 12));
            for (int i = 0; i < 20 * 12; ++i) {
                const int x = i % 20;
                const int y = i / 20;
                const QPoint place(10 + x, flipped ? 6 + y : 23 - y);
                ASSERT_NEAR(qRed(picture.pixel(place)), 255.0 * direction.part(x + 0.5, y + 0.5), 2.0)
                    << direction.angle << (flipped ? " flipped " : " ") << x << ' ' << y;
            }
        }
    }
}

TEST(NSGraphicsContextTest, RecordsGradientsThatShow)
{
    const Ref<NSColor> white = NSColor::whiteColor();
    const Ref<NSColor> grey = NSColor::colorWithDeviceWhite_alpha(0.9, 1.0);
    const auto draw = [](const Ref<NSColor>& from, const Ref<NSColor>& to, NSRect rect, double angle) {
        make<NSGradient>()->initWithStartingColor_endingColor(from, to)->drawInRect_angle(rect, angle);
    };
    const NSRect rect = NSMakeRect(0.0, 0.0, 100.0, 22.0);
    const Ref<Canvas> canvas = make<Canvas>(NSSize{40.0, 30.0}, true, [&] {
        draw(white, grey, rect, 90.0);
        draw(nullptr, grey, rect, 90.0);
        draw(white, nullptr, rect, 90.0);
        draw(white, grey, NSMakeRect(0.0, 0.0, 100.0, 0.0), 90.0);
        draw(white, grey, rect, std::nan(""));
        draw(white, grey, rect, HUGE_VAL);
    });
    EXPECT_EQ(operationsOf(*canvas), Operations{"drawGradient white(1, 1) to deviceWhite(0.9, 1) {{0, 0}, "
                                                "{100, 22}} angle 90"});
    EXPECT_FALSE(grey->isEqual(NSColor::colorWithCalibratedWhite_alpha(0.9, 1.0).get()));
    draw(white, grey, rect, 90.0); // nowhere
    const Ref<NSImage> endless = paint(false, [&] {
        draw(red(), red(), {{5.0, 0.0}, {HUGE_VAL, 1e300}}, 45.0);
    });
    EXPECT_EQ(inkOf(pixelsOf(*endless)), QRect(5, 0, 35, 30));
}

TEST(NSGraphicsContextTest, KeepsImagesUpright)
{
    const Ref<NSImage> image = paint(true, [] { // red in its upper half
        red()->setFill();
        NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 40.0, 15.0));
    });
    const auto drawn = [&](bool flipped, double fraction, bool respectFlipped) {
        return paint(flipped, [=] {
            image->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
                NSMakeRect(0.0, 0.0, 20.0, 20.0), NSZeroRect, NSCompositingOperation::SourceOver, fraction,
                respectFlipped, nullptr);
        });
    };
    EXPECT_EQ(inkOf(pixelsOf(*drawn(true, 1.0, true))), QRect(0, 0, 20, 10));
    EXPECT_EQ(inkOf(pixelsOf(*drawn(true, 1.0, false))), QRect(0, 10, 20, 10)) << "upside down on demand";
    EXPECT_EQ(inkOf(pixelsOf(*drawn(false, 1.0, true))), QRect(0, 10, 20, 10));
    EXPECT_EQ(pixel(*drawn(true, 0.5, true), 10, 2), "#7fff0000") << "half, rounded down";
}

NSAttributes inRed(double size, const char* font)
{
    return {{NSFontAttributeName, NSFont::fontWithName_size(font, size)},
            {NSForegroundColorAttributeName, red()}};
}

/// A picture of `string` drawn into `rect` of a canvas.
QImage written(const char* string, NSRect rect, double size, const char* font = "Arial", bool flipped = true)
{
    const auto draw = [&] { text(string)->drawInRect_withAttributes(rect, inRed(size, font)); };
    return pixelsOf(*paint(flipped, draw, 2.0));
}

TEST(NSGraphicsContextTest, WrapsTextAtWords)
{
    const NSRect all = NSMakeRect(0.0, 0.0, 40.0, 30.0);
    // In turn, so that no layout is taken for another of another width or size.
    for (const double size : {7.0, 6.5}) {
        const double width = text("ab ab")->sizeWithAttributes(inRed(size, "Arial")).width;
        EXPECT_EQ(written("ab ab ab", NSMakeRect(0.0, 0.0, width * 1.03, 30.0), size),
                  written("ab ab\nab", all, size));
        EXPECT_EQ(written("ab ab ab", NSMakeRect(0.0, 0.0, width * 0.7, 30.0), size),
                  written("ab\nab\nab", all, size));
    }
    EXPECT_EQ(written("HHHH", NSMakeRect(0.0, 0.0, 12.0, 30.0), 7.0), written("HH\nHH", all, 7.0))
        << "a word that is too wide";
}

TEST(NSGraphicsContextTest, SetsTextInItsPlaceColourAndSize)
{
    for (const bool flipped : {true, false}) {
        const QImage picture = written("IH", NSMakeRect(5.0, 0.0, 35.0, 30.0), 25.0, "Arial Bold", flipped);
        const QRect ink = inkOf(picture);
        EXPECT_GE(ink.left(), 10);
        EXPECT_LT(ink.left(), 16);
        EXPECT_NEAR(ink.top(), 2.0 * 25.0 * (1854.0 - 1466.0) / 2048.0, 2.0)
            << "the capitals' height under the ascent";
        EXPECT_EQ(picture.pixelColor(ink.topLeft() + QPoint(4, 8)).name(QColor::HexArgb), kRed);
    }
    const auto widthAt = [](double size) {
        return inkOf(written("HHHH", NSMakeRect(0.0, 0.0, 40.0, 30.0), size)).width();
    };
    EXPECT_NEAR(2 * widthAt(5.5), widthAt(11.0), 3);
}

TEST(NSGraphicsContextTest, ClipsTextToItsRectangleButNotItsGlyphs)
{
    const NSSize size = text("Aff")->sizeWithAttributes(inRed(14.0, "Arial Bold"));
    for (int tenth = 0; tenth < 10; ++tenth) {
        const double x = tenth / 10.0;
        EXPECT_EQ(written("Aff", {{x, 0.0}, size}, 14.0, "Arial Bold"),
                  written("Aff", NSMakeRect(x, 0.0, 39.0, 30.0), 14.0, "Arial Bold"))
            << x;
    }
    EXPECT_LT(inkOf(written("TT\nTT", NSMakeRect(0.0, 0.0, 40.0, 14.0), 12.0)).bottom(), 28);
    EXPECT_TRUE(inkOf(written("T", NSMakeRect(0.0, 0.0, -40.0, 28.0), 12.0)).isEmpty());
}

TEST(NSGraphicsContextTest, SetsTextAtAPointNeitherWrappedNorClipped)
{
    const auto at = [](NSPoint point, const char* string, bool flipped) {
        const auto draw = [=] { text(string)->drawAtPoint_withAttributes(point, inRed(10.0, "Arial")); };
        return pixelsOf(*paint(flipped, draw, 2.0));
    };
    const char* string = "Hi\nnot wrapped at 40";
    const double height = text(string)->sizeWithAttributes(inRed(10.0, "Arial")).height;
    for (const bool flipped : {true, false}) {
        const NSRect roomy = NSMakeRect(5.25, flipped ? 3.5 : 3.5 + height - 100.0, 1000.0, 100.0);
        EXPECT_EQ(at({5.25, 3.5}, string, flipped), written(string, roomy, 10.0, "Arial", flipped));
        EXPECT_LT(inkOf(at({20.0, 10.0}, "j", flipped)).left(), 40) << "a hook before the point";
    }
    text(string)->drawAtPoint_withAttributes({}, {}); // nowhere
    const Ref<Canvas> canvas = make<Canvas>(NSSize{40.0, 30.0}, true, [] {
        text("7")->drawAtPoint_withAttributes({126.0, 43.0}, inRed(12.0, "Arial"));
    });
    EXPECT_EQ(operationsOf(*canvas),
              Operations{"drawText \"7\" at {126, 43} font \"Arial\" 12 color sRGB(1, 0, 0, 1)"});
}

/// The most by which a component of a pixel differs.
int difference(const QImage& first, const QImage& second)
{
    int most = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            const QColor a = first.pixelColor(x, y);
            const QColor b = second.pixelColor(x, y);
            most = std::max({most, std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                             std::abs(a.blue() - b.blue()), std::abs(a.alpha() - b.alpha())});
        }
    }
    return first.size() == second.size() ? most : std::numeric_limits<int>::max();
}

TEST(NSGraphicsContextTest, DrawsTextAgainAsTheFirstTime)
{
    struct Case {
        const char* what;
        const char* string = "f\u00c5 j\u00fcgf"; // reaches out of its place on all sides
        const char* font = "Arial Italic";
        double size = 11.0;
        NSRect rect = NSMakeRect(4.0, 5.0, 36.0, 400.0);
        double alpha = 1.0;
        double white = 0.0;
        bool flipped = true;
        double scale = 1.0;
        bool underlined = false;
    };
    // In turn, so that none is taken for one before.
    const std::array cases{
        Case{.what = "plain"},
        Case{.what = "in another colour", .white = 0.6},
        Case{.what = "transparent", .alpha = 0.5},
        Case{.what = "in another font", .font = "Arial Bold"},
        Case{.what = "larger", .size = 13.5},
        Case{.what = "at another place", .rect = NSMakeRect(7.0, 8.0, 36.0, 400.0)},
        Case{.what = "between pixels", .rect = NSMakeRect(4.3, 5.6, 36.0, 400.0)},
        Case{.what = "partly outside", .rect = NSMakeRect(-6.0, -4.0, 36.0, 400.0)},
        Case{.what = "wrapped and clipped", .rect = NSMakeRect(4.0, 5.0, 14.0, 20.0)},
        Case{.what = "unflipped", .flipped = false},
        Case{.what = "at one and a half", .scale = 1.5},
        Case{.what = "at two", .scale = 2.0},
        Case{.what = "unflipped at two", .flipped = false, .scale = 2.0},
        Case{.what = "underlined", .underlined = true},
        Case{.what = "high", .string = "Z\u0317\u0317\u0317\u030d\u030d\u030d\u030d"},
    };
    for (const Case& each : cases) {
        const auto drawn = [&](const std::string& string) {
            const auto color =
                NSColor::colorWithSRGBRed_green_blue_alpha(each.white, each.white, 1.0, each.alpha);
            NSAttributes attributes{{NSFontAttributeName, NSFont::fontWithName_size(each.font, each.size)},
                                    {NSForegroundColorAttributeName, color}};
            if (each.underlined) {
                attributes.set(
                    {NSUnderlineStyleAttributeName, NSNumber::numberWithInteger(NSUnderlineStyleSingle)});
            }
            return pixelsOf(*paint(
                each.flipped,
                [&] {
                    NSColor::whiteColor()->setFill();
                    NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 20.0, 30.0)); // on white and on nothing
                    text(string.c_str())->drawInRect_withAttributes(each.rect, attributes);
                    NSColor::blackColor()->setFill();
                    NSBezierPath::fillRect(NSMakeRect(2.0, 2.0, 1.0, 1.0)); // still in its place
                },
                each.scale));
        };
        // A text of its own, which shows as without the line ends.
        const QImage once =
            drawn(each.string + std::string(static_cast<std::size_t>(&each - cases.data()) + 1, '\n'));
        for (int time = 1; time <= 3; ++time) {
            EXPECT_LE(difference(drawn(each.string), once), 1) << each.what << ", time " << time;
        }
    }
}

} // namespace
