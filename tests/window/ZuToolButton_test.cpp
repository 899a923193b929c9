#include "window/ZuToolButton.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTrackingArea.h"
#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/Weak.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <array>

namespace
{

constexpr const char* kGrey = "sRGB(0.4980392156862745, 0.4980392156862745, 0.4980392156862745, 1)";
constexpr const char* kBlue = "sRGB(0, 0, 1, 1)";
constexpr const char* kWhite = "white(1, 1)";
constexpr const char* kBlack = "white(0, 1)";

std::string image(const char* name, NSRect rect)
{
    return std::string("drawImage \"") + name + "\" " + NSStringFromRect(rect) +
           " from {{0, 0}, {0, 0}} operation 2 fraction 1 respectFlipped";
}

std::string string(const char* text, NSRect rect, const char* font, const char* color)
{
    return std::string("drawText \"") + text + "\" " + NSStringFromRect(rect) + " font " + font + " color " +
           color;
}

/// The colours, which the tests tell apart by their whites: 0.1, 0.2, and so on.
constexpr std::array kColors{&ZuToolButton::setColor_border,        &ZuToolButton::setColor_background,
                             &ZuToolButton::setColor_name_hover,    &ZuToolButton::setColor_desc_hover,
                             &ZuToolButton::setColor_border_normal, &ZuToolButton::setColor_desc};
constexpr const char* kBorder = "white(0.1, 1)";
constexpr const char* kBackground = "white(0.2, 1)";
constexpr const char* kNameHover = "white(0.30000000000000004, 1)";
constexpr const char* kDescriptionHover = "white(0.4, 1)";
constexpr const char* kBorderNormal = "white(0.5, 1)";
constexpr const char* kDescription = "white(0.6, 1)";

class ZuToolButtonTest : public testing::Test
{
protected:
    ZuToolButtonTest()
    {
        button->setImage(blankImage("icon", 32.0, 32.0));
        button->setTitle(text("Contacts"));
        button->setToolTip(text("People"));
        for (double white = 0.1; const auto setter : kColors) {
            ((*button).*
             setter)(NSColor::colorWithCalibratedWhite_alpha(std::exchange(white, white + 0.1), 1.0));
        }
    }

    void enter() { button->mouseEntered(event(NSEventType::MouseEntered).get()); }
    void leave() { button->mouseExited(event(NSEventType::MouseExited).get()); }
    void press() { button->mouseDown(event(NSEventType::LeftMouseDown).get()); }
    void release() { button->mouseUp(event(NSEventType::LeftMouseUp).get()); }

    static Ref<NSEvent> event(NSEventType type)
    {
        return NSEvent::mouseEventWithType_location_window(type, {5.0, 5.0}, nullptr);
    }

    std::string nameAt(double x, double y, const char* color = kBlack) const
    {
        return string("Contacts", {{x, y}, name}, "\"Arial Bold\" 14", color);
    }
    std::string descriptionAt(double x, double nameY, double width, const char* color) const
    {
        const double y = nameY + name.height + 4.0;
        return string("People", NSMakeRect(x, y, width, 59.0 - y), "\"Arial\" 12", color);
    }

