#include "util/UiUtil.h"

#include "platform/appkit/CALayer.h"
#include "platform/appkit/NSButton.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSParagraphStyle.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QImage>

namespace
{

/// Sentences in several scripts, long words, and texts of several paragraphs.
constexpr const char* kSentences[] = {
    "The quick brown fox jumps over the lazy dog, and then it sleeps.",
    "Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft ist lang.",
    "Ξεσκεπάζω την ψυχοφθόρα βδελυγμία.",
    "Съешь же ещё этих мягких булок.",
    "דג סקרן שט בים מאוכזב three words here.",
    "いろはにほへと and some Latin words, 天地玄黄宇宙洪荒",
    "نص حكيم له سر قاطع",
    "เป็นมนุษย์สุด mixed 😀👍",
    "First line\nsecond, a little longer line\r\n\nand a last one.",
};

Ref<NSFont> arial(double size)
{
    return NSFont::fontWithName_size("Arial", size);
}

float heightOf(const char* string, float width, double size = 12.0)
{
    return UiUtil::heightForStringDrawing_withFont_withWidth(text(string).get(), arial(size).get(), width);
}

TEST(UiUtilTest, MeasuresWrappedText)
{
    const auto line = static_cast<float>((1854.0 + 434.0) / 2048.0 * 12.0);
    const auto width = static_cast<float>(text("two words")->sizeWithAttributes({}).width);
    constexpr float kRounding = 1.0F / 32.0F;
    EXPECT_NEAR(heightOf("two words", width), line, kRounding) << "its own width holds a text";
    EXPECT_NEAR(heightOf("two words", width - 1.0F), 2.0F * line, 2.0F * kRounding);
    EXPECT_NEAR(heightOf("", 500.0F, 24.0), 2.0F * line, 2.0F * kRounding);
    EXPECT_EQ(UiUtil::heightForStringDrawing_withFont_withWidth(nullptr, arial(12.0).get(), 10.0F), 0.0F);
}

TEST(UiUtilTest, MeasuresNoMoreAtAGreaterWidth)
{
    for (const char* sentence : kSentences) {
        for (const double size : {12.0, 13.5}) {
            float last = std::numeric_limits<float>::max();
            for (int tenths = 0; tenths < 6000; tenths += 23) {
                const float width = static_cast<float>(tenths) / 10.0F;
                const float height = heightOf(sentence, width, size);
                ASSERT_LE(height, last) << sentence << " at " << width;
                last = height;
            }
        }
    }
}

TEST(UiUtilTest, DrawsAsManyLinesAsItMeasures)
{
    Ref<NSString> string;
    NSRect rect;
    const Ref<Canvas> canvas = make<Canvas>(NSSize{300.0, 800.0}, true, [&] {
        UiUtil::drawStringInView_withFont_withRect_withColor_withAlign(
            string.get(), arial(12.0).get(), rect, NSColor::grayColor().get(), NSTextAlignment::Right);
    });
    constexpr double kPadding = 5.0;
    for (const char* sentence : kSentences) {
        const double line = heightOf(sentence, 1e9F) /
                            static_cast<float>(1 + std::ranges::count(std::string_view(sentence), '\n'));
        for (const double width : {30.0, 55.5, 120.0, 250.0}) {
            string = text(sentence);
            rect = NSMakeRect(10.0, 20.0, width + 2.0 * kPadding, 1.0); // too low for any line
            const double bottom = 20.0 + heightOf(sentence, static_cast<float>(width));
            const int ink = inkOf(pixelsOf(*canvas->imageOfBounds(1.0))).bottom();
            EXPECT_LE(ink, bottom) << sentence << " in " << width;
            EXPECT_GT(ink, bottom - line) << sentence << " in " << width;
        }
    }
    EXPECT_EQ(operationsOf(*canvas).at(0),
              "drawGlyphs {0, 57} \"First line\\nsecond, a little longer line\\r\\n\\nand a last one.\" at "
              "{10, 20} "
              "container {260, 3.4028234663852886e+38} padding 5 font \"Arial\" 12 color white(0.5, 1) "
              "alignment 1");
    string = nullptr;
    EXPECT_TRUE(operationsOf(*canvas).empty());
}

TEST(UiUtilTest, ColoursTheTitlesOfButtons)
{
    const Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 80.0, 24.0));
    UiUtil::setButton_red_green_blue(button.get(), 1, 2, 3); // of no title
    const Ref<NSMutableAttributedString> title =
        make<NSMutableAttributedString>()->initWithString(text("two").get());
    title->addAttribute_value_range(NSFontAttributeName, arial(20.0), {0, 1});
    button->setAttributedTitle(title);
    const auto color = [&] {
        const auto runs = button->attributedTitle()->runs();
        EXPECT_TRUE(runs.at(0).attributes[NSFontAttributeName] != nullptr) << "is kept";
        return runs.at(1).attributes[NSForegroundColorAttributeName]->description();
    };
    UiUtil::setButton_red_green_blue(button.get(), 255, 128, 0);
    EXPECT_EQ(color(), "sRGB(1, 0.5019607843137255, 0, 1)");
    UiUtil::setButton_fontColorHex(button.get(), text("zz00FF").get());
    UiUtil::setButton_fontColorHex(button.get(), nullptr);
    UiUtil::setButton_fontColor(button.get(), nullptr);
    UiUtil::setButton_fontColor(nullptr, NSColor::grayColor().get());
    EXPECT_EQ(color(), "sRGB(0, 0, 1, 1)");
    EXPECT_NE(operationsOf(*button).back().find("color sRGB(0, 0, 1, 1)"), std::string::npos);
}

TEST(UiUtilTest, PutsABackgroundBehindViews)
{
    const Ref<NSView> view = make<NSView>();
    view->initWithFrame(NSMakeRect(0.0, 0.0, 20.0, 10.0));
    UiUtil::changeBackgroundColor_red_green_blue(view.get(), 255, 300, -255);
    EXPECT_EQ(view->layer()->backgroundColor()->description(), "sRGB(1, 1.1764705882352942, -1, 1)");
    UiUtil::changeBackgroundColor_withRGB(view.get(), text("0000FF").get());
    UiUtil::changeBackgroundColor_withRGB(view.get(), nullptr);
    UiUtil::changeBackgroundColor_withColor(nullptr, NSColor::grayColor().get());
    EXPECT_EQ(operationsOf(*view, NSMakeRect(1.0, 1.0, 2.0, 2.0)),
              (Operations{"save", "fillColor sRGB(0, 0, 1, 1)", "fillRect {{0, 0}, {20, 10}}", "restore"}));
    EXPECT_EQ(pixel(*view->imageOfBounds(1.0), 19, 9), "#ff0000ff");
    EXPECT_FALSE(view->needsDisplay());
    UiUtil::changeBackgroundColor_withColor(view.get(), nullptr);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_TRUE(operationsOf(*view).empty());
    const Ref<CALayer> layer = view->layer();
    view->imageOfBounds(1.0);
    view->setWantsLayer(false);
    EXPECT_TRUE(view->needsDisplay());
    layer->setBackgroundColor(NSColor::grayColor()); // of no view any more
}

} // namespace
