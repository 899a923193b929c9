#include "platform/graphics/NSLayoutManager.h"

#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSParagraphStyle.h"
#include "platform/graphics/NSTextContainer.h"
#include "platform/graphics/NSTextStorage.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

constexpr double kRounding = 1.0 / 16.0; // of the shaper, over some glyphs
constexpr double kUnlimited = 1e30;
constexpr const char* kHebrew = "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"; // four letters

Ref<NSParagraphStyle> style(NSTextAlignment alignment)
{
    const Ref<NSMutableParagraphStyle> style = make<NSMutableParagraphStyle>();
    style->setAlignment(alignment);
    return style;
}

double rightOf(NSRect rect)
{
    return rect.origin.x + rect.size.width;
}

double widthOf(const char* string)
{
    return text(string)->sizeWithAttributes({}).width;
}

/// A text system with a text in Arial 12.
struct TextSystem {
    explicit TextSystem(const char* string, double width = kUnlimited, double padding = 0.0)
        : storage(make<NSTextStorage>()->initWithString(text(string).get())), layout(make<NSLayoutManager>()),
          container(make<NSTextContainer>()->initWithContainerSize({width, kUnlimited}))
    {
        container->setLineFragmentPadding(padding);
        layout->addTextContainer(container);
        storage->addLayoutManager(layout);
    }

    NSRange all() const { return {0, storage->length()}; }
    NSRect used() const { return layout->usedRectForTextContainer(container.get()); }
    std::vector<NSRect> rects(NSRange range) const
    {
        return layout->enclosingRectsForGlyphRange_inTextContainer(range, container.get());
    }
    std::size_t at(double x, double y) const
    {
        return layout->glyphIndexForPoint_inTextContainer({x, y}, container.get());
    }
    std::vector<NSRange> lines() const
    {
        std::vector<NSRange> lines;
        NSRange line;
        for (std::size_t index = 0; index <= storage->length(); index = NSMaxRange(line)) {
            layout->lineFragmentRectForGlyphAtIndex_effectiveRange(index, &line);
            if (!lines.empty() && line == lines.back()) {
                break;
            }
            lines.push_back(line);
        }
        return lines;
    }

    Ref<NSTextStorage> storage;
    Ref<NSLayoutManager> layout;
    Ref<NSTextContainer> container;
};

TEST(NSLayoutManagerTest, BreaksLinesWhereTheTextDoesAndWhereTheWidthEnds)
{
    const double words = widthOf("ab ab") + 0.5;
    const struct {
        const char* text;
        double width;
        std::vector<NSRange> lines;
    } cases[] = {
        {"", 50.0, {{0, 0}}},
        {"ab ab ab", kUnlimited, {{0, 8}}},
        {"ab ab ab", words, {{0, 6}, {6, 2}}},
        {"ab\nab\r\nab\rab\xE2\x80\xA9\x61", kUnlimited, {{0, 3}, {3, 4}, {7, 3}, {10, 3}, {13, 1}}},
        {"ab\xE2\x80\xA8\x61", kUnlimited, {{0, 3}, {3, 1}}},
        {"ab\n", kUnlimited, {{0, 3}, {3, 0}}},
        {"\n\n", kUnlimited, {{0, 1}, {1, 1}, {2, 0}}},
        {"abab", widthOf("ab") + 0.5, {{0, 2}, {2, 2}}},
        {"ab", 0.0, {{0, 1}, {1, 1}}},
        {"ab", -8.0, {{0, 1}, {1, 1}}},
        {"\xF0\x9F\x98\x80\xF0\x9F\x98\x80", 0.0, {{0, 2}, {2, 2}}},
        {"e\xCC\x81"
         "e\xCC\x81",
         0.0,
         {{0, 2}, {2, 2}}},
    };
    const double line = text("A")->sizeWithAttributes({}).height;
    for (const auto& [string, width, lines] : cases) {
        const TextSystem system(string, width);
        EXPECT_EQ(system.lines(), lines) << string << " in " << width;
        EXPECT_EQ(system.layout->numberOfGlyphs(), system.storage->length());
        EXPECT_EQ(system.layout->glyphRangeForTextContainer(system.container.get()), system.all());
        if (std::ranges::all_of(std::string_view(string), [](char unit) { return unit > 0; })) {
            // other characters may come from other fonts, with other heights
            EXPECT_NEAR(system.used().size.height, line * static_cast<double>(lines.size()), 1e-9) << string;
        }
    }
}

