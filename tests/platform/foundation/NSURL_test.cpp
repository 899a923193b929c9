#include "platform/foundation/NSURL.h"

#include "support/Drawing.h"

#include <gtest/gtest.h>

namespace
{

TEST(NSURLTest, IsMadeOfWellFormedTexts)
{
    for (const char* good :
         {"http://example.com/a%20b?c=d#e", "HTTP://EXAMPLE.com/%7e", "mailto:a@example.com",
          "http://m\xC3\xBCller.de/\xC3\xBC", "www.example.com", "file:///tmp"}) {
        const Ref<NSURL> url = NSURL::URLWithString(text(good).get());
        ASSERT_NE(url, nullptr) << good;
        EXPECT_EQ(utf8(url->absoluteString()), good) << "as it was given";
        EXPECT_TRUE(url->isEqual(NSURL::URLWithString(text(good).get()).get()));
        EXPECT_FALSE(url->isEqual(NSURL::URLWithString(text("http://example.com").get()).get()));
        EXPECT_FALSE(url->isEqual(text(good).get()));
    }
    for (const char* bad : {"", "http://example.com/a b", "http://example.com/100%", "http://[::1", "://x",
                            "http://x:99999/", "http://x/\n", "1a:b"}) {
        EXPECT_EQ(NSURL::URLWithString(text(bad).get()), nullptr) << bad;
    }
    const std::u16string_view surrogate = u"http://x/\xD800z";
    const std::u16string_view nul(u"http://x/\0z", 11);
    for (const std::u16string_view bad : {surrogate, nul}) {
        EXPECT_EQ(NSURL::URLWithString(NSString::stringWithCharacters(bad).get()), nullptr);
    }
    EXPECT_EQ(NSURL::URLWithString(nullptr), nullptr);
}

TEST(NSURLTest, NamesFiles)
{
    for (const char* path : {"/tmp/a b", "/100%25?c#d", "/\xC3\xBC/\n\"x", "/tmp/"}) {
        EXPECT_EQ(utf8(NSURL::fileURLWithPath(text(path).get())->path()), path);
    }
    for (const char* other : {"http://example.com/a", "www.example.com", "file:///%FF", "file:///%00"}) {
        EXPECT_EQ(NSURL::URLWithString(text(other).get())->path(), nullptr) << other;
    }
    EXPECT_EQ(NSURL::fileURLWithPath(text("").get()), nullptr);
    EXPECT_EQ(NSURL::fileURLWithPath(nullptr), nullptr);
}

} // namespace
