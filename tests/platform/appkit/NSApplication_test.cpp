#include "platform/appkit/NSApplication.h"

#include "support/Drawing.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QWidget>

namespace
{

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

} // namespace