TEST(NSLayoutManagerTest, AlignsParagraphsWithinTheWidthAndThePadding)
{
    const double width = widthOf("ab");
    const struct {
        NSTextAlignment alignment;
        const char* text;
        double left;
    } cases[] = {
        {NSTextAlignment::Left, "ab", 5.0},
        {NSTextAlignment::Center, "ab", (100.0 - width) / 2.0},
        {NSTextAlignment::Right, "ab", 95.0 - width},
        {NSTextAlignment::Justified, "ab", 5.0},
        {NSTextAlignment::Natural, "ab", 5.0},
        {NSTextAlignment::Natural, kHebrew, 95.0 - widthOf(kHebrew)},
        {NSTextAlignment::Justified, kHebrew, 95.0 - widthOf(kHebrew)},
        {NSTextAlignment::Left, kHebrew, 5.0},
    };
    for (const auto& [alignment, string, left] : cases) {
        const TextSystem system(string, 100.0, 5.0);
        system.storage->addAttribute_value_range(NSParagraphStyleAttributeName, style(alignment),
                                                 system.all());
        ASSERT_EQ(system.rects(system.all()).size(), 1U);
        EXPECT_NEAR(system.rects(system.all())[0].origin.x, left, kRounding) << string;
        EXPECT_NEAR(system.used().origin.x, left - 5.0, kRounding) << "with the padding";
        EXPECT_NEAR(system.used().size.width, widthOf(string) + 10.0, kRounding);
        const NSRect fragment = system.layout->lineFragmentRectForGlyphAtIndex_effectiveRange(0, nullptr);
        EXPECT_EQ(fragment.origin.x, 0.0);
        EXPECT_EQ(fragment.size.width, 100.0);
    }

    const TextSystem justified("ab ab ab", widthOf("ab ab") + 8.0);
    justified.storage->addAttribute_value_range(NSParagraphStyleAttributeName,
                                                style(NSTextAlignment::Justified), justified.all());
    EXPECT_NEAR(justified.rects({3, 2})[0].origin.x, widthOf("ab ") + 8.0, kRounding)
        << "the gap takes what is left";

    const TextSystem two("ab\nab\nab ab", 100.0);
    two.storage->addAttribute_value_range(NSParagraphStyleAttributeName, style(NSTextAlignment::Right),
                                          {3, 3});
    EXPECT_EQ(two.rects({0, 2})[0].origin.x, 0.0);
    EXPECT_NEAR(two.rects({3, 2})[0].origin.x, 100.0 - width, kRounding) << "each paragraph by its own style";
    EXPECT_EQ(two.rects({6, 2})[0].origin.x, 0.0);
    EXPECT_NEAR(rightOf(two.used()), 100.0, kRounding);
    two.container->setContainerSize({width / 2.0, kUnlimited});
    EXPECT_EQ(two.rects({3, 1})[0].origin.x, 0.0) << "never left of the container";

    const TextSystem free("ab\nlonger");
    free.storage->addAttribute_value_range(NSParagraphStyleAttributeName, style(NSTextAlignment::Right),
                                           {0, 1});
    EXPECT_NEAR(free.rects({0, 2})[0].origin.x, widthOf("longer") - width, kRounding)
        << "without a width, within the widest line";
}

