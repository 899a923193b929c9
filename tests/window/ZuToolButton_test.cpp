#include "window/ZuToolButton.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTrackingArea.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/Weak.h"
#include "platform/graphics/NSAttributes.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

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

NSSize nameSize(const char* name)
{
    return text(name)->sizeWithAttributes(
        {{NSFontAttributeName, NSFont::fontWithName_size("Arial Bold", 14.0)}});
}

class ZuToolButtonTest : public testing::Test
{
protected:
    ZuToolButtonTest()
    {
        button->setImage(blankImage("icon", 32.0, 32.0));
        button->setTitle(text("Contacts"));
        button->setToolTip(text("People and numbers"));
    }

    void enter() { button->mouseEntered(event(NSEventType::MouseEntered).get()); }
    void leave() { button->mouseExited(event(NSEventType::MouseExited).get()); }
    void press() { button->mouseDown(event(NSEventType::LeftMouseDown).get()); }
    void release() { button->mouseUp(event(NSEventType::LeftMouseUp).get()); }

    static Ref<NSEvent> event(NSEventType type)
    {
        return NSEvent::mouseEventWithType_location_window(type, {5.0, 5.0}, nullptr);
    }

    /// The look, told from how the face is drawn.
    std::string look()
    {
        const Operations operations = operationsOf(*button);
        if (operations[0] == std::string("fillColor ") + kBlue) {
            return "pressed";
        }
        return operations[0] == std::string("strokeColor ") + kBlue ? "hover" : "normal";
    }

    /// Shows the button, so that requests for a redraw are seen from here on.
    void show() { button->imageOfBounds(1.0); }

    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    NSSize name = nameSize("Contacts");
};

TEST_F(ZuToolButtonTest, DrawsItsNormalLook)
{
    EXPECT_EQ(operationsOf(*button),
              (Operations{
                  std::string("strokeColor ") + kWhite,
                  "strokeRect {{0, 0}, {200, 60}} width 1",
                  image("icon", NSMakeRect(4.0, 14.5, 32.0, 32.0)),
                  string("Contacts", {{54.0, 10.0}, name}, "\"Arial Bold\" 14", kBlack),
                  string("People and numbers",
                         NSMakeRect(54.0, 10.0 + name.height + 4.0, 143.0, 59.0 - (10.0 + name.height + 4.0)),
                         "\"Arial\" 12", kGrey),
              }));
}

TEST_F(ZuToolButtonTest, DrawsItsHoverLookWithTheNormalTexts)
{
    const Operations normal = operationsOf(*button);
    button->setColor_desc_hover(NSColor::whiteColor());
    enter();
    const Operations hover = operationsOf(*button);
    EXPECT_EQ(hover[0], std::string("strokeColor ") + kBlue);
    EXPECT_EQ(Operations(hover.begin() + 1, hover.end()), Operations(normal.begin() + 1, normal.end()));
}

TEST_F(ZuToolButtonTest, DrawsItsPressedLookMoved)
{
    button->setColor_desc_hover(NSColor::whiteColor());
    enter();
    press();
    EXPECT_EQ(operationsOf(*button),
              (Operations{
                  std::string("fillColor ") + kBlue,
                  "fillRect {{0, 0}, {200, 60}}",
                  std::string("strokeColor ") + kBlue,
                  "strokeRect {{0, 0}, {200, 60}} width 1",
                  image("icon", NSMakeRect(5.0, 13.5, 32.0, 32.0)),
                  string("Contacts", {{55.0, 9.0}, name}, "\"Arial Bold\" 14", kWhite),
                  string("People and numbers",
                         NSMakeRect(55.0, 9.0 + name.height + 4.0, 142.0, 59.0 - (9.0 + name.height + 4.0)),
                         "\"Arial\" 12", kWhite),
              }));
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
    EXPECT_EQ(operations[5], string("Contacts", {{54.0, 10.0}, name}, "\"Arial Bold\" 14", kBlack))
        << "the badge does not move the text column";
}

TEST_F(ZuToolButtonTest, TurnsAColumnAboveTheFaceDown)
{
    button->setFrame(NSMakeRect(0.0, 0.0, 200.0, 41.0));
    button->setImage(blankImage("icon", 20.0, 63.0));
    const Operations operations = operationsOf(*button);
    EXPECT_EQ(operations[2], image("icon", NSMakeRect(4.0, -10.5, 20.0, 63.0)));
    EXPECT_EQ(operations[3], string("Contacts", {{42.0, 14.0}, name}, "\"Arial Bold\" 14", kBlack));

    button->setImage(blankImage("icon", 20.0, 54.0)); // the column would begin at -10.0
    EXPECT_EQ(operationsOf(*button)[3],
              string("Contacts", {{42.0, 10.0}, name}, "\"Arial Bold\" 14", kBlack));
}

