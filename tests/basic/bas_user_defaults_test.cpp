#include "basic/bas_user_defaults.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <array>
#include <clocale>
#include <memory>
#include <string>

namespace
{

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

class SettingsTest : public testing::Test
{
protected:
    std::string path() const { return (folder.path() / "settings.json").string(); }

    /// A store on a file with the given content; "parse error" and the like are swallowed.
    std::unique_ptr<BASUserDefaults> storeOf(const std::string& content)
    {
        folder.write("settings.json", content);
        CaptureStdout();
        auto store = std::make_unique<BASUserDefaults>("test", path().c_str(), nullptr);
        printed = GetCapturedStdout();
        return store;
    }

    std::string written(const BASUserDefaults& store) const
    {
        store.WriteAll();
        return folder.read("settings.json");
    }

    TemporaryFolder folder;
    std::string printed;
};

TEST_F(SettingsTest, StartsEmptyWithoutAFileAndWritesOne)
{
    CaptureStdout();
    CaptureStderr();
    std::int32_t result = 7;
    BASUserDefaults store("test", path().c_str(), &result);
    EXPECT_EQ(GetCapturedStdout() + GetCapturedStderr(), "");
    EXPECT_EQ(result, 0);
    EXPECT_FALSE(store.IsOk());

    EXPECT_EQ(written(store), "{}");
    store.SetString("k", "v");
    EXPECT_EQ(written(store), "{\n    \"k\": \"v\"\n}");
    EXPECT_TRUE(store.ReadAll());
    EXPECT_FALSE(store.IsOk()) << "a later load does not change the first one's result";
}

TEST_F(SettingsTest, RefusesWhatIsNoObject)
{
    const std::string deepest(BASUserDefaults::kMaxNesting - 1, '[');
    const std::string tooDeep(200'000, '[');
    for (const std::string& content : {std::string(),
                                       std::string(" \t\r\n"),
                                       std::string("{"),
                                       std::string("{} x"),
                                       std::string("7"),
                                       std::string("\"text\""),
                                       std::string("null"),
                                       std::string("{\"a\":1,}"),
                                       std::string("{'a':1}"),
                                       std::string("{\"a\":01}"),
                                       std::string("{\"a\":1.}"),
                                       std::string("{\"a\":+1}"),
                                       std::string("{\"a\":NaN}"),
                                       std::string("{\"a\":\"\\x\"}"),
                                       std::string("{\"a\":\"\\ud800\"}"),
                                       std::string("{\"a\":\"\n\"}"),
                                       std::string("{/**/}"),
                                       std::string("\xEF\xBB\xBF{}"),
                                       std::string("1.0000000001e-2147483639"),
                                       std::string("{\"a\":1e309}"),
                                       std::string("{\"a\":9e308}"),
                                       std::string("{\"a\":-0.0009e312}"),
                                       "{\"a\":" + std::string(400, '9') + "}",
                                       tooDeep,
                                       "{\"a\":" + std::string(200'000, '{') + "}",
                                       "{\"a\":" + deepest + "[",
                                       std::string("{}\0x", 4) + "{"}) {
        SCOPED_TRACE(content.substr(0, 60));
        const auto store = storeOf(content);
        if (content.find('\0') != std::string::npos) {
            EXPECT_TRUE(store->IsOk()) << "the text ends at its first NUL";
            continue;
        }
        EXPECT_FALSE(store->IsOk());
        EXPECT_EQ(printed, "parse error\n");
        EXPECT_EQ(written(*store), "{}");
    }
}

TEST_F(SettingsTest, NestsAsDeepAsPromisedAndNoDeeper)
{
    const auto nested = [](int levels) {
        return "{\"a\":" + std::string(static_cast<std::size_t>(levels) - 1, '[') +
               std::string(static_cast<std::size_t>(levels) - 1, ']') + "}";
    };
    EXPECT_GE(BASUserDefaults::kMaxNesting, 512);
    EXPECT_TRUE(storeOf(nested(BASUserDefaults::kMaxNesting))->IsOk());
    EXPECT_FALSE(storeOf(nested(BASUserDefaults::kMaxNesting + 1))->IsOk());
}

TEST_F(SettingsTest, FailsOnAnArrayWithALineAndOnAFolderWithout)
{
    CaptureStderr();
    const auto store = storeOf("[1, 2]");
    EXPECT_EQ(GetCapturedStderr(),
              "BASUserDefaults::ReadAll: \"" + path() + "\" holds an array, not an object with settings\n");
    EXPECT_FALSE(store->IsOk());
    EXPECT_EQ(printed, "");
    EXPECT_EQ(written(*store), "{}");

    CaptureStdout();
    const BASUserDefaults folderStore("test", folder.path().c_str(), nullptr);
    EXPECT_FALSE(folderStore.IsOk());
    folderStore.WriteAll();
    EXPECT_EQ(GetCapturedStdout(), "");
}

TEST_F(SettingsTest, RefusesAFileBeyondTheLimit)
{
    const std::string blanks(BASUserDefaults::kMaxFileSize - 2, ' ');
    EXPECT_TRUE(storeOf("{}" + blanks)->IsOk());
    EXPECT_FALSE(storeOf("{} " + blanks)->IsOk());
    EXPECT_EQ(printed, "parse error\n");
}

TEST_F(SettingsTest, WritesEveryKindOfValueInItsForm)
{
    const auto store =
        storeOf(R"({"flag":true,"off":false,"none":null,"list":[1,[],{}],"inner":{"a":{"b":"c"}},
        "whole":7.0,"small":1.0000000001e-2147483639,"pi":3.14159265358979,"large":1.5e300,
        "least":-9223372036854775808,"most":18446744073709551615,"beyond":18446744073709551616,"minus":-0.0,
        "text":"\u00e9\ud83d\ude00 \/ \\ \" \b\f\n\r\t\u0001\u001f\u007f","same":1,"same":2})");
    ASSERT_TRUE(store->IsOk());
    EXPECT_EQ(written(*store), R"({
    "flag": true,
    "off": false,
    "none": null,
    "list": [
        1,
        [],
        {}
    ],
    "inner": {
        "a": {
            "b": "c"
        }
    },
    "whole": 7,
    "small": 0,
    "pi": 3.14159,
    "large": 1.5e+300,
    "least": -9223372036854775808,
    "most": 18446744073709551615,
    "beyond": 1.84467e+19,
    "minus": -0,
    "text": ")"
                               "\xC3\xA9\xF0\x9F\x98\x80 / \\\\ \\\" \\b\\f\\n\\r\\t\\u0001\\u001F\x7F"
                               R"(",
    "same": 1,
    "same": 2
})");
}

TEST_F(SettingsTest, WritesNumbersTheSameInEveryLocale)
{
    const auto store = storeOf(R"({"half":0.5})");
    const char* old = std::setlocale(LC_NUMERIC, nullptr);
    const std::string restored = old;
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_NUMERIC, locale); // those that are not installed change nothing
        EXPECT_EQ(written(*store), "{\n    \"half\": 0.5\n}");
    }
    std::setlocale(LC_NUMERIC, restored.c_str());
}

TEST_F(SettingsTest, KeepsBytesThatAreNoText)
{
    const std::string content = "{\n    \"\xFF\xFE\": \"\xC3(\"\n}";
    EXPECT_EQ(written(*storeOf(content)), content);
}

TEST_F(SettingsTest, SetsInPlaceOrAtTheEnd)
{
    const auto store = storeOf(R"({"a":"text","twice":1,"A":"other","twice":2})");
    store->SetInt("a", 7);
    store->SetString("twice", "first");
    store->SetInt("new", -5);
    EXPECT_EQ(store->GetInt("a"), 7);
    EXPECT_EQ(store->GetInt("new"), -5);
    EXPECT_STREQ(store->GetString("A"), "other");
    EXPECT_TRUE(store->GetValueObject("a").IsUint());
    EXPECT_EQ(written(*store), R"({
    "a": 7,
    "twice": "first",
    "A": "other",
    "twice": 2,
    "new": -5
})");
    store->SetString("a", "again");
    EXPECT_NE(written(*store).find(R"("a": "again")"), std::string::npos) << "each save writes the present";
}