TEST(NSLayoutManagerTest, FindsEveryGlyphWhereItSaysItIs)
{
    const std::string both = std::string("one ") + kHebrew + " two";
    const double narrow = widthOf("one two") + 0.5;
    for (const std::string& string : {std::string("one two three four"), both, std::string(kHebrew)}) {
        for (const double width : {kUnlimited, narrow}) {
            const TextSystem system(string.c_str(), width, 3.0);
            for (std::size_t index = 0; index < system.storage->length(); ++index) {
                const std::vector<NSRect> rects = system.rects({index, 1});
                NSRange line;
                const NSRect fragment =
                    system.layout->lineFragmentRectForGlyphAtIndex_effectiveRange(index, &line);
                if (index + 1 == NSMaxRange(line) && index + 1 < system.storage->length()) {
                    EXPECT_TRUE(rects.empty()) << "the space where the line is wrapped takes no room";
                    continue;
                }
                ASSERT_EQ(rects.size(), 1U) << string << ' ' << index << ' ' << width;
                const NSPoint middle{rects[0].origin.x + rects[0].size.width / 2.0,
                                     rects[0].origin.y + rects[0].size.height / 2.0};
                EXPECT_EQ(system.at(middle.x, middle.y), index) << string;
                EXPECT_TRUE(NSContainsRect(NSInsetRect(fragment, 0.0, -1e-6), rects[0]));
            }
        }
    }
    const TextSystem lines("ab\ncd\n");
    EXPECT_EQ(lines.at(-50.0, -50.0), 0U);
    EXPECT_EQ(lines.at(500.0, 2.0), 1U) << "the nearest on the line";
    EXPECT_EQ(lines.at(-5.0, 20.0), 3U);
    EXPECT_EQ(lines.at(5.0, 5000.0), 6U) << "the empty last line";
    EXPECT_EQ(TextSystem("").at(5.0, 5.0), 0U);
    for (const double far : {1e7, 1e9, 1e300}) {
        EXPECT_EQ(lines.at(far, 2.0), 1U);
        EXPECT_EQ(lines.at(-far, 20.0), 3U);
    }
    const TextSystem accents("ae\xCC\x81\xF0\x9F\x98\x80");
    EXPECT_EQ(accents.at(5000.0, 5.0), 3U) << "the beginning of the last character";
}

TEST(NSLayoutManagerTest, CoversARangeWithOneRectanglePerLineAndDirection)
{
    const TextSystem wrapped("one two three", widthOf("one two ") + 0.5);
    const std::vector<NSRect> rects = wrapped.rects({4, 7});
    ASSERT_EQ(rects.size(), 2U);
    EXPECT_NEAR(rects[0].origin.x, widthOf("one "), kRounding);
    EXPECT_NEAR(rects[1].origin.x, 0.0, kRounding);
    EXPECT_EQ(rects[1].origin.y, rects[0].size.height);
    EXPECT_NEAR(rects[1].size.width, widthOf("thr"), kRounding);
    EXPECT_EQ(wrapped.layout->boundingRectForGlyphRange_inTextContainer({4, 7}, wrapped.container.get()),
              NSUnionRect(rects[0], rects[1]));

    const TextSystem both((std::string("ab ") + kHebrew).c_str());
    EXPECT_EQ(both.rects({1, 4}).size(), 2U) << "b and two letters at the far end";
    EXPECT_EQ(both.rects(both.all()).size(), 1U);
    EXPECT_EQ(TextSystem("a\nb").rects({1, 1}).size(), 0U) << "a line end takes no room";
    const TextSystem tab("a\tb");
    EXPECT_NEAR(tab.rects({1, 1}).at(0).size.width, 28.0 - widthOf("a"), kRounding);
    EXPECT_EQ(tab.rects(tab.all()).size(), 1U);
    const TextSystem accent("ae\xCC\x81z");
    EXPECT_EQ(accent.rects({1, 1}), accent.rects({2, 1})) << "they share their place";
    EXPECT_EQ(wrapped.rects({5, 0}).size(), 0U);
    EXPECT_EQ(wrapped.rects({90, 8}).size(), 0U);
}

TEST(NSLayoutManagerTest, WidensRangesToWholeCharacters)
{
    const TextSystem system("a\xF0\x9F\x98\x80"
                            "e\xCC\x81\r\nb"); // a, two units, two units, two units, b
    const auto widened = [&](std::size_t location, std::size_t length) {
        NSRange actual;
        EXPECT_EQ(
            system.layout->glyphRangeForCharacterRange_actualCharacterRange({location, length}, &actual),
            actual);
        return actual;
    };
    EXPECT_EQ(widened(2, 1), (NSRange{1, 2}));
    EXPECT_EQ(widened(0, 2), (NSRange{0, 3}));
    EXPECT_EQ(widened(3, 1), (NSRange{3, 2}));
    EXPECT_EQ(widened(5, 1), (NSRange{5, 2}));
    EXPECT_EQ(widened(6, 2), (NSRange{5, 3}));
    EXPECT_EQ(widened(6, NSNotFound), (NSRange{5, 3}));
    EXPECT_EQ(widened(90, 5), (NSRange{8, 0}));
}

