#include "platform/appkit/NSApplication.h"

#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSView.h"
#include "platform/foundation/NSNumber.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"
#include "support/EnvironmentVariable.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QCoreApplication>
#include <QWidget>

#include <limits>
#include <utility>
#include <vector>

namespace
{

TEST(NSApplicationTest, HasTheCursors)
{
    EXPECT_EQ(NSCursor::pointingHandCursor(), nullptr);
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    EXPECT_NE(NSCursor::pointingHandCursor(), nullptr);
}

TEST(NSApplicationTest, CanBeFollowedByAnother)
{
    for (int round = 0; round < 4; ++round) {
        const Ref<NSApplication> application = NSApplication::sharedApplication();
        EXPECT_EQ(application, NSApplication::sharedApplication());
        const Ref<ZuToolButton> button =
            make<ZuToolButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 99.0, 50.0));
        button->setTitle(text("Title"));
        EXPECT_EQ(QAccessible::queryAccessibleInterface(button->widget())->role(), QAccessible::PushButton);
        EXPECT_NE(button->imageOfBounds(1.0), nullptr); // nothing that was cached belongs to the one before
    }
}

TEST(NSApplicationTest, HasTheToolkitSpeakTheLanguageOfTheSystem)
{
    for (const auto& [locale, word] : {std::pair("de_DE.UTF-8", "Abbrechen"), std::pair("C", "Cancel")}) {
        const EnvironmentVariable variable("LC_ALL", locale);
        const EnvironmentVariable languages("LANGUAGE", "");
        const Ref<NSApplication> application = NSApplication::sharedApplication();
        EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel").toStdString(), word);
    }
}

TEST(NSApplicationTest, SendsMessagesOfItsLoopInTheirOrder)
{
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    std::vector<Ref<NSObject>> arguments;
    const Ref<ActionTarget> target = make<ActionTarget>();
    for (const double seconds : {0.2, 0.0, 0.1, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        arguments.emplace_back(NSNumber::numberWithDouble(seconds));
        target->performSelector_withObject_afterDelay(ActionTarget::kAction, arguments.back().get(), seconds);
    }
    EXPECT_TRUE(target->senders.empty()) << "not before its turn";
    application->handlePendingEvents();
    const auto at = [&](std::size_t index) { return arguments[index].get(); };
    EXPECT_EQ(target->senders, (std::vector<NSObject*>{at(1), at(3), at(4)}));
    while (target->senders.size() < arguments.size()) {
        application->handlePendingEvents();
    }
    EXPECT_EQ(target->senders, (std::vector<NSObject*>{at(1), at(3), at(4), at(2), at(0)}));

    testing::internal::CaptureStderr();
    target->performSelector_withObject_afterDelay(SEL{"pull:"}, nullptr, 0.0);
    application->handlePendingEvents();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "performSelector: ActionTarget does not respond to \"pull:\"\n");
}

TEST(NSApplicationTest, KeepsObjectAndArgumentOfAMessageUntilItIsSentOrDropped)
{
    Weak<NSObject> object;
    Weak<NSObject> argument;
    const auto ask = [&](double seconds) {
        const Ref<NSObject> target = make<ActionTarget>();
        const Ref<NSObject> number = NSNumber::numberWithDouble(seconds);
        object = target;
        argument = number;
        target->performSelector_withObject_afterDelay(ActionTarget::kAction, number.get(), seconds);
    };
    const auto areAlive = [&] { return object.get() && argument.get(); };
    const auto areGone = [&] { return !object.get() && !argument.get(); };
    for (const double seconds : {0.0, 1e300}) { // sent, dropped
        const Ref<NSApplication> application = NSApplication::sharedApplication();
        ask(seconds);
        EXPECT_TRUE(areAlive()) << seconds;
        application->handlePendingEvents();
        EXPECT_EQ(areGone(), seconds == 0.0);
        ask(seconds);
    }
    EXPECT_TRUE(areGone()) << "with the application";
    {
        const Ref<NSApplication> application = NSApplication::sharedApplication();
        const Ref<NSView> view = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 10.0, 10.0));
        view->widget(); // which needs the application to go
        view->performSelector_withObject_afterDelay(ActionTarget::kAction, nullptr, 1e300);
        object = Ref<NSObject>(view);
    }
    EXPECT_EQ(object.get(), nullptr);

    testing::internal::CaptureStderr();
    ask(0.0);
    EXPECT_TRUE(areGone());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "performSelector: there is no application whose event loop could send \"pushed:\"\n");
}

} // namespace
