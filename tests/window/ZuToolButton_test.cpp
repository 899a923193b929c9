#include "window/ZuToolButton.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTrackingArea.h"
#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/Weak.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/Drawing.h"
#include "support/Looks.h"

#include <gtest/gtest.h>

#include <array>

namespace
{

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

constexpr const char* kGrey = "sRGB(0.4980392156862745, 0.4980392156862745, 0.4980392156862745, 1)";

// The colours, which the tests tell apart by their whites: 0.125, 0.25, and so on.
constexpr std::array kColors{&ZuToolButton::setColor_border,        &ZuToolButton::setColor_background,
                             &ZuToolButton::setColor_name_hover,    &ZuToolButton::setColor_desc_hover,
                             &ZuToolButton::setColor_border_normal, &ZuToolButton::setColor_desc};
constexpr const char* kBorder = "strokeColor white(0.125, 1)";
constexpr const char* kBackground = "fillColor white(0.25, 1)";
constexpr const char* kBorderNormal = "strokeColor white(0.625, 1)";

using Handler = void (ZuToolButton::*)(NSEvent*);
constexpr Handler kEnter = &ZuToolButton::mouseEntered;
constexpr Handler kLeave = &ZuToolButton::mouseExited;
constexpr Handler kPress = &ZuToolButton::mouseDown;
constexpr Handler kRelease = &ZuToolButton::mouseUp;

class ZuToolButtonTest : public testing::Test
{
protected:
    ZuToolButtonTest()
    {
        button->setImage(blankImage("icon", 32.0, 32.0));
        button->setAlternateImage(blankImage("badge", 16.0, 16.0));
        button->setAlternateTitle(text("3"));
        button->setTitle(text("Contacts"));
        button->setToolTip(text("People"));
        for (double white = 0.125; const auto setter : kColors) {
            ((*button).*setter)(NSColor::colorWithCalibratedWhite_alpha(white, 1.0));
            white += 0.125;
        }
    }

    std::string nameAt(double x, double y, const char* color = "white(0, 1)") const
    {
        return string("Contacts", {{x, y}, name}, "\"Arial Bold\" 14", color);
    }
    std::string descriptionAt(double x, double y, double width, const char* color) const
    {
        return string("People", NSMakeRect(x, y, width, 59.0 - y), "\"Arial\" 12", color);
    }

    /// The look after these events, told from how the face is drawn, and whether they asked for a redraw.
    std::string after(std::initializer_list<Handler> handlers)
    {
        button->imageOfBounds(1.0);
        const auto event =
            NSEvent::mouseEventWithType_location_window(NSEventType::LeftMouseDown, {}, nullptr);
        for (const Handler handler : handlers) {
            ((*button).*handler)(event.get());
        }
        const std::string first = operationsOf(*button)[0];
        const char* look = first == kBackground ? "pressed" : first == kBorder ? "hover" : "normal";
        return look + std::string(button->needsDisplay() ? ", redraw" : "");
    }

    Ref<ZuToolButton> button = shown<ZuToolButton>("normal");
    NSSize name =
        text("Contacts")
            ->sizeWithAttributes({{NSFontAttributeName, NSFont::fontWithName_size("Arial Bold", 14.0)}});
};

TEST_F(ZuToolButtonTest, DrawsItsThreeLooks)
{
    Operations expected{kBorderNormal,
                        "strokeRect {{0, 0}, {200, 60}} width 1",
                        image("icon", NSMakeRect(4.0, 14.5, 32.0, 32.0)),
                        image("badge", NSMakeRect(28.0, 6.5, 16.0, 16.0)),
                        string("3", NSMakeRect(36.0, 4.5, 14.0, 14.0), "\"Arial\" 12", "white(1, 1)"),
                        nameAt(54.0, 10.0),
                        descriptionAt(54.0, name.height + 14.0, 143.0, "white(0.75, 1)")};
    EXPECT_EQ(operationsOf(*button), expected);
    after({kEnter});
    expected[0] = kBorder;
    EXPECT_EQ(operationsOf(*button), expected) << "hover changes the border only";
    after({kPress});
    EXPECT_EQ(operationsOf(*button, NSMakeRect(10.0, 5.0, 20.0, 30.0)),
              (Operations{kBackground, "fillRect {{10, 5}, {20, 30}}", kBorder,
                          "strokeRect {{10, 5}, {20, 30}} width 1",
                          image("icon", NSMakeRect(5.0, 13.5, 32.0, 32.0)),
                          image("badge", NSMakeRect(29.0, 5.5, 16.0, 16.0)),
                          string("3", NSMakeRect(37.0, 3.5, 14.0, 14.0), "\"Arial\" 12", "white(1, 1)"),
                          nameAt(55.0, 9.0, "white(0.375, 1)"),
                          descriptionAt(55.0, name.height + 13.0, 142.0, "white(0.5, 1)")}))
        << "laid out in the bounds, framed around the part";
}

TEST_F(ZuToolButtonTest, LaysOutItsBounds)
{
    button->setFrame(NSMakeRect(300.0, 200.0, 200.0, 41.0));
    button->setOffset(-10);
    button->setImage(blankImage("icon", 20.0, 63.0));
    EXPECT_EQ(operationsOf(*button)[2], image("icon", NSMakeRect(-10.0, -10.5, 20.0, 63.0)));
    EXPECT_EQ(operationsOf(*button)[5], nameAt(28.0, 14.0)) << "not above the face";

    const Ref<ZuToolButton> empty = make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 60.0));
    empty->setToolTip(text("People"));
    empty->setAlternateTitle(text("3")); // of no badge
    empty->setColor_border_normal(nullptr);
    EXPECT_EQ(operationsOf(*empty),
              (Operations{"strokeRect {{0, 0}, {200, 60}} width 1", descriptionAt(22.0, 30.0, 175.0, kGrey)}))
        << "absent content has no extent";
}