TEST(NSLayoutManagerTest, FollowsItsStorageAndContainer)
{
    TextSystem system("one two", 1000.0);
    EXPECT_EQ(system.lines().size(), 1U);
    system.container->setContainerSize({widthOf("one") + 0.5, kUnlimited});
    EXPECT_EQ(system.lines().size(), 2U);
    const double height = system.used().size.height;
    system.storage->addAttribute_value_range(NSFontAttributeName, NSFont::fontWithName_size("Arial", 6.0),
                                             system.all());
    EXPECT_NEAR(system.used().size.height, height / 2.0, kRounding) << "two lines of half the size";
    system.storage->setAttributedString(make<NSAttributedString>()->initWithString(text("x\ny\nz").get()));
    EXPECT_EQ(system.lines().size(), 3U);

    const double line = system.used().size.height / 3.0;
    system.container->setContainerSize({100.0, 2.0 * line});
    EXPECT_EQ(system.layout->glyphRangeForTextContainer(system.container.get()), (NSRange{0, 4}));
    EXPECT_EQ(system.used().size.height, 2.0 * line) << "what is beyond the height is not laid out";
    EXPECT_TRUE(system.rects({4, 1}).empty());
    EXPECT_EQ(system.at(1.0, 1000.0), 2U);

    const Ref<NSTextStorage> other = make<NSTextStorage>()->initWithString(text("other").get());
    other->addLayoutManager(system.layout);
    EXPECT_TRUE(system.storage->layoutManagers().empty());
    EXPECT_EQ(system.layout->textStorage(), other.get());
    EXPECT_EQ(system.lines().size(), 1U);
    const Ref<NSLayoutManager> layout = system.layout;
    system.storage->addLayoutManager(layout);
    system.storage = nullptr;
    EXPECT_EQ(layout->textStorage(), nullptr);
    EXPECT_EQ(layout->numberOfGlyphs(), 0U);
    EXPECT_EQ(layout->usedRectForTextContainer(nullptr), NSZeroRect);
}

TEST(NSLayoutManagerTest, SetsSeveralFontsOnOneBaseline)
{
    const TextSystem system("AAA");
    for (const auto& [index, size] : {std::pair(0, 12.0), std::pair(1, 24.5), std::pair(2, 7.25)}) {
        system.storage->addAttribute_value_range(NSFontAttributeName,
                                                 NSFont::fontWithName_size("Arial", size),
                                                 {static_cast<std::size_t>(index), 1});
    }
    EXPECT_NEAR(system.rects({1, 1})[0].size.width, widthOf("A") / 12.0 * 24.5, kRounding);
    EXPECT_NEAR(system.rects({2, 1})[0].size.width, widthOf("A") / 12.0 * 7.25, kRounding);
    EXPECT_NEAR(system.used().size.height, (1854.0 + 434.0) / 2048.0 * 24.5, kRounding);
    system.storage->addAttribute_value_range(NSFontAttributeName, NSFont::fontWithName_size("Arial", 4000.0),
                                             {0, 1});
    EXPECT_NEAR(system.used().size.height, (1854.0 + 434.0) / 2048.0 * 4000.0, 1.0);
}

// Drawing

constexpr const char* kRed = "#ffff0000";
constexpr const char* kBlue = "#ff0000ff";
constexpr const char* kNothing = "#00000000";

