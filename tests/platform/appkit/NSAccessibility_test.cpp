// Views as assistive technology meets them, through Qt.

#include "platform/appkit/NSButton.h"
#include "platform/foundation/NSNumber.h"
#include "support/Accessibility.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QCoreApplication>
#include <QWidget>

namespace
{

class Gauge : public NSView
{
public:
    NSAccessibilityRole accessibilityRole() const override { return NSAccessibilityRole::ProgressIndicator; }
    Ref<NSNumber> accessibilityValue() const override { return value; }
    Ref<NSNumber> accessibilityMinValue() const override { return NSNumber::numberWithInteger(-20); }
    Ref<NSNumber> accessibilityMaxValue() const override { return NSNumber::numberWithDouble(0.5); }

    Ref<NSNumber> value;
};

class NSAccessibilityTest : public testing::Test
{
protected:
    NSAccessibilityTest()
    {
        button->setTarget(target.get());
        button->setAction(ActionTarget::kAction);
        button->setTitle(text("OK"));
        button->setToolTip(text("Closes <all>."));
        content->addSubview(button);
        content->addSubview(gauge);
    }

    Ref<ActionTarget> target = make<ActionTarget>();
    Ref<NSButton> button = make<NSButton>();
    Ref<Gauge> gauge = make<Gauge>();
    Ref<NSView> content = make<NSView>();
};

TEST_F(NSAccessibilityTest, SaysWhatViewsSayOfThemselves)
{
    const std::string help = " Closes <all>.";
    EXPECT_EQ(said(accessible(*content)), "widget");
    EXPECT_EQ(said(accessible(*button)), "button OK" + help + " Press SetFocus focusable");
    button->setAccessibilityLabel(text("Accept"));
    button->setEnabled(false);
    EXPECT_EQ(said(accessible(*button)), "button Accept" + help + " disabled");
    EXPECT_EQ(said(accessible(*gauge)), "progress");
    gauge->setAccessibilityLabel(text("Copying"));
    gauge->value = NSNumber::numberWithInteger(-3);
    EXPECT_EQ(said(accessible(*gauge)), "progress Copying -20 -3 0.5");
}

TEST_F(NSAccessibilityTest, PressesButtons)
{
    const auto press = [](QAccessibleInterface& view) {
        view.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    };
    press(accessible(*gauge));
    press(accessible(*button));
    EXPECT_EQ(target->senders.size(), 1U);
    button->setEnabled(false);
    press(accessible(*button));
    EXPECT_EQ(target->senders.size(), 1U);
    EXPECT_FALSE(button->accessibilityPerformPress());
    button->setEnabled(true);
    content->widget()->setEnabled(false); // by a host
    press(accessible(*button));
    content->widget()->setEnabled(true);
    button->setHidden(true);
    press(accessible(*button));
    button->setHidden(false);
    EXPECT_EQ(target->senders.size(), 1U);

    button->setEnabled(true);
    QAccessibleInterface& left = accessible(*button);
    const QAccessible::Id id = QAccessible::uniqueId(&left);
    target->onAction = [&] { std::exchange(button, nullptr)->removeFromSuperview(); };
    press(left);
    press(left); // the button is gone, its widget still waits to be destroyed
    EXPECT_EQ(target->senders.size(), 2U);
    EXPECT_FALSE(left.isValid());
    EXPECT_EQ(said(left), "widget invalid");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}

} // namespace
