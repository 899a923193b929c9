#include "window/ZuLine.h"

#include "platform/graphics/NSColor.h"
#include "support/Drawing.h"
#include "support/Looks.h"
#include "window/ZuBorderView.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QRect>

namespace
{

TEST(ZuLineTest, DrawsItsLooks)
{
    const auto drawn = [](const char* path) {
        return Operations{"strokeColor white(0, 1)", std::string("strokePath ") + path};
    };
    EXPECT_EQ(operationsOf(*shown<ZuLine>("horizontal")), drawn("move {0, 0} line {100, 0} width 2"));
    EXPECT_EQ(operationsOf(*shown<ZuLine>("horizontal, dashed")),
              drawn("move {0, 0} line {100, 0} width 2 dash 3, 1 phase 0"));
    EXPECT_EQ(operationsOf(*shown<ZuLine>("vertical")), drawn("move {0, 0} line {0, 40} width 40"));
    EXPECT_EQ(operationsOf(*shown<ZuLine>("vertical, dashed")),
              drawn("move {0, 0} line {0, 40} width 40 dash 3, 1 phase 0"));

    const Ref<ZuLine> line = shown<ZuLine>("horizontal");
    const NSRect part = NSMakeRect(50.0, 1.0, 20.0, 0.5);
    EXPECT_EQ(operationsOf(*line, part), drawn("move {0, 0} line {20, 0} width 0.5")) << "from the origin";
    line->setStyle_(2);
    EXPECT_EQ(operationsOf(*line), drawn("move {0, 0} line {100, 0} width 2")) << "solid";
    for (const std::int32_t type : {2, -1}) {
        line->setType_(type);
        EXPECT_EQ(operationsOf(*line), drawn("move {0, 0} width 1"));
        EXPECT_EQ(inkOf(pixelsOf(*line->imageOfBounds(2.0))), QRect());
    }
    line->setStyle_(ZuLine::kDashed);
    EXPECT_EQ(inkOf(pixelsOf(*line->imageOfBounds(2.0))), QRect()) << "nor dashed";
}

TEST(ZuLineTest, ShowsAlongItsLowerOrLeftEdge)
{
    struct Case {
        const char* name;
        NSSize size;
        QRect ink; // below the line's top-left corner
    };
    const NSPoint corner{5.0, 20.0};
    for (const bool flipped : {false, true}) {
        const Ref<ZuBorderView> parent =
            make<ZuBorderView>()->initWithFrame(NSMakeRect(0.0, 0.0, 120.0, 100.0));
        parent->setColor_border_(nullptr);
        parent->setFlipped(flipped);
        for (const auto& [name, size, ink] : {Case{"horizontal", {100.0, 4.0}, {0, 2, 100, 2}},
                                              {"horizontal, dashed", {100.0, 4.0}, {0, 2, 99, 2}},
                                              {"vertical", {1.0, 40.0}, {0, 0, 1, 40}},
                                              {"vertical", {30.0, 40.0}, {0, 0, 20, 40}},
                                              {"horizontal", {100.0, 0.0}, {}}}) {
            const Ref<ZuLine> line = shown<ZuLine>(name);
            line->setFrame({corner, size});
            parent->addSubview(line);
            const double top = flipped ? corner.y : 100.0 - corner.y - size.height;
            const QRect expected = ink.isNull() ? ink : ink.translated(5, static_cast<int>(top));
            EXPECT_EQ(inkOf(pixelsOf(*parent->imageOfBounds(1.0))), expected) << name << ' ' << flipped;
            line->removeFromSuperview();
        }
    }
}

TEST(ZuLineTest, AwakesBlackSolidAndHorizontal)
{
    const Ref<ZuLine> line = make<ZuLine>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 2.0));
    EXPECT_EQ(operationsOf(*line), Operations{}) << "there is no colour yet";
    line->imageOfBounds(1.0);
    line->setStyle_(ZuLine::kDashed);
    line->setType_(ZuLine::kVertical);
    line->setColor_(NSColor::whiteColor());
    EXPECT_EQ(operationsOf(*line)[0], "strokeColor white(1, 1)");
    line->awakeFromNib();
    EXPECT_FALSE(line->needsDisplay()) << "stored without a redraw";
    EXPECT_EQ(operationsOf(*line), operationsOf(*shown<ZuLine>("horizontal")));
}

} // namespace
