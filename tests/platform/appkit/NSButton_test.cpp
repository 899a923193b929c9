#include "platform/appkit/NSButton.h"

#include "platform/appkit/NSEvent.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/graphics/NSColor.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

namespace
{

TEST(NSButtonTest, SendsItsActionOnAReleaseInside)
{
    const Ref<ActionTarget> target = make<ActionTarget>();
    Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 80.0, 24.0));
    button->setTarget(target.get());
    button->setAction(ActionTarget::kAction);
    const auto send = [&](void (NSButton::*handler)(NSEvent*), double x) {
        (button.get()->*handler)(
            NSEvent::mouseEventWithType_location_window(NSEventType::LeftMouseDown, {x, 5.0}, nullptr).get());
        return button && button->isHighlighted();
    };
    EXPECT_TRUE(send(&NSButton::mouseDown, 5.0));
    EXPECT_FALSE(send(&NSButton::mouseDragged, 80.0));
    EXPECT_TRUE(send(&NSButton::mouseDragged, 79.9));
    EXPECT_TRUE(target->senders.empty());
    EXPECT_FALSE(send(&NSButton::mouseUp, 79.9));
    EXPECT_EQ(target->senders, (std::vector<NSObject*>{button.get()}));
    send(&NSButton::mouseUp, 5.0); // without a press
    send(&NSButton::mouseDown, 5.0);
    send(&NSButton::mouseUp, 80.0);
    send(&NSButton::mouseDown, 5.0);
    button->setEnabled(false);
    send(&NSButton::mouseUp, 5.0);
    EXPECT_FALSE(send(&NSButton::mouseDown, 5.0));
    EXPECT_EQ(target->senders.size(), 1U);

    button->setEnabled(true);
    target->onAction = [&] { button = nullptr; };
    button->performClick(nullptr);
    EXPECT_EQ(button, nullptr) << "it is held by nothing";
}

TEST(NSButtonTest, DrawsItsTitle)
{
    const Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 80.0, 24.0));
    button->setTarget(make<ActionTarget>().get());
    EXPECT_EQ(button->target(), nullptr) << "not held";
    button->setTitle(text("OK"));
    const Operations normal = operationsOf(*button);
    ASSERT_EQ(normal.size(), 5U);
    EXPECT_EQ(normal[1], "fillRect {{0, 0}, {80, 24}}");
    EXPECT_TRUE(normal[4].starts_with("drawText \"OK\"")) << normal[4];
    button->mouseDown(nullptr);
    EXPECT_NE(operationsOf(*button)[0], normal[0]) << "the press shows";

    button->setBordered(false);
    const auto endsWith = [&](const char* color) {
        const Operations operations = operationsOf(*button);
        return operations.size() == 1 && operations[0].ends_with(color);
    };
    EXPECT_TRUE(endsWith(" color white(0, 1)"));
    button->setEnabled(false);
    EXPECT_TRUE(endsWith(" color white(0.5, 1)"));
    const Ref<NSMutableAttributedString> title =
        make<NSMutableAttributedString>()->initWithAttributedString(button->attributedTitle().get());
    title->addAttribute_value_range(NSForegroundColorAttributeName, NSColor::whiteColor(), {0, 1});
    button->setAttributedTitle(title);
    EXPECT_NE(operationsOf(*button)[0].find("[{0, 1} font \"Arial\" 13 color white(1, 1)]"),
              std::string::npos)
        << "a colour of its own is kept";
    button->setTitle(text("OK"));
    EXPECT_TRUE(endsWith(" color white(0.5, 1)")) << "and given up with the title";
}

} // namespace
