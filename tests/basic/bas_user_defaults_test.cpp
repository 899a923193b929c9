#include "basic/bas_user_defaults.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <functional>
#include <memory>

namespace
{

/// What `action` writes to standard output (1) or standard error (2).
std::string printed(int stream, const std::function<void()>& action)
{
    stream == 1 ? testing::internal::CaptureStdout() : testing::internal::CaptureStderr();
    action();
    return stream == 1 ? testing::internal::GetCapturedStdout() : testing::internal::GetCapturedStderr();
}

class SettingsTest : public testing::Test
{
protected:
    std::string path() const { return (folder.path() / "settings.json").string(); }

    /// A store on a file with the given content; what it prints is kept in `output`.
    std::unique_ptr<BASUserDefaults> storeOf(const std::string& content)
    {
        folder.write("settings.json", content);
        std::unique_ptr<BASUserDefaults> store;
        output =
            printed(1, [&] { store = std::make_unique<BASUserDefaults>("test", path().c_str(), nullptr); });
        return store;
    }

    std::string written(const BASUserDefaults& store) const
    {
        store.WriteAll();
        return folder.read("settings.json");
    }

    TemporaryFolder folder;
    std::string output;
};

TEST_F(SettingsTest, StartsEmptyWithoutAFileAndWritesOne)
{
    std::int32_t result = 7;
    EXPECT_EQ(
        printed(
            2, [&] { EXPECT_EQ(printed(1, [&] { BASUserDefaults("test", path().c_str(), &result); }), ""); }),
        "")
        << "a missing file is not reported";
    EXPECT_EQ(result, 0);
    BASUserDefaults store("test", path().c_str(), nullptr);
    EXPECT_EQ(written(store), "{}");
    store.SetString("k", "v");
    EXPECT_EQ(written(store), "{\n    \"k\": \"v\"\n}");
    EXPECT_TRUE(store.ReadAll());
    EXPECT_FALSE(store.IsOk()) << "a later load does not change the first one's result";
}

TEST_F(SettingsTest, RefusesWhatIsNoObjectAndLeavesAnEmptyStore)
{
    for (const std::string& content :
         {std::string(), std::string(" \t\r\n"), std::string("{"), std::string("{} x"), std::string("7"),
          std::string("\"text\""), std::string("{\"a\":1,}"), std::string("{\"a\":01}"),
          std::string("{\"a\":NaN}"), std::string("{\"a\":\"\\ud800\"}"), std::string("{\"a\":\"\n\"}"),
          std::string("{/**/}"), std::string("\xEF\xBB\xBF{}"), std::string("1.0000000001e-2147483639"),
          std::string("{\"a\":9e308}"), std::string("{\"a\":-0.0009e312}"),
          "{\"a\":" + std::string(400, '9') + "}", std::string(200'000, '['),
          "{} " + std::string(BASUserDefaults::kMaxFileSize - 2, ' ')}) {
        SCOPED_TRACE(content.substr(0, 60));
        const auto store = storeOf(content);
        EXPECT_FALSE(store->IsOk());
        EXPECT_EQ(output, "parse error\n");
        EXPECT_EQ(written(*store), "{}");
    }
}

TEST_F(SettingsTest, ReadsUpToItsLimits)
{
    EXPECT_TRUE(storeOf("{}" + std::string(BASUserDefaults::kMaxFileSize - 2, ' '))->IsOk());
    EXPECT_TRUE(storeOf(std::string("{}\0{", 4))->IsOk()) << "the text ends at its first NUL";
    const auto nested = [](std::size_t arrays) {
        return "{\"a\":" + std::string(arrays, '[') + std::string(arrays, ']') + "}";
    };
    EXPECT_GE(BASUserDefaults::kMaxNesting, 512);
    EXPECT_TRUE(storeOf(nested(BASUserDefaults::kMaxNesting - 1))->IsOk());
    EXPECT_FALSE(storeOf(nested(BASUserDefaults::kMaxNesting))->IsOk());
    std::string siblings;
    std::string elements;
    for (int i = 0; i < 35'000; ++i) {
        siblings += i < 600 ? "[],{}," : "";
        elements += "0,";
    }
    EXPECT_TRUE(storeOf("{\"a\":[" + siblings + "0]}")->IsOk()) << "siblings do not nest";
    EXPECT_TRUE(storeOf("{\"a\":[" + elements + "0]}")->IsOk());
    EXPECT_FALSE(
        storeOf("{\"a\":" + std::string(511, '[') + elements + '0' + std::string(511, ']') + "}")->IsOk())
        << "written, it would be a thousand times as large";
}

TEST_F(SettingsTest, FailsOnAnArrayWithALineAndOnAFolderWithout)
{
    std::unique_ptr<BASUserDefaults> store;
    EXPECT_EQ(printed(2, [&] { store = storeOf("[1, 2]"); }),
              "BASUserDefaults::ReadAll: \"" + path() + "\" holds an array, not an object with settings\n");
    EXPECT_FALSE(store->IsOk());
    EXPECT_EQ(output, "");
    EXPECT_EQ(written(*store), "{}");
    EXPECT_EQ(printed(1, [&] { BASUserDefaults("test", folder.path().c_str(), nullptr).WriteAll(); }), "");
}

TEST_F(SettingsTest, WritesEveryKindOfValueInItsForm)
{
    const auto store =
        storeOf(R"({"flag":true,"off":false,"none":null,"list":[1,[],{}],"inner":{"a":{"b":"c"}},"whole":7.0,
        "small":1.0000000001e-2147483639,"pi":3.14159265358979,"large":1.5e300,"least":-9223372036854775808,
        "most":18446744073709551615,"beyond":18446744073709551616,"minus":-0.0,"same":1,"same":2,"a\u0000b":"\u0000c","tiny":[0.01e-9223372036854775808,0.001e-400,-1e-99999999999999999999],
        "text":"\u00e9\ud83d\ude00 \/ \\ \" \b\f\n\r\t\u0001\u001f\u007f)"
                "\xFF\"}");
    ASSERT_TRUE(store->IsOk());
    EXPECT_EQ(written(*store),
              R"({
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
    "same": 1,
    "same": 2,
    "a\u0000b": "\u0000c",
    "tiny": [
        0,
        0,
        -0
    ],
    "text": ")"
              "\xC3\xA9\xF0\x9F\x98\x80 / \\\\ \\\" \\b\\f\\n\\r\\t\\u0001\\u001F\x7F\xFF\"\n}");
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
    EXPECT_EQ(written(*store), "{\n    \"a\": 7,\n    \"twice\": \"first\",\n    \"A\": \"other\",\n    "
                               "\"twice\": 2,\n    \"new\": -5\n}");
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
    EXPECT_STREQ(store->GetString("key 7"), "value");
    EXPECT_STREQ(shortText, "tiny");
    EXPECT_STREQ(longText, "a text that does not fit beside its key");
    store->SetString("short", store->GetString("short") + 1);
    EXPECT_STREQ(store->GetString("short"), "iny") << "a text may be set from itself";
}

TEST_F(SettingsTest, ReadsColours)
{
    struct Case {
        const char* text;
        BASRGB expected;
        bool complete = true;
    };
    const auto store = storeOf("{}");
    for (const auto& [text, expected, complete] :
         {Case{"10,20,30", {10, 20, 30}}, Case{" 10, 20,\t30", {10, 20, 30}}, Case{"300,-1,0", {300, -1, 0}},
          Case{"a,b,c", {0, 0, 0}}, Case{"1x,+2 3,", {1, 2, 0}}, Case{"010,0x10,3,4", {10, 0, 3}},
          Case{",,9", {0, 0, 9}}, Case{"99999999999,-99999999999,1", {2147483647, -2147483647 - 1, 1}},
          Case{"", {0, 0, 0}, false}, Case{"5", {5, 0, 0}, false}, Case{"5,6", {5, 6, 0}, false}}) {
        store->SetString("c", text);
        BASRGB colour;
        EXPECT_EQ(printed(2, [&] { colour = store->GetRGB("c"); }),
                  complete ? "" : "BASUserDefaults::GetRGB: \"c\" has fewer than three components\n");
        EXPECT_EQ(colour, expected) << text;
    }
}

TEST_F(SettingsTest, ReadsIntegersOf32Bits)
{
    const auto store =
        storeOf(R"({"most":2147483647,"least":-2147483648,"more":2147483648,"less":-2147483649})");
    EXPECT_EQ(store->GetInt("most"), 2147483647);
    EXPECT_EQ(store->GetInt("least"), -2147483647 - 1);
    EXPECT_NE(printed(2, [&] { EXPECT_EQ(store->GetInt("more") + store->GetInt("less"), 0); }), "");
}

TEST_F(SettingsTest, NamesMistakesInOneLineAndAnswersHarmlessly)
{
    const auto store = storeOf(R"({"":1,"text":"t","float":7.0,"large":4294967295,"list":[],"flag":true})");
    const std::string content = written(*store);
    for (const char* key : {"text", "float", "large", "list", "flag", "missing"}) {
        EXPECT_EQ(printed(2, [&] { EXPECT_EQ(store->GetInt(key), 0); }),
                  std::string("BASUserDefaults::GetInt: \"") + key + "\" is not an integer setting\n");
    }
    for (const char* key : {"float", "list", "missing"}) {
        EXPECT_EQ(printed(2, [&] { EXPECT_STREQ(store->GetString(key), ""); }),
                  std::string("BASUserDefaults::GetString: \"") + key + "\" is not a text setting\n");
    }
    EXPECT_EQ(printed(2, [&] { EXPECT_EQ(store->GetRGB("flag"), BASRGB{}); }),
              "BASUserDefaults::GetRGB: \"flag\" is not a text setting\n");
    EXPECT_EQ(printed(2, [&] { EXPECT_EQ(store->GetInt(nullptr), 0); }),
              "BASUserDefaults::GetInt: \"(null)\" is not an integer setting\n");
    EXPECT_NE(printed(2, [&] { store->SetInt(nullptr, 1); }), "");
    EXPECT_NE(printed(2, [&] { store->SetString(nullptr, "v"); }), "");
    EXPECT_NE(printed(2, [&] { store->SetString("k", nullptr); }), "");
    EXPECT_NE(printed(2, [&] { EXPECT_FALSE(BASUserDefaults(nullptr, nullptr, nullptr).IsOk()); }), "");
    EXPECT_EQ(written(*store), content);

    EXPECT_EQ(printed(2,
                      [&] {
                          EXPECT_EQ(store->GetRGB("missing"), BASRGB{});
                          EXPECT_FALSE(store->HasMember("missing"));
                          EXPECT_EQ(&store->GetValueObject("missing"),
                                    &storeOf("{}")->GetValueObject("other"));
                          EXPECT_TRUE(store->GetValueObject("missing").IsNull());
                      }),
              "")
        << "these have an answer for a missing key";
}

TEST_F(SettingsTest, LoadsAgain)
{
    const auto store = storeOf(R"({"a":1})");
    folder.write("settings.json", R"({"b":2})");
    EXPECT_TRUE(store->ReadAll());
    EXPECT_FALSE(store->HasMember("a"));
    std::filesystem::remove(path());
    EXPECT_FALSE(store->ReadAll());
    EXPECT_EQ(store->GetInt("b"), 2) << "without a file, the content stays";
    folder.write("settings.json", "{\"b\":");
    EXPECT_EQ(printed(1, [&] { EXPECT_FALSE(store->ReadAll()); }), "parse error\n");
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
    EXPECT_STREQ(BASUserDefaults::GetUserDefaults("registry")->GetString("who"), "second");
    EXPECT_STREQ(first->GetString("who"), "first") << "the replaced store lives on";
    EXPECT_EQ(BASUserDefaults::GetUserDefaults("Registry"), nullptr);
}

} // namespace