TEST_F(SettingsTest, KeepsTextsWhereTheyAreUntilTheirKeyIsSet)
{
    const auto store = storeOf(R"({"short":"tiny","long":"a text that does not fit beside its key"})");
    const char* shortText = store->GetString("short");
    const char* longText = store->GetString("long");
    for (int i = 0; i < 1000; ++i) {
        store->SetString(("key " + std::to_string(i)).c_str(), "value");
    }
    EXPECT_STREQ(shortText, "tiny");
    EXPECT_STREQ(longText, "a text that does not fit beside its key");

    store->SetString("short", shortText + 1);
    EXPECT_STREQ(store->GetString("short"), "iny") << "a text may be set from itself";
    store->SetString(longText, longText);
    EXPECT_STREQ(store->GetString(store->GetString("long")), longText);
}

TEST_F(SettingsTest, ReadsColours)
{
    struct Case {
        const char* text;
        BASRGB expected;
    };
    for (const auto& [text, expected] :
         {Case{"10,20,30", {10, 20, 30}}, Case{" 10, 20,\t30", {10, 20, 30}}, Case{"300,-1,0", {300, -1, 0}},
          Case{"a,b,c", {0, 0, 0}}, Case{"1x,+2 3,", {1, 2, 0}}, Case{"1,2,3,4", {1, 2, 3}},
          Case{"99999999999,-99999999999,1", {2147483647, -2147483647 - 1, 1}}, Case{",,9", {0, 0, 9}}}) {
        const auto store = storeOf("{}");
        store->SetString("c", text);
        CaptureStderr();
        EXPECT_EQ(store->GetRGB("c"), expected) << text;
        EXPECT_EQ(GetCapturedStderr(), "") << text;
    }
    for (const auto& [text, expected] :
         {Case{"", {0, 0, 0}}, Case{"5", {5, 0, 0}}, Case{"5,6", {5, 6, 0}}, Case{"5,", {5, 0, 0}}}) {
        const auto store = storeOf("{}");
        store->SetString("c", text);
        CaptureStderr();
        EXPECT_EQ(store->GetRGB("c"), expected) << text;
        EXPECT_EQ(GetCapturedStderr(), "BASUserDefaults::GetRGB: \"c\" has fewer than three components\n");
    }
}

