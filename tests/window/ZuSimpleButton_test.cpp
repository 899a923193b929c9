#include "window/ZuSimpleButton.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTrackingArea.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/Weak.h"
#include "platform/graphics/NSColor.h"
#include "support/Accessibility.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"
#include "support/Looks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace
{

constexpr const char* kAccent = "sRGB(0.12549019607843137, 0.7294117647058823, 0.9176470588235294, 1)";
constexpr const char* kWhite = "white(1, 1)";
constexpr const char* kGrey = "white(0.5, 1)";

std::string titleColor(const ZuSimpleButton& button)
{
    const NSColor* color = button.attributedTitle()->runs()[0].attributes[NSForegroundColorAttributeName];
    return color == nullptr ? "none" : color->description();
}

Operations face(const std::string& fill, const std::string& stroke, NSRect rect, double radius)
{
    const std::string path = roundedRect(rect, radius, radius);
    return {"fillColor " + fill, "strokeColor " + stroke, "fillPath" + path,
            "strokePath" + path + " width 1"};
}

std::string title(NSPoint origin, NSSize size, const std::string& color)
{
    return "drawText \"Import\" " + NSStringFromRect({origin, size}) + " font \"Arial\" 13 color " + color;
}

TEST(ZuSimpleButtonTest, DrawsItsLooks)
{
    struct Case {
        const char* name;
        std::string fill;
        std::string stroke;
        std::string font;
    };
    const NSRect bounds = NSMakeRect(0.0, 0.0, 120.0, 32.0);
    const NSRect part = NSMakeRect(10.0, 20.0, 30.0, 12.0);
    for (const auto& [name, fill, stroke, font] : {Case{"normal", kAccent, kAccent, kWhite},
                                                   {"hover", kWhite, kAccent, kAccent},
                                                   {"pressed", kAccent, kAccent, kWhite},
                                                   {"disabled", kGrey, kAccent, kWhite}}) {
        const Ref<ZuSimpleButton> button = shown<ZuSimpleButton>(name);
        const NSSize size = button->attributedTitle()->size();
        const NSPoint middle{(120.0 - size.width) * 0.5, (32.0 - size.height) * 0.5};
        Operations whole = face(fill, stroke, bounds, 4.0);
        whole.push_back(title(middle, size, font));
        EXPECT_EQ(operationsOf(*button), whole) << name;
        Operations partial = face(fill, stroke, part, 4.0);
        partial.push_back(title(middle, size, font));
        EXPECT_EQ(operationsOf(*button, part), partial) << name;

        button->setImage(blankImage("icon", 16.0, 16.0));
        const double x = (120.0 - 16.0 - 6.0 - size.width) * 0.5;
        whole.back() = "drawImage \"icon\" " + NSStringFromRect(NSMakeRect(x, 8.0, 16.0, 16.0)) +
                       " from {{0, 0}, {0, 0}} operation 2 fraction 1 respectFlipped";
        whole.push_back(title({x + 22.0, middle.y}, size, font));
        EXPECT_EQ(operationsOf(*button), whole) << name;
    }
}

TEST(ZuSimpleButtonTest, LaysOutImagesByTheSizeOfWhatIsDrawn)
{
    const Ref<ZuSimpleButton> button = shown<ZuSimpleButton>("image");
    button->setImage(blankImage("icon", 40.0, 20.0));
    const NSSize size = button->attributedTitle()->size();
    const double x = (30.0 - 40.0 - 6.0 - size.width) * 0.5;
    const Operations operations = operationsOf(*button, NSMakeRect(50.0, 4.0, 30.0, 12.0));
    EXPECT_TRUE(
        operations[4].starts_with("drawImage \"icon\" " + NSStringFromRect(NSMakeRect(x, -4.0, 40.0, 20.0))))
        << operations[4];
    EXPECT_EQ(operations[5], title({x + 46.0, (12.0 - size.height) * 0.5}, size, kWhite));

    button->setTitle(nullptr);
    EXPECT_EQ(operationsOf(*button).size(), 5U);
    EXPECT_TRUE(operationsOf(*button)[4].starts_with("drawImage \"icon\" {{37, 6}, {40, 20}}"));
    for (const auto handler : {&NSView::mouseEntered, &NSView::mouseExited}) {
        button->imageOfBounds(1.0);
        ((*button).*handler)(nullptr);
        EXPECT_TRUE(button->needsDisplay()) << "also without a title that changes";
    }
}

TEST(ZuSimpleButtonTest, DrawsNothingWithoutAColour)
{
    const Ref<ZuSimpleButton> bare = shown<ZuSimpleButton>("made in code");
    ASSERT_EQ(operationsOf(*bare).size(), 1U);
    EXPECT_TRUE(operationsOf(*bare)[0].ends_with("color white(0, 1)"));
    EXPECT_TRUE(bare->trackingAreas().empty());
    EXPECT_EQ(bare->userdata(), nullptr);
    bare->mouseDown(nullptr);
    EXPECT_EQ(titleColor(*bare), "none");
    bare->setColor_normal_border(NSColor::whiteColor());
    const std::string square = " move {0, 0} line {120, 0} line {120, 32} line {0, 32} close";
    EXPECT_EQ(operationsOf(*bare)[1], "strokePath" + square + " width 1");
    EXPECT_EQ(operationsOf(*bare).size(), 3U);
}

using Handler = void (ZuSimpleButton::*)(NSEvent*);

/// A button whose four colours of title and face can be told apart.
class ZuSimpleButtonPressTest : public testing::Test
{
protected:
    ZuSimpleButtonPressTest()
    {
        button->setColor_normal_font(NSColor::colorWithCalibratedWhite_alpha(0.125, 1.0));
        button->setColor_hover_font(NSColor::colorWithCalibratedWhite_alpha(0.25, 1.0));
        button->setColor_normal_background(NSColor::colorWithCalibratedWhite_alpha(0.625, 1.0));
        button->setColor_hover_background(NSColor::colorWithCalibratedWhite_alpha(0.75, 1.0));
        button->setTarget(target.get());
        button->setAction(ActionTarget::kAction);
    }

    /// What the title, then what the face looks like.
    std::string state() const
    {
        const std::string color = titleColor(*button);
        const std::string fill = operationsOf(*button)[0];
        return std::string(color == "white(0.125, 1)"  ? "normal"
                           : color == "white(0.25, 1)" ? "hover"
                                                       : color) +
               " on " +
               (fill == "fillColor white(0.625, 1)"  ? "normal"
                : fill == "fillColor white(0.75, 1)" ? "hover"
                                                     : "grey");
    }

    std::string after(std::initializer_list<Handler> handlers)
    {
        button->imageOfBounds(1.0);
        const auto event =
            NSEvent::mouseEventWithType_location_window(NSEventType::LeftMouseDown, {5.0, 5.0}, nullptr);
        for (const Handler handler : handlers) {
            ((*button).*handler)(event.get());
        }
        EXPECT_TRUE(button->needsDisplay());
        return state();
    }

    static constexpr Handler kEnter = &ZuSimpleButton::mouseEntered;
    static constexpr Handler kLeave = &ZuSimpleButton::mouseExited;
    static constexpr Handler kPress = &ZuSimpleButton::mouseDown;
    static constexpr Handler kRelease = &ZuSimpleButton::mouseUp;

    Ref<ZuSimpleButton> button = shown<ZuSimpleButton>("normal");
    Ref<ActionTarget> target = make<ActionTarget>();
};

TEST_F(ZuSimpleButtonPressTest, KeepsTheTitleReadable)
{
    EXPECT_EQ(after({kEnter, kPress}), "normal on normal");
    target->onAction = [&] {
        EXPECT_EQ(state(), "hover on hover") << "the action may take its time";
        button->setTitle(text("Again"));
    };
    EXPECT_EQ(after({kRelease}), "hover on hover");
    EXPECT_EQ(utf8(button->title()), "Again");
    EXPECT_EQ(after({kLeave, kPress}), "normal on normal") << "an entry has not been reported";
    EXPECT_EQ(after({kEnter}), "hover on normal") << "an entry colours the title, pressed or not";
    EXPECT_EQ(after({kLeave, kEnter}), "hover on hover") << "leaving ends the press";

    target->onAction = [&] { button->setEnabled(false); };
    EXPECT_EQ(after({kPress, kRelease}), "normal on grey") << "disabled by its action";
    EXPECT_EQ(target->senders.size(), 2U);
}

TEST_F(ZuSimpleButtonPressTest, MayBeLetGoByItsAction)
{
    const Weak<ZuSimpleButton> weak(button);
    target->onAction = [&] { button = nullptr; };
    button->mouseDown(nullptr);
    button->mouseUp(
        NSEvent::mouseEventWithType_location_window(NSEventType::LeftMouseUp, {5.0, 5.0}, nullptr).get());
    EXPECT_EQ(weak.get(), nullptr);
    EXPECT_EQ(target->senders.size(), 1U);
}

TEST_F(ZuSimpleButtonPressTest, ColoursTheTitleAtOnceAndTheRestWithTheNextRedraw)
{
    button->imageOfBounds(1.0);
    int data = 0;
    button->setUserdata(&data);
    button->setXRadius_(10.0);
    button->setYRadius_(5.0);
    button->setColor_normal_border(NSColor::grayColor());
    button->setColor_hover_border(NSColor::whiteColor());
    button->setColor_hover_font(NSColor::grayColor());
    EXPECT_FALSE(button->needsDisplay());
    EXPECT_EQ(button->userdata(), &data);
    EXPECT_EQ(operationsOf(*button)[2], "fillPath" + roundedRect(button->bounds(), 10.0, 5.0));
    EXPECT_EQ(operationsOf(*button)[1], "strokeColor white(0.5, 1)");
    after({kEnter});
    EXPECT_EQ(operationsOf(*button)[1], "strokeColor white(1, 1)");
    EXPECT_EQ(titleColor(*button), kGrey);
    button->setTitle(text("Again"));
    EXPECT_EQ(titleColor(*button), "white(0.125, 1)") << "a new title is in the normal colour";
    button->setEnabled(false);
    EXPECT_EQ(operationsOf(*button)[1], "strokeColor white(0.5, 1)");

    button->setColor_normal_font(NSColor::whiteColor());
    EXPECT_EQ(titleColor(*button), kWhite);
    button->setColor_normal_font(nullptr);
    EXPECT_EQ(titleColor(*button), kWhite) << "null leaves it";
}

TEST_F(ZuSimpleButtonPressTest, IsAButtonToKeysAndAssistiveTechnology)
{
    button->setToolTip(text("Copies all photos."));
    EXPECT_EQ(said(accessible(*button)), "button Import Copies all photos. Press SetFocus focusable");
    EXPECT_TRUE(button->keyDown(
        NSEvent::keyEventWithType_characters_isARepeat_window(NSEventType::KeyDown, text(" "), false, nullptr)
            .get()));
    EXPECT_EQ(target->senders.size(), 1U);
    after({kEnter});
    target->onAction = [&] { button->setTitle(text("Import")); };
    button->accessibilityPerformPress();
    EXPECT_EQ(state(), "hover on hover");
    after({kLeave, kPress});
    button->viewDidHide();
    EXPECT_EQ(after({kEnter}), "hover on hover") << "hiding ends the press";
    button->setEnabled(false);
    EXPECT_EQ(said(accessible(*button)), "button Import Copies all photos. disabled");
}

TEST(ZuSimpleButtonTest, AwakesWithItsDefaults)
{
    Ref<ZuSimpleButton> loaded = make<ZuSimpleButton>();
    loaded->setFrame(NSMakeRect(10.0, 10.0, 100.0, 30.0));
    loaded->setTitle(text("Import"));
    EXPECT_EQ(titleColor(*loaded), "none");
    loaded->setXRadius_(7.0);
    loaded->setColor_hover_font(NSColor::blackColor());
    loaded->setBordered(true);
    loaded->mouseEntered(nullptr);
    loaded->mouseDown(nullptr);
    loaded->awakeFromNib();
    EXPECT_EQ(operationsOf(*loaded).size(), 5U) << "the base draws no face";
    loaded->mouseEntered(nullptr);
    EXPECT_EQ(operationsOf(*loaded)[0], std::string("fillColor ") + kWhite) << "not pressed";
    loaded->awakeFromNib();
    EXPECT_EQ(operationsOf(*loaded)[0], std::string("fillColor ") + kAccent) << "not entered";
    EXPECT_EQ(titleColor(*loaded), kWhite);
    EXPECT_EQ(loaded->xRadius_(), 4.0);
    EXPECT_EQ(loaded->yRadius_(), 4.0);
    EXPECT_EQ(loaded->color_hover_font()->description(), kAccent);
    EXPECT_EQ(loaded->color_hover_background()->description(), kWhite);
    for (const auto& color :
         {loaded->color_hover_border(), loaded->color_normal_background(), loaded->color_normal_border()}) {
        EXPECT_EQ(color, loaded->color_hover_font()) << "one colour object";
    }

    loaded->setFrame(NSMakeRect(10.0, 10.0, 200.0, 30.0));
    const Weak<NSTrackingArea> first(loaded->trackingAreas().at(0));
    EXPECT_EQ(first.get()->rect(), NSMakeRect(0.0, 0.0, 100.0, 30.0)) << "the bounds at set-up";
    EXPECT_EQ(first.get()->options(), 0x21UL);
    EXPECT_EQ(first.get()->owner(), loaded);
    loaded->awakeFromNib();
    EXPECT_EQ(loaded->trackingAreas().size(), 1U);
    EXPECT_EQ(first.get(), nullptr);
}

} // namespace
