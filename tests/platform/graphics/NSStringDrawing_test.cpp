#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSFont.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

NSSize sizeOf(const char* string, const char* font = "Arial", double size = 12.0)
{
    return text(string)->sizeWithAttributes({{NSFontAttributeName, NSFont::fontWithName_size(font, size)}});
}

// Arial and its metric-compatible substitute: 2048 units to the em, ascent 1854, descent 434, "A" 1366,
// "i" 455, bold "A" 1479, space 569.
constexpr double kUnits = 2048.0;
constexpr double kLine = (1854.0 + 434.0) / kUnits;
constexpr double kRounding = 1.0 / 32.0; // of the shaper, a glyph

TEST(NSStringDrawingTest, MeasuresByTheFontsOwnMetrics)
{
    EXPECT_NEAR(sizeOf("A").width, 1366.0 / kUnits * 12.0, kRounding);
    EXPECT_NEAR(sizeOf("A").height, kLine * 12.0, kRounding);
    EXPECT_NEAR(sizeOf("AiAi").width, 2.0 * (1366.0 + 455.0) / kUnits * 12.0, 4.0 * kRounding);
    EXPECT_NEAR(sizeOf("A", "Arial Bold").width, 1479.0 / kUnits * 12.0, kRounding);
    EXPECT_NEAR(sizeOf("A", "Arial", 100.0).width, 1366.0 / kUnits * 100.0, kRounding);
    EXPECT_NEAR(sizeOf("A", "Arial", 12.5).width, 1366.0 / kUnits * 12.5, 2.0 * kRounding)
        << "fractions count";
    EXPECT_EQ(sizeOf("A"), text("A")->sizeWithAttributes({})) << "Arial 12 is what text is set in";
}

TEST(NSStringDrawingTest, CountsLines)
{
    const double line = sizeOf("A").height;
    EXPECT_EQ(sizeOf(""), (NSSize{0.0, line}));
    EXPECT_EQ(sizeOf("A\nA").height, 2.0 * line);
    EXPECT_EQ(sizeOf("A\r\nA").height, 2.0 * line);
    EXPECT_EQ(sizeOf("A\n").height, 2.0 * line) << "a line end at the end begins a line";
    EXPECT_EQ(sizeOf("A\niii").width,
              sizeOf("A").width > sizeOf("iii").width ? sizeOf("A").width : sizeOf("iii").width);
    const std::string lengthy(20'000, 'A');
    EXPECT_EQ(sizeOf(lengthy.c_str()).height, line) << "measuring does not wrap";
}

TEST(NSStringDrawingTest, MeasuresTextBeyondTheBasicPlane)
{
    EXPECT_GT(sizeOf("\xF0\x9F\x98\x80").width, 0.0);
    EXPECT_EQ(sizeOf("e\xCC\x81").width, sizeOf("\xC3\xA9").width) << "a combining mark takes no room";
}

TEST(NSFontTest, IsNeverMissing)
{
    for (const double size : {0.0, -3.0, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(NSFont::fontWithName_size("Arial", size)->pointSize(), NSFont::kDefaultSize);
    }
    const Ref<NSFont> unknown = NSFont::fontWithName_size("No Such Family Bold", 14.0);
    EXPECT_EQ(unknown->pointSize(), 14.0);
    EXPECT_EQ(unknown->fontName()->UTF8String(), "No Such Family Bold");
    EXPECT_GT(text("A")->sizeWithAttributes({{NSFontAttributeName, unknown}}).width, 0.0);
    EXPECT_GT(text("A")
                  ->sizeWithAttributes({{NSFontAttributeName, NSFont::fontWithName_size("Arial", 1e300)}})
                  .width,
              0.0);
}

} // namespace