TEST_F(ZuToolButtonTest, FollowsThePointer)
{
    EXPECT_EQ(after({kEnter}), "hover, redraw");
    EXPECT_EQ(after({kPress}), "pressed, redraw");
    EXPECT_EQ(after({kRelease}), "hover, redraw");
    EXPECT_EQ(after({kPress, kLeave}), "normal, redraw");
    EXPECT_EQ(after({kEnter}), "hover, redraw") << "leaving ended the press";
    EXPECT_EQ(after({kLeave, kPress}), "normal, redraw") << "an entry has not been reported";
    button->setEnabled(false);
    EXPECT_EQ(after({kEnter}), "pressed, redraw") << "whether it is enabled does not show";
    button->viewDidHide();
    EXPECT_EQ(after({kEnter}), "hover, redraw") << "hiding ends the press";

    button->imageOfBounds(1.0);
    for (const auto setter : kColors) {
        ((*button).*setter)(NSColor::whiteColor());
    }
    button->setOffset(20);
    button->setStr_url(text("https://example.org"));
    EXPECT_FALSE(button->needsDisplay()) << "stored without a redraw";
}

TEST_F(ZuToolButtonTest, AwakesWithItsDefaults)
{
    Ref<ZuToolButton> loaded = make<ZuToolButton>();
    loaded->setFrame(NSMakeRect(10.0, 10.0, 100.0, 50.0));
    loaded->setOffset(77);
    loaded->setStr_url(text("kept"));
    loaded->awakeFromNib();
    EXPECT_EQ(loaded->offset(), 4);
    EXPECT_EQ(loaded->color_border()->description(), "sRGB(0, 0, 1, 1)");
    EXPECT_EQ(loaded->color_background()->description(), "sRGB(0, 0, 1, 1)");
    EXPECT_EQ(loaded->color_name_hover(), NSColor::whiteColor());
    EXPECT_EQ(loaded->color_border_normal(), NSColor::whiteColor());
    EXPECT_EQ(loaded->color_desc()->description(), kGrey);
    EXPECT_EQ(loaded->color_desc_hover(), loaded->color_desc()) << "one colour object";
    EXPECT_EQ(loaded->str_url()->UTF8String(), "kept");

    loaded->setFrame(NSMakeRect(10.0, 10.0, 200.0, 50.0));
    const Weak<NSTrackingArea> first(loaded->trackingAreas().at(0));
    EXPECT_EQ(first.get()->rect(), NSMakeRect(0.0, 0.0, 100.0, 50.0)) << "the bounds at set-up";
    EXPECT_EQ(first.get()->options(), 0x21UL);
    EXPECT_EQ(first.get()->owner(), loaded);
    loaded->awakeFromNib();
    EXPECT_EQ(loaded->trackingAreas().size(), 1U);
    EXPECT_EQ(first.get(), nullptr);
    const Weak<NSTrackingArea> second(loaded->trackingAreas()[0]);
    loaded = nullptr;
    EXPECT_EQ(second.get(), nullptr);
}

} // namespace
