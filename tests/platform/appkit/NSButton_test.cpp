#include "platform/appkit/NSButton.h"

#include "platform/appkit/NSEvent.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

namespace
{

class NSButtonTest : public testing::Test
{
protected:
    NSButtonTest()
    {
        button->setTarget(target.get());
        button->setAction(ActionTarget::kAction);
    }

    static Ref<NSEvent> at(double x)
    {
        return NSEvent::mouseEventWithType_location_window(NSEventType::LeftMouseDown, {x, 5.0}, nullptr);
    }
    void down() { button->mouseDown(at(5.0).get()); }
    void drag(double x) { button->mouseDragged(at(x).get()); }
    void up(double x) { button->mouseUp(at(x).get()); }

    Ref<ActionTarget> target = make<ActionTarget>();
    Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 80.0, 24.0));
};

TEST_F(NSButtonTest, SendsItsActionOnAReleaseInside)
{
    down();
    EXPECT_TRUE(button->isHighlighted());
    drag(80.0);
    EXPECT_FALSE(button->isHighlighted());
    drag(79.9);
    EXPECT_TRUE(button->isHighlighted());
    EXPECT_TRUE(target->senders.empty());
    up(79.9);
    EXPECT_FALSE(button->isHighlighted());
    EXPECT_EQ(target->senders, (std::vector<NSObject*>{button.get()}));
    up(5.0); // without a press
    down();
    up(80.0);
    down();
    button->setEnabled(false);
    up(5.0);
    down();
    EXPECT_FALSE(button->isHighlighted());
    EXPECT_EQ(target->senders.size(), 1U);
}

TEST_F(NSButtonTest, DoesNotHoldItsTargetAndSurvivesItsAction)
{
    const Ref<NSButton> other = make<NSButton>();
    other->setTarget(make<ActionTarget>().get());
    EXPECT_EQ(other->target(), nullptr);
    EXPECT_FALSE(other->sendAction_to(ActionTarget::kAction, nullptr));

    target->onAction = [this] {
        target = nullptr;
        button = nullptr;
    };
    button->performClick(nullptr);
    EXPECT_EQ(button, nullptr);
}

TEST_F(NSButtonTest, DrawsItsTitle)
{
    button->setTitle(text("OK"));
    const Operations normal = operationsOf(*button);
    ASSERT_EQ(normal.size(), 5U);
    EXPECT_EQ(normal[1], "fillRect {{0, 0}, {80, 24}}");
    EXPECT_TRUE(normal[4].starts_with("drawText \"OK\"")) << normal[4];
    down();
    EXPECT_NE(operationsOf(*button)[0], normal[0]) << "the press shows";
}

} // namespace
