#include "platform/foundation/NSLog.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

TEST(NSLogTest, WritesLinesOfAnyLength)
{
    const std::string longText(10'000, 'x');
    testing::internal::CaptureStderr();
    NSLog("%s %f:%d", longText.c_str(), 0.5, 7);
    NSLog("100%%");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), longText + " 0.500000:7\n100%\n");
}

} // namespace