    /// The look, told from how the face is drawn, and whether a redraw was asked for since the last call.
    std::string look()
    {
        const std::string first = operationsOf(*button)[0];
        const bool asked = button->needsDisplay();
        button->imageOfBounds(1.0);
        const std::string look = first == std::string("fillColor ") + kBackground ? "pressed"
                                 : first == std::string("strokeColor ") + kBorder ? "hover"
                                                                                  : "normal";
        return look + (asked ? ", redraw" : "");
    }

    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    NSSize name =
        text("Contacts")
            ->sizeWithAttributes({{NSFontAttributeName, NSFont::fontWithName_size("Arial Bold", 14.0)}});
};

TEST_F(ZuToolButtonTest, DrawsItsThreeLooks)
{
    const NSRect part = NSMakeRect(10.0, 5.0, 20.0, 30.0);
    Operations expected{std::string("strokeColor ") + kBorderNormal, "strokeRect {{10, 5}, {20, 30}} width 1",
                        image("icon", NSMakeRect(4.0, 14.5, 32.0, 32.0)), nameAt(54.0, 10.0),
                        descriptionAt(54.0, 10.0, 143.0, kDescription)};
    EXPECT_EQ(operationsOf(*button, part), expected) << "laid out in the bounds, framed around the part";
    expected[1] = "strokeRect {{0, 0}, {200, 60}} width 1";
    EXPECT_EQ(operationsOf(*button), expected);
    enter();
    expected[0] = std::string("strokeColor ") + kBorder;
    EXPECT_EQ(operationsOf(*button), expected) << "hover changes the border only";
    press();
    EXPECT_EQ(operationsOf(*button, part),
              (Operations{std::string("fillColor ") + kBackground, "fillRect {{10, 5}, {20, 30}}",
                          std::string("strokeColor ") + kBorder, "strokeRect {{10, 5}, {20, 30}} width 1",
                          image("icon", NSMakeRect(5.0, 13.5, 32.0, 32.0)), nameAt(55.0, 9.0, kNameHover),
                          descriptionAt(55.0, 9.0, 142.0, kDescriptionHover)}));
}

TEST_F(ZuToolButtonTest, CentresTheBadgeOnTheIconsCorner)
{
    button->setAlternateTitle(text("3"));
    EXPECT_EQ(operationsOf(*button).size(), 5U) << "without a badge its text is not drawn";
    button->setAlternateImage(blankImage("badge", 16.0, 16.0));
    const Operations operations = operationsOf(*button);
    ASSERT_EQ(operations.size(), 7U);
    EXPECT_EQ(operations[3], image("badge", NSMakeRect(28.0, 6.5, 16.0, 16.0)));
    EXPECT_EQ(operations[4], string("3", NSMakeRect(36.0, 4.5, 14.0, 14.0), "\"Arial\" 12", kWhite));
    EXPECT_EQ(operations[5], nameAt(54.0, 10.0)) << "the badge does not move the text column";
}

TEST_F(ZuToolButtonTest, LaysOutItsBounds)
{
    const Operations whole = operationsOf(*button);
    button->setFrame(NSMakeRect(300.0, 200.0, 200.0, 60.0));
    EXPECT_EQ(operationsOf(*button), whole) << "its place in the superview is of no account";
    button->setOffset(-10);
    EXPECT_EQ(operationsOf(*button)[2], image("icon", NSMakeRect(-10.0, 14.5, 32.0, 32.0)));
    button->setOffset(4);

    // A column that would begin above the face, at -14.5 and at -10.0, is turned down.
    button->setFrame(NSMakeRect(0.0, 0.0, 200.0, 41.0));
    button->setImage(blankImage("icon", 20.0, 63.0));
    EXPECT_EQ(operationsOf(*button)[2], image("icon", NSMakeRect(4.0, -10.5, 20.0, 63.0)));
    EXPECT_EQ(operationsOf(*button)[3], nameAt(42.0, 14.0));
    button->setImage(blankImage("icon", 20.0, 54.0));
    EXPECT_EQ(operationsOf(*button)[3], nameAt(42.0, 10.0));
}

TEST_F(ZuToolButtonTest, DrawsAbsentContentAsNothing)
{
    const Ref<ZuToolButton> empty = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    EXPECT_EQ(operationsOf(*empty).size(), 2U);
    empty->setToolTip(text("People"));
    // The icon is 0 by 0 at (4, 30.5), and the name has no height.
    EXPECT_EQ(operationsOf(*empty)[2],
              string("People", NSMakeRect(22.0, 30.0, 175.0, 29.0), "\"Arial\" 12", kGrey));
    empty->setColor_border_normal(nullptr);
    EXPECT_EQ(operationsOf(*empty)[0], "strokeRect {{0, 0}, {200, 60}} width 1") << "no colour is set";
    EXPECT_EQ(operationsOf(*make<ZuToolButton>()).size(), 1U) << "an allocated button draws, too";
}

TEST_F(ZuToolButtonTest, FollowsThePointer)
{
    look();
    EXPECT_EQ(look(), "normal");
    enter();
    EXPECT_EQ(look(), "hover, redraw");
    press();
    EXPECT_EQ(look(), "pressed, redraw");
    release();
    EXPECT_EQ(look(), "hover, redraw");
    press();
    leave();
    EXPECT_EQ(look(), "normal, redraw");
    enter();
    EXPECT_EQ(look(), "hover, redraw") << "leaving ended the press";
    leave();
    press();
    EXPECT_EQ(look(), "normal, redraw") << "an entry has not been reported";
    enter();
    button->setEnabled(false);
    EXPECT_EQ(look(), "pressed, redraw") << "whether it is enabled does not show";
}

TEST_F(ZuToolButtonTest, StoresWithoutARedraw)
{
    enter();
    look();
    const Ref<NSColor> red = NSColor::colorWithSRGBRed_green_blue_alpha(1.0, 0.0, 0.0, 1.0);
    for (const auto setter : kColors) {
        ((*button).*setter)(red);
    }
    button->setOffset(20);
    button->setStr_url(text("https://example.org"));
    EXPECT_FALSE(button->needsDisplay());
    EXPECT_EQ(operationsOf(*button)[0], "strokeColor sRGB(1, 0, 0, 1)");
}

TEST_F(ZuToolButtonTest, AwakesWithItsDefaults)
{
    const Ref<ZuToolButton> loaded = make<ZuToolButton>();
    EXPECT_EQ(loaded->offset(), 0);
    EXPECT_EQ(loaded->color_border(), nullptr);
    loaded->setFrame(NSMakeRect(10.0, 10.0, 100.0, 50.0));
    loaded->setOffset(77);
    loaded->setColor_desc(NSColor::whiteColor());
    loaded->setColor_border(NSColor::whiteColor());
    loaded->setStr_url(text("kept"));
    loaded->awakeFromNib();

    EXPECT_EQ(loaded->offset(), 4);
    EXPECT_EQ(loaded->color_border()->description(), kBlue);
    EXPECT_EQ(loaded->color_background()->description(), kBlue);
    EXPECT_EQ(loaded->color_name_hover(), NSColor::whiteColor());
    EXPECT_EQ(loaded->color_border_normal(), NSColor::whiteColor());
    EXPECT_EQ(loaded->color_desc()->description(), kGrey);
    EXPECT_EQ(loaded->color_desc_hover(), loaded->color_desc()) << "one colour object";
    EXPECT_EQ(loaded->str_url()->UTF8String(), "kept");

    loaded->setFrame(NSMakeRect(10.0, 10.0, 200.0, 50.0));
    ASSERT_EQ(loaded->trackingAreas().size(), 1U);
    const Weak<NSTrackingArea> area(loaded->trackingAreas()[0]);
    EXPECT_EQ(area.get()->rect(), NSMakeRect(0.0, 0.0, 100.0, 50.0)) << "the bounds at set-up";
    EXPECT_EQ(area.get()->options(), 0x21UL);
    EXPECT_EQ(area.get()->owner(), loaded);
    loaded->awakeFromNib();
    EXPECT_EQ(loaded->trackingAreas().size(), 1U);
    EXPECT_EQ(area.get(), nullptr);
}

TEST_F(ZuToolButtonTest, LetsGoOfEverythingItOwns)
{
    const Weak<NSTrackingArea> area(button->trackingAreas()[0]);
    const Weak<NSImage> icon(button->image());
    const Weak<NSColor> color(button->color_border());
    button = nullptr;
    EXPECT_EQ(area.get(), nullptr);
    EXPECT_EQ(icon.get(), nullptr);
    EXPECT_EQ(color.get(), nullptr);
}

} // namespace
