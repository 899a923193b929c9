#include "platform/foundation/NSAttributes.h"
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
// "i" 455, bold "A" 1479.
constexpr double kUnits = 2048.0;
constexpr double kLine = (1854.0 + 434.0) / kUnits;
constexpr double kRounding = 1.0 / 32.0; // of the shaper, a glyph

TEST(NSStringDrawingTest, MeasuresByTheFontsOwnMetrics)
{
    EXPECT_NEAR(sizeOf("A").height, kLine * 12.0, kRounding);
    EXPECT_NEAR(sizeOf("AiAi").width, 2.0 * (1366.0 + 455.0) / kUnits * 12.0, 4.0 * kRounding);
    EXPECT_NEAR(sizeOf("A", "Arial Bold").width, 1479.0 / kUnits * 12.0, kRounding);
    EXPECT_NEAR(sizeOf("A", "Arial", 12.5).width, 1366.0 / kUnits * 12.5, 2.0 * kRounding)
        << "fractions count";
    EXPECT_EQ(sizeOf("A"), text("A")->sizeWithAttributes({})) << "Arial 12 is what text is set in";
    EXPECT_EQ(sizeOf("A"), sizeOf("A", "Arial", std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(sizeOf("A"), sizeOf("A", "Arial", 0.0));
    EXPECT_GT(sizeOf("A", "Arial", 1e300).width, 0.0);
    EXPECT_GT(sizeOf("A", "No Such Family").width, 0.0);
}

TEST(NSStringDrawingTest, CountsLines)
{
    const double line = sizeOf("A").height;
    EXPECT_EQ(sizeOf(""), (NSSize{0.0, line}));
    EXPECT_EQ(sizeOf("A\r\nA").height, 2.0 * line);
    EXPECT_EQ(sizeOf("A\n").height, 2.0 * line) << "a line end at the end begins a line";
    EXPECT_EQ(sizeOf("AA\niii").width, sizeOf("AA").width);
    EXPECT_EQ(sizeOf(std::string(20'000, 'A').c_str()).height, line) << "measuring does not wrap";
}

} // namespace
