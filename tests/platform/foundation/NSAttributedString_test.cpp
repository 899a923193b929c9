#include "platform/foundation/NSAttributedString.h"

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

TEST(NSAttributedStringTest, KeepsItsRuns)
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

    for (const auto& [index, expected] :
         {std::pair(7U, NSRange{6, 2}), {10U, {8, 2}}, {11U, {NSNotFound, 0}}}) {
        NSRange range;
        string->attributesAtIndex_effectiveRange(index, &range);
        EXPECT_EQ(range, expected);
    }
    EXPECT_EQ(set(5, 1, grey(0.25)), "2+2:0.5 4+4:0.25 8+2:1 ");
    EXPECT_EQ(set(0, 10, grey(0.0)), "0+10:0 ");

    const Ref<NSAttributedString> copy = string->copy();
    EXPECT_EQ(copy->copy(), copy) << "what does not change needs no copy";
    EXPECT_TRUE(copy->isEqual(string.get()));
    set(0, 1, grey(1.0));
    EXPECT_FALSE(copy->isEqual(string.get()));
    string->setAttributedString(copy.get());
    string->setAttributedString(string.get());
    EXPECT_TRUE(copy->isEqual(string.get()));
    EXPECT_FALSE(copy->isEqual(make<NSAttributedString>()->initWithString(copy->string().get())));

    string->setAttributedString(nullptr);
    const double height = string->size().height;
    string->addAttribute_value_range(NSFontAttributeName, NSFont::fontWithName_size("Arial", 24.0), {0, 0});
    EXPECT_NEAR(string->size().height, 2.0 * height, 0.05) << "an empty text has a font";
}

TEST(NSAttributedStringTest, FindsHowFarAnAttributeStaysTheSame)
{
    const Ref<NSMutableAttributedString> string =
        make<NSMutableAttributedString>()->initWithString(text("0123456789").get());
    const NSRange all{0, 10};
    for (const auto& [range, link] :
         {std::pair(NSRange{2, 3}, "a"), {NSRange{5, 2}, "a"}, {NSRange{7, 1}, "b"}}) {
        string->addAttribute_value_range(NSLinkAttributeName, Ref<NSObject>(text(link)), range);
    }
    string->addAttribute_value_range(NSForegroundColorAttributeName, grey(0.5), {3, 3});
    const auto stretchAt = [&](std::size_t index, NSRange limit) {
        NSRange range;
        const auto* value = dynamic_cast<NSString*>(string->attribute_atIndex_longestEffectiveRange_inRange(
            NSLinkAttributeName, index, &range, limit));
        return (value != nullptr ? value->UTF8String() : "-") + std::to_string(range.location) + '+' +
               std::to_string(range.length);
    };
    EXPECT_EQ(stretchAt(0, all), "-0+2");
    EXPECT_EQ(stretchAt(4, all), "a2+5") << "whatever the colour, and in whichever object the link is";
    EXPECT_EQ(stretchAt(4, {3, 3}), "a3+3");
    EXPECT_EQ(stretchAt(7, all), "b7+1");
    EXPECT_EQ(stretchAt(9, {9, 1}), "-9+1");
    EXPECT_EQ(stretchAt(10, all), "-" + std::to_string(NSNotFound) + "+0");

    std::string seen;
    string->enumerateAttributesInRange_usingBlock(
        {1, 6}, [&](const NSAttributes& attributes, NSRange range, bool& stop) {
            seen += std::to_string(range.location) + '+' + std::to_string(range.length) + ' ';
            string->setAttributedString(nullptr);
            stop = attributes[NSLinkAttributeName] != nullptr &&
                   attributes[NSForegroundColorAttributeName] != nullptr;
        });
    EXPECT_EQ(seen, "1+1 2+1 3+3 ");
    string->setAttributes_range({{NSForegroundColorAttributeName, grey(0.25)}}, {0, 5});
    EXPECT_EQ(colors(*string), "0+0:0.25 ") << "of an empty text";
}

} // namespace
