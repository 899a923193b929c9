// Runs tests with an application that draws off screen, whatever display, style and scale the environment
// asks for.

#include "platform/appkit/NSApplication.h"

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    unsetenv("QT_SCALE_FACTOR");
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    return RUN_ALL_TESTS();
}
