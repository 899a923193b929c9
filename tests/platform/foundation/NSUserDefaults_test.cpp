#include "platform/foundation/NSUserDefaults.h"

#include "platform/foundation/NSNumber.h"
#include "support/Drawing.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

class NSUserDefaultsTest : public testing::Test
{
protected:
    ~NSUserDefaultsTest() override { NSUserDefaults::setStandardDomain(nullptr); }

    Ref<NSUserDefaults> defaults(const char* file)
    {
        NSUserDefaults::setStandardDomain(text((folder.path() / file).c_str()).get());
        return NSUserDefaults::standardUserDefaults();
    }
    static void set(const Ref<NSUserDefaults>& in, const char* key, const char* value)
    {
        in->setObject_forKey(text(value).get(), text(key).get());
    }
    static std::string get(const Ref<NSUserDefaults>& from, const char* key)
    {
        const Ref<NSObject> object = from->objectForKey(text(key).get());
        return utf8(dynamic_cast<NSString*>(object.get()));
    }

    TemporaryFolder folder;
};

TEST_F(NSUserDefaultsTest, KeepsTextsAndNumbersInAFile)
{
    const Ref<NSUserDefaults> own = defaults("defaults.ini");
    set(own, "Tavori", "zh-Hans");
    EXPECT_EQ(folder.read("defaults.ini"), "[General]\nTavori=zh-Hans\n");
    folder.write("defaults.ini", "[General]\nTavori=de\n"); // by another process
    EXPECT_EQ(get(own, "Tavori"), "de");

    for (const char* value : {"", "5", "@ByteArray(5)", "a, b", " \"x\\y\"\n; \u00e9\U0001F600"}) {
        for (const char* key : {"k", "k/x", "k\\x", "%2F", " \u00e9=[;", "General"}) {
            set(own, key, value);
            EXPECT_EQ(get(own, key), value) << key;
        }
    }
    set(own, "k/x", "other");
    set(own, "k\\x", "kept");
    own->removeObjectForKey(text("k").get()); // of which the others are no parts
    EXPECT_EQ(get(own, "k") + get(own, "k/x") + get(own, "k\\x"), "nullotherkept");

    for (const double value : {-1.0, 0.1, 9007199254740993.0, 1e300, -HUGE_VAL}) {
        own->setObject_forKey(NSNumber::numberWithDouble(value).get(), text("number").get());
        const Ref<NSObject> object = own->objectForKey(text("number").get());
        EXPECT_EQ(dynamic_cast<NSNumber&>(*object).doubleValue(), value);
    }
}

TEST_F(NSUserDefaultsTest, BelongToTheProgramUnlessAnotherDomainIsStandard)
{
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", folder.path().c_str());
    NSUserDefaults::setStandardDomain(nullptr);
    const Ref<NSUserDefaults> own = NSUserDefaults::standardUserDefaults();
    EXPECT_EQ(own, NSUserDefaults::standardUserDefaults());
    set(own, "k", "v");
    NSUserDefaults::setStandardDomain(text("other").get());
    set(NSUserDefaults::standardUserDefaults(), "k", "w");
    EXPECT_EQ(folder.read("tessaline_tests.ini") + folder.read("other.ini"),
              "[General]\nk=v\n[General]\nk=w\n");
}

TEST_F(NSUserDefaultsTest, SurviveBadFilesAndArguments)
{
    using namespace std::string_literals;
    folder.write("damaged.ini", "\0\xFF[[[\nno value\n[General\nk=v\n@Variant(\0\n"
                                "t=@Variant(\\0\\0\\0\\x7f\\xff)\nl=a, b\n=\n"s);
    const Ref<NSUserDefaults> damaged = defaults("damaged.ini");
    EXPECT_EQ(get(damaged, "t") + get(damaged, "l") + get(damaged, ""), "nullnullnull");
    set(damaged, "n", "new");
    testing::internal::CaptureStderr();
    set(damaged, nullptr, "x");
    set(damaged, "", "x");
    damaged->setObject_forKey(make<NSObject>().get(), text("n").get());
    EXPECT_EQ(get(damaged, nullptr) + get(damaged, "n"), "nullnew");
    const Ref<NSUserDefaults> inNoFolder = defaults("damaged.ini/defaults.ini");
    set(inNoFolder, "k", "x");
    EXPECT_EQ(get(inNoFolder, "k"), "x");
    set(inNoFolder, "k", nullptr);
    EXPECT_EQ(get(inNoFolder, "k"), "null");
    inNoFolder->registerDefault_forKey(text("usual"), text("k").get());
    EXPECT_EQ(get(inNoFolder, "k"), "usual");
    set(inNoFolder, "k", "y");
    EXPECT_EQ(get(inNoFolder, "k"), "y");
    const std::string output = testing::internal::GetCapturedStderr();
    EXPECT_NE(output.find("damaged.ini/defaults.ini\" cannot be written"), std::string::npos) << output;
}

} // namespace
