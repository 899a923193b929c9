#include "platform/foundation/NSAttributedString.h"

#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

namespace
{

Ref<NSColor> grey(double white)
{
    return NSColor::colorWithCalibratedWhite_alpha(white, 1.0);
}

/// The text's runs as "location+length:white", without those that have no colour.
std::string colors(const NSAttributedString& string)
{
    std::string result;
    for (const NSAttributedString::Run& run : string.runs()) {
        if (const NSColor* color = run.attributes[NSForegroundColorAttributeName]) {
            result += std::to_string(run.range.location) + '+' + std::to_string(run.range.length) + ':' +
                      NSStringFromNumber(color->components()[0]) + ' ';
        }
    }
    return result;
}

TEST(NSAttributedStringTest, DividesAndJoinsItsRuns)
{
    const Ref<NSMutableAttributedString> string =
        make<NSMutableAttributedString>()->initWithString(text("0123456789").get());
    const auto set = [&](std::size_t location, std::size_t length, const Ref<NSColor>& color) {
        string->addAttribute_value_range(NSForegroundColorAttributeName, color, {location, length});
        return colors(*string);
    };
    EXPECT_EQ(set(2, 3, grey(0.5)), "2+3:0.5 ");
    EXPECT_EQ(set(4, 2, grey(0.25)), "2+2:0.5 4+2:0.25 ");
    EXPECT_EQ(set(6, 2, grey(0.25)), "2+2:0.5 4+4:0.25 ") << "equal neighbours are one";
    EXPECT_EQ(set(3, 0, grey(1.0)), "2+2:0.5 4+4:0.25 ");
    EXPECT_EQ(set(8, 50, grey(1.0)), "2+2:0.5 4+4:0.25 8+2:1 ") << "as far as the text goes";
    EXPECT_EQ(set(5, 1, nullptr), "2+2:0.5 4+1:0.25 6+2:0.25 8+2:1 ");

    NSRange range;
    EXPECT_EQ(
        string->attributesAtIndex_effectiveRange(7, &range)[NSForegroundColorAttributeName]->components()[0],
        0.25);
    EXPECT_EQ(range, (NSRange{6, 2}));
    string->attributesAtIndex_effectiveRange(10, &range);
    EXPECT_EQ(range, (NSRange{8, 2}));
    string->attributesAtIndex_effectiveRange(11, &range);
    EXPECT_EQ(range, (NSRange{NSNotFound, 0}));

    EXPECT_EQ(set(0, 10, grey(0.0)), "0+10:0 ");
    EXPECT_EQ(string->runs().size(), 1U);
}

TEST(NSAttributedStringTest, IsCopiedAndCompared)
{
    const Ref<NSMutableAttributedString> string =
        make<NSMutableAttributedString>()->initWithString(text("ab").get());
    string->addAttribute_value_range(NSUnderlineStyleAttributeName, NSNumber::numberWithInteger(1), {0, 1});
    const Ref<NSAttributedString> copy = string->copy();
    EXPECT_EQ(copy->copy(), copy) << "what does not change needs no copy";
    EXPECT_TRUE(copy->isEqual(string.get()));
    string->addAttribute_value_range(NSUnderlineStyleAttributeName, NSNumber::numberWithInteger(0), {0, 1});
    EXPECT_FALSE(copy->isEqual(string.get()));
    string->setAttributedString(copy.get());
    EXPECT_TRUE(copy->isEqual(string.get()));
    string->setAttributedString(string.get());
    EXPECT_TRUE(copy->isEqual(string.get()));
    string->setAttributedString(nullptr);
    EXPECT_EQ(string->length(), 0U);
    EXPECT_FALSE(copy->isEqual(make<NSAttributedString>()->initWithString(text("ab").get())));
}

TEST(NSAttributedStringTest, KeepsTheFontOfAnEmptyText)
{
    const Ref<NSMutableAttributedString> empty = make<NSMutableAttributedString>();
    const double height = empty->size().height;
    empty->addAttribute_value_range(NSFontAttributeName, NSFont::fontWithName_size("Arial", 24.0), {0, 0});
    EXPECT_NEAR(empty->size().height, 2.0 * height, 0.05);
}

} // namespace