TEST_F(SettingsTest, NamesWrongReadsInOneLineAndAnswersHarmlessly)
{
    const auto store = storeOf(
        R"({"text":"t","float":7.0,"large":4294967295,"exponent":1e3,"list":[],"object":{},"flag":true})");
    for (const char* key : {"text", "float", "large", "exponent", "list", "object", "flag", "missing"}) {
        CaptureStderr();
        EXPECT_EQ(store->GetInt(key), 0);
        EXPECT_EQ(GetCapturedStderr(),
                  std::string("BASUserDefaults::GetInt: \"") + key + "\" is not an integer setting\n");
    }
    for (const char* key : {"float", "list", "missing"}) {
        CaptureStderr();
        EXPECT_STREQ(store->GetString(key), "");
        EXPECT_EQ(GetCapturedStderr(),
                  std::string("BASUserDefaults::GetString: \"") + key + "\" is not a text setting\n");
    }
    CaptureStderr();
    EXPECT_EQ(store->GetRGB("flag"), BASRGB{});
    EXPECT_EQ(GetCapturedStderr(), "BASUserDefaults::GetRGB: \"flag\" is not a text setting\n");
    CaptureStderr();
    EXPECT_EQ(store->GetRGB("missing"), BASRGB{});
    EXPECT_FALSE(store->HasMember("missing"));
    EXPECT_TRUE(store->GetValueObject("missing").IsNull());
    EXPECT_EQ(&store->GetValueObject("missing"), &storeOf("{}")->GetValueObject("other"));
    EXPECT_EQ(GetCapturedStderr(), "") << "these have an answer for a missing key";
}

TEST_F(SettingsTest, TakesNullPointersForMistakes)
{
    const auto store = storeOf(R"({"":"empty key"})");
    CaptureStderr();
    EXPECT_FALSE(store->HasMember(nullptr));
    EXPECT_EQ(store->GetInt(nullptr), 0);
    EXPECT_STREQ(store->GetString(nullptr), "");
    store->SetString(nullptr, "v");
    store->SetString("k", nullptr);
    store->SetInt(nullptr, 1);
    const BASUserDefaults nameless(nullptr, nullptr, nullptr);
    EXPECT_FALSE(nameless.IsOk());
    EXPECT_EQ(BASUserDefaults::GetUserDefaults(nullptr), nullptr);
    const std::string lines = GetCapturedStderr();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 8) << lines;
    EXPECT_EQ(written(*store), "{\n    \"\": \"empty key\"\n}");
}

TEST_F(SettingsTest, LoadsAgain)
{
    const auto store = storeOf(R"({"a":1})");
    ASSERT_TRUE(store->IsOk());
    folder.write("settings.json", R"({"b":2})");
    EXPECT_TRUE(store->ReadAll());
    EXPECT_FALSE(store->HasMember("a"));
    EXPECT_EQ(store->GetInt("b"), 2);

    folder.remove("settings.json");
    EXPECT_FALSE(store->ReadAll());
    EXPECT_EQ(store->GetInt("b"), 2) << "without a file, the content stays";

    folder.write("settings.json", "{\"b\":");
    CaptureStdout();
    EXPECT_FALSE(store->ReadAll());
    EXPECT_EQ(GetCapturedStdout(), "parse error\n");
    EXPECT_FALSE(store->HasMember("b"));
    EXPECT_TRUE(store->IsOk());
    store->SetInt("c", 3);
    EXPECT_EQ(store->GetInt("c"), 3) << "an emptied store can be filled";
}

TEST_F(SettingsTest, RegistersStoresByName)
{
    EXPECT_EQ(BASUserDefaults::GetUserDefaults("registry"), nullptr);
    EXPECT_FALSE(BASUserDefaults::InitUserDefaults("registry", path().c_str()));
    BASUserDefaults* first = BASUserDefaults::GetUserDefaults("registry");
    ASSERT_NE(first, nullptr) << "registered although the file did not load";
    first->SetString("who", "first");

    folder.write("settings.json", R"({"who":"second"})");
    EXPECT_TRUE(BASUserDefaults::InitUserDefaults("registry", path().c_str()));
    BASUserDefaults* second = BASUserDefaults::GetUserDefaults("registry");
    EXPECT_STREQ(second->GetString("who"), "second");
    EXPECT_STREQ(first->GetString("who"), "first") << "the replaced store lives on";
    EXPECT_EQ(BASUserDefaults::GetUserDefaults("Registry"), nullptr);
}

} // namespace