TEST(NSLayoutManagerTest, DrawsGlyphsDownwardsFromAPointInTheirColours)
{
    // Blocks, so that a pixel in the middle tells.
    const TextSystem system("\xE2\x96\x88\xE2\x96\x88\n\xE2\x96\x88\xE2\x96\x88", kUnlimited, 5.0);
    system.storage->addAttribute_value_range(
        NSFontAttributeName, NSFont::fontWithName_size("Liberation Sans", 20.0), system.all());
    system.storage->addAttribute_value_range(NSForegroundColorAttributeName,
                                             NSColor::colorWithSRGBRed_green_blue_alpha(1.0, 0.0, 0.0, 1.0),
                                             system.all());
    system.storage->addAttribute_value_range(NSForegroundColorAttributeName,
                                             NSColor::colorWithSRGBRed_green_blue_alpha(0.0, 0.0, 1.0, 1.0),
                                             {1, 1});
    const auto middleOf = [&](std::size_t index) {
        const NSRect rect = system.rects({index, 1}).at(0);
        return NSPoint{rect.origin.x + rect.size.width / 2.0, rect.origin.y + rect.size.height / 2.0};
    };
    for (const bool flipped : {true, false}) {
        for (const NSRange drawn : {system.all(), NSRange{1, 3}, NSRange{4, 1}}) {
            const NSPoint origin{10.0, flipped ? 20.0 : 80.0}; // 20 from the top
            const Ref<Canvas> canvas = make<Canvas>(NSSize{100.0, 100.0}, flipped, [&] {
                system.layout->drawGlyphsForGlyphRange_atPoint(drawn, origin);
            });
            const Ref<NSImage> picture = canvas->imageOfBounds(1.0);
            for (const std::size_t index : {0U, 1U, 3U, 4U}) {
                const NSPoint middle = middleOf(index);
                const bool inside = index >= drawn.location && index < NSMaxRange(drawn);
                EXPECT_EQ(
                    pixel(*picture, static_cast<int>(10.0 + middle.x), static_cast<int>(20.0 + middle.y)),
                    !inside      ? kNothing
                    : index == 1 ? kBlue
                                 : kRed)
                    << flipped << ' ' << drawn.location << ' ' << index;
            }
            if (flipped) {
                const std::vector<std::string> recorded = operationsOf(*canvas);
                ASSERT_EQ(recorded.size(), 1U);
                EXPECT_EQ(recorded[0].substr(0, recorded[0].find('"')),
                          "drawGlyphs {" + std::to_string(drawn.location) + ", " +
                              std::to_string(drawn.length) + "} ");
                EXPECT_TRUE(recorded[0].find("\" at {10, 20} container {1e+30, 1e+30} padding 5 [{0, 1} font "
                                             "\"Liberation Sans\" 20 color sRGB(1, 0, 0, 1)] [{1, 1} ") !=
                            std::string::npos)
                    << recorded[0];
            }
        }
    }
}

TEST(NSLayoutManagerTest, UnderlinesWhatIsUnderlined)
{
    const TextSystem system("      "); // nothing but the line shows
    system.storage->addAttribute_value_range(NSForegroundColorAttributeName,
                                             NSColor::colorWithSRGBRed_green_blue_alpha(1.0, 0.0, 0.0, 1.0),
                                             system.all());
    system.storage->addAttribute_value_range(NSUnderlineStyleAttributeName,
                                             NSNumber::numberWithInteger(NSUnderlineStyleSingle), {2, 3});
    const NSRect underlined = system.rects({2, 3}).at(0);
    for (const double y : {0.0, 0.3, 0.6}) {
        const Ref<Canvas> canvas = make<Canvas>(NSSize{30.0, 20.0}, true, [&] {
            system.layout->drawGlyphsForGlyphRange_atPoint(system.all(), {0.0, y});
        });
        const Ref<NSImage> picture = canvas->imageOfBounds(1.0);
        std::string column;
        for (int row = 0; row < 20; ++row) {
            const bool red = pixel(*picture, static_cast<int>(underlined.origin.x + 4.0), row) == kRed;
            column += red ? 'u' : ' ';
            EXPECT_EQ(pixel(*picture, 2, row), kNothing);
            EXPECT_EQ(pixel(*picture, static_cast<int>(rightOf(underlined)) + 2, row), kNothing);
        }
        EXPECT_EQ(std::ranges::count(column, 'u'), 1) << "one sharp line";
        EXPECT_GE(column.find('u'), 11U) << "below the baseline";
        EXPECT_LE(column.find('u'), 13U);
    }
}

} // namespace
