#include "platform/foundation/NSString.h"

#include <gtest/gtest.h>

namespace
{

TEST(NSStringTest, CountsCodeUnitsAndKeepsWhatUTF8Says)
{
    const Ref<NSString> string = NSString::stringWithUTF8String("h\xC3\xA9 \xF0\x9F\x98\x80");
    EXPECT_EQ(string->length(), 5U);
    EXPECT_EQ(string->characters(), u"h\u00e9 \xD83D\xDE00");
    EXPECT_EQ(string->UTF8String(), "h\xC3\xA9 \xF0\x9F\x98\x80");
    EXPECT_EQ(NSString::stringWithUTF8String("\xEF\xBB\xBFx")->length(), 2U) << "a byte-order mark is text";
    EXPECT_EQ(NSString::stringWithUTF8String("")->length(), 0U);
}

TEST(NSStringTest, RefusesInvalidUTF8)
{
    for (const char* bytes :
         {"\xC3", "a\xFFz", "\xED\xA0\x80", "\xC0\x80", "\xF0\x9F\x98", "\xF4\x90\x80\x80"}) {
        EXPECT_EQ(NSString::stringWithUTF8String(bytes), nullptr);
    }
    EXPECT_EQ(NSString::stringWithUTF8String(nullptr), nullptr);
    EXPECT_EQ(NSString::stringWithCharacters(u"\xD83D!\xDE00\xD83D")->UTF8String(),
              "\xEF\xBF\xBD!\xEF\xBF\xBD\xEF\xBF\xBD");
}

} // namespace