TEST_F(ZuToolButtonTest, FramesTheUpdateRectangleButLaysOutTheBounds)
{
    const Operations whole = operationsOf(*button);
    const Operations part = operationsOf(*button, NSMakeRect(10.0, 5.0, 20.0, 30.0));
    EXPECT_EQ(part[1], "strokeRect {{10, 5}, {20, 30}} width 1");
    EXPECT_EQ(Operations(part.begin() + 2, part.end()), Operations(whole.begin() + 2, whole.end()));

    button->setFrame(NSMakeRect(300.0, 200.0, 200.0, 60.0));
    EXPECT_EQ(operationsOf(*button), whole) << "its place in the superview is of no account";
}

TEST_F(ZuToolButtonTest, DrawsAbsentContentAsNothing)
{
    const Ref<ZuToolButton> empty = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    EXPECT_EQ(operationsOf(*empty).size(), 2U);
    empty->setToolTip(text("description"));
    // Icon 0 by 0 at (4, 30.5): the column begins at 22 and at 26; the name has no height.
    EXPECT_EQ(operationsOf(*empty)[2],
              string("description", NSMakeRect(22.0, 30.0, 175.0, 29.0), "\"Arial\" 12", kGrey));

    button->setOffset(-10);
    EXPECT_EQ(operationsOf(*button)[2], image("icon", NSMakeRect(-10.0, 14.5, 32.0, 32.0)));
    button->setColor_border_normal(nullptr);
    button->setColor_desc(nullptr);
    EXPECT_EQ(operationsOf(*button)[0], "strokeRect {{0, 0}, {200, 60}} width 1") << "no colour is set";
}

TEST_F(ZuToolButtonTest, FollowsThePointer)
{
    show();
    EXPECT_FALSE(button->needsDisplay());
    EXPECT_EQ(look(), "normal");
    enter();
    EXPECT_TRUE(button->needsDisplay());
    EXPECT_EQ(look(), "hover");
    show();
    press();
    EXPECT_TRUE(button->needsDisplay()) << "by the base class's tracking";
    EXPECT_EQ(look(), "pressed");
    show();
    release();
    EXPECT_TRUE(button->needsDisplay());
    EXPECT_EQ(look(), "hover");
    press();
    show();
    leave();
    EXPECT_TRUE(button->needsDisplay());
    EXPECT_EQ(look(), "normal");
    enter();
    EXPECT_EQ(look(), "hover") << "leaving ended the press";
}

TEST_F(ZuToolButtonTest, ShowsAPressOnlyWithThePointerReported)
{
    press();
    EXPECT_EQ(look(), "normal");
    enter();
    EXPECT_EQ(look(), "pressed");
    button->setEnabled(false);
    EXPECT_EQ(look(), "pressed") << "whether it is enabled does not show";
}

TEST_F(ZuToolButtonTest, StoresWithoutARedraw)
{
    show();
    enter();
    show();
    const Ref<NSColor> red = NSColor::colorWithSRGBRed_green_blue_alpha(1.0, 0.0, 0.0, 1.0);
    button->setColor_border(red);
    button->setColor_background(red);
    button->setColor_name_hover(red);
    button->setColor_desc_hover(red);
    button->setColor_border_normal(red);
    button->setColor_desc(red);
    button->setOffset(20);
    button->setStr_url(text("https://example.org"));
    EXPECT_FALSE(button->needsDisplay());
    EXPECT_EQ(operationsOf(*button)[0], "strokeColor sRGB(1, 0, 0, 1)");
    EXPECT_EQ(button->color_border(), red);
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
    EXPECT_TRUE(loaded->isFlipped());

    ASSERT_EQ(loaded->trackingAreas().size(), 1U);
    const NSTrackingArea& area = *loaded->trackingAreas()[0];
    EXPECT_EQ(area.rect(), NSMakeRect(0.0, 0.0, 100.0, 50.0));
    EXPECT_EQ(area.options(), 0x21UL);
    EXPECT_EQ(area.owner(), loaded);
    loaded->setFrame(NSMakeRect(10.0, 10.0, 200.0, 50.0));
    EXPECT_EQ(area.rect().size.width, 100.0) << "the region is that of the set-up";
    loaded->awakeFromNib();
    EXPECT_EQ(loaded->trackingAreas().size(), 1U);
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
    EXPECT_EQ(operationsOf(*make<ZuToolButton>()).size(), 1U) << "an allocated button draws, too";
}

TEST_F(ZuToolButtonTest, ShowsOnTheScreenWhatItDraws)
{
    button->setToolTip(text("A description that is so long that it needs three lines in this small button"));
    enter();
    const Ref<NSImage> hover = button->imageOfBounds(1.0);
    EXPECT_EQ(pixel(*hover, 100, 0), "#800000ff") << "the frame's outer half is outside";
    EXPECT_EQ(pixel(*hover, 100, 3), "#00000000");
    press();
    const Ref<NSImage> pressed = button->imageOfBounds(2.0);
    EXPECT_EQ(pixel(*pressed, 200, 0), "#ff0000ff");
    EXPECT_EQ(pixel(*pressed, 200, 4), "#ff0000ff");
}

} // namespace
