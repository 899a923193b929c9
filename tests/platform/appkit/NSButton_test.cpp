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

    static Ref<NSEvent> at(NSEventType type, double x, double y)
    {
        return NSEvent::mouseEventWithType_location_window(type, {x, y}, nullptr);
    }
    void down(double x, double y) { button->mouseDown(at(NSEventType::LeftMouseDown, x, y).get()); }
    void drag(double x, double y) { button->mouseDragged(at(NSEventType::LeftMouseDragged, x, y).get()); }
    void up(double x, double y) { button->mouseUp(at(NSEventType::LeftMouseUp, x, y).get()); }

    Ref<ActionTarget> target = make<ActionTarget>();
    Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 80.0, 24.0));
};

TEST_F(NSButtonTest, SendsItsActionOnAReleaseInside)
{
    down(5.0, 5.0);
    EXPECT_TRUE(button->isHighlighted());
    drag(100.0, 5.0);
    EXPECT_FALSE(button->isHighlighted());
    drag(79.9, 24.0);
    EXPECT_TRUE(button->isHighlighted());
    EXPECT_TRUE(target->senders.empty());
    up(79.9, 24.0);
    EXPECT_FALSE(button->isHighlighted());
    EXPECT_EQ(target->senders, (std::vector<NSObject*>{button.get()}));

    down(5.0, 5.0);
    up(80.0, 5.0);
    up(5.0, 5.0); // without a press
    EXPECT_EQ(target->senders.size(), 1U);
}

TEST_F(NSButtonTest, DoesNothingWhileDisabled)
{
    button->setEnabled(false);
    down(5.0, 5.0);
    up(5.0, 5.0);
    button->performClick(nullptr);
    button->setEnabled(true);
    down(5.0, 5.0);
    button->setEnabled(false);
    up(5.0, 5.0);
    EXPECT_TRUE(target->senders.empty());
}

TEST_F(NSButtonTest, DoesNotHoldItsTargetAndSurvivesItsAction)
{
    target->onAction = [this] {
        target = nullptr;
        button = nullptr;
    };
    NSButton* raw = button.get();
    raw->mouseDown(at(NSEventType::LeftMouseDown, 5.0, 5.0).get());
    raw->mouseUp(at(NSEventType::LeftMouseUp, 5.0, 5.0).get());
    EXPECT_EQ(button, nullptr);

    const Ref<NSButton> other = make<NSButton>();
    other->setTarget(make<ActionTarget>().get());
    EXPECT_EQ(other->target(), nullptr);
    EXPECT_FALSE(other->sendAction_to(ActionTarget::kAction, nullptr));
    EXPECT_FALSE(other->sendAction_to(SEL{}, other.get()));
}

TEST_F(NSButtonTest, DrawsItsTitleInTheMiddle)
{
    button->setTitle(text("OK"));
    const Operations normal = operationsOf(*button);
    ASSERT_EQ(normal.size(), 5U);
    EXPECT_EQ(normal[1], "fillRect {{0, 0}, {80, 24}}");
    EXPECT_TRUE(normal[4].starts_with("drawText \"OK\"")) << normal[4];
    down(5.0, 5.0);
    EXPECT_NE(operationsOf(*button)[0], normal[0]) << "the press shows";
}

} // namespace
