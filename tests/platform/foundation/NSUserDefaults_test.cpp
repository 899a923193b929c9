#include "platform/foundation/NSUserDefaults.h"

#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "support/Drawing.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace
{

class NSUserDefaultsTest : public testing::Test
{
protected:
    ~NSUserDefaultsTest() override { NSUserDefaults::setStandardDomain(nullptr); }

    Ref<NSUserDefaults> defaults(const char* file = "defaults.ini")
    {
        NSUserDefaults::setStandardDomain(text((folder.path() / file).c_str()).get());
        return NSUserDefaults::standardUserDefaults();
    }

    std::string get(const Ref<NSUserDefaults>& from, const char* key)
    {
        const Ref<NSObject> object = from->objectForKey(text(key).get());
        const auto* string = dynamic_cast<const NSString*>(object.get());
        return string == nullptr ? "no text" : string->UTF8String();
    }

    TemporaryFolder folder;
};

TEST_F(NSUserDefaultsTest, KeepsTextsAndNumbersInAFile)
{
    const Ref<NSUserDefaults> first = defaults();
    EXPECT_EQ(first->objectForKey(text("Tavori").get()), nullptr);
    first->setObject_forKey(text("zh-Hans").get(), text("Tavori").get());
    EXPECT_EQ(folder.read("defaults.ini"), "[General]\nTavori=zh-Hans\n");
    folder.write("defaults.ini", "[General]\nTavori=de\n"); // by another process
    EXPECT_EQ(get(first, "Tavori"), "de");

    for (const char* value : {"", "5", "@ByteArray(5)", "a, b", " \"x\\y\"\n; ", "\u00e9\U0001F600"}) {
        for (const char* key : {"k", "k/x", "k\\x", "k//x", "%2F", "K", " \u00e9=[;", "General"}) {
            first->setObject_forKey(text(value).get(), text(key).get());
            EXPECT_EQ(get(first, key), value) << key;
        }
    }
    first->setObject_forKey(text("other").get(), text("k/x").get());
    first->removeObjectForKey(text("k").get()); // of which the others are no parts
    EXPECT_EQ(get(first, "k") + get(first, "k/x") + get(first, "k\\x"), "no textother\u00e9\U0001F600");

    for (const double value : {0.0, -1.0, 0.1, 9007199254740993.0, 1e300, -HUGE_VAL}) {
        first->setObject_forKey(NSNumber::numberWithDouble(value).get(), text("number").get());
        const Ref<NSObject> object = first->objectForKey(text("number").get());
        ASSERT_NE(dynamic_cast<NSNumber*>(object.get()), nullptr);
        EXPECT_EQ(static_cast<NSNumber&>(*object).doubleValue(), value);
    }
}

TEST_F(NSUserDefaultsTest, BelongToTheProgramUnlessAnotherDomainIsStandard)
{
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", folder.path().c_str());
    NSUserDefaults::setStandardDomain(nullptr);
    const Ref<NSUserDefaults> own = NSUserDefaults::standardUserDefaults();
    EXPECT_EQ(own, NSUserDefaults::standardUserDefaults());
    own->setObject_forKey(text("v").get(), text("k").get());
    EXPECT_EQ(folder.read("tessaline_tests.ini"), "[General]\nk=v\n");
    NSUserDefaults::setStandardDomain(text("other").get());
    NSUserDefaults::standardUserDefaults()->setObject_forKey(text("w").get(), text("k").get());
    EXPECT_EQ(folder.read("other.ini"), "[General]\nk=w\n");
    EXPECT_EQ(get(own, "k"), "v");
}

TEST_F(NSUserDefaultsTest, SurviveBadFilesAndArguments)
{
    using namespace std::string_literals;
    folder.write("damaged.ini", "\0\xFF[[[\nno value\n[General\nk=v\n@Variant(\0\n"
                                "t=@Variant(\\0\\0\\0\\x7f\\xff)\nl=a, b\n=\n"s);
    const Ref<NSUserDefaults> damaged = defaults("damaged.ini");
    for (const char* key : {"k", "t", "l", "", "@Variant("}) {
        get(damaged, key);
    }
    damaged->setObject_forKey(text("new").get(), text("n").get());
    EXPECT_EQ(get(damaged, "n"), "new");

    testing::internal::CaptureStderr();
    damaged->setObject_forKey(NSNumber::numberWithInteger(1).get(), nullptr);
    damaged->setObject_forKey(text("x").get(), text("").get());
    damaged->setObject_forKey(make<NSObject>().get(), text("n").get());
    EXPECT_EQ(get(damaged, "n"), "new");
    EXPECT_EQ(damaged->objectForKey(nullptr), nullptr);
    folder.write("file", "");
    const Ref<NSUserDefaults> unwritable = defaults("file/defaults.ini");
    unwritable->setObject_forKey(text("x").get(), text("k").get());
    unwritable->removeObjectForKey(text("none").get());
    const std::string output = testing::internal::GetCapturedStderr();
    EXPECT_NE(output.find("file/defaults.ini\" cannot be written"), std::string::npos) << output;
}

} // namespace
