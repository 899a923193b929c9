#include "basic/bas_user_defaults.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <functional>
#include <memory>
#include <regex>

namespace
{

/// What `action` writes to standard output, and what to standard error.
std::string printed(const std::function<void()>& action)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    action();
    const std::string errors = testing::internal::GetCapturedStderr();
    return testing::internal::GetCapturedStdout() + (errors.empty() ? "" : "error: " + errors);
}

class SettingsTest : public testing::Test
{
protected:
    std::string path() const { return (folder.path() / "settings.json").string(); }

    std::unique_ptr<BASUserDefaults> storeOf(const std::string& content) const
    {
        folder.write("settings.json", content);
        return std::make_unique<BASUserDefaults>("test", path().c_str(), nullptr);
    }

    std::string written(const BASUserDefaults& store) const
    {
        store.WriteAll();
        return folder.read("settings.json");
    }

    TemporaryFolder folder;
};

TEST_F(SettingsTest, RefusesWhatIsNoObjectAndLeavesAnEmptyStore)
{
    const std::string array =
        "error: BASUserDefaults::ReadAll: \"" + path() + "\" holds an array, not an object with settings\n";
    for (const std::string content : {"[1]", "", "{} x", "7", "{\"a\":9e308}", "{\"a\":-0.0009e312}"}) {
        std::unique_ptr<BASUserDefaults> store;
        EXPECT_EQ(printed([&] { store = storeOf(content); }), content == "[1]" ? array : "parse error\n");
        EXPECT_FALSE(store->IsOk()) << content;
        EXPECT_EQ(written(*store), "{}");
    }
    EXPECT_EQ(printed([&] { BASUserDefaults("test", folder.path().c_str(), nullptr).WriteAll(); }), "");
}

TEST_F(SettingsTest, ReadsUpToItsLimits)
{
    const auto loads = [&](std::size_t arrays, const std::string& elements) {
        return storeOf("{\"a\":" + std::string(arrays, '[') + elements + std::string(arrays, ']') + "}")
            ->IsOk();
    };
    const std::string blanks(BASUserDefaults::kMaxFileSize - 2, ' ');
    EXPECT_TRUE(storeOf("{}" + blanks)->IsOk());
    EXPECT_FALSE(storeOf("{} " + blanks)->IsOk());
    EXPECT_TRUE(loads(0, "0." + std::string(400, '0') + '1'));
    EXPECT_TRUE(loads(BASUserDefaults::kMaxNesting - 1, ""));
    EXPECT_FALSE(loads(BASUserDefaults::kMaxNesting, ""));
    std::string siblings = "0";
    for (int i = 0; i < 35'000; ++i) {
        siblings += i < 600 ? ",[],{}" : ",0";
    }
    EXPECT_TRUE(loads(1, siblings)) << "they do not nest";
    EXPECT_FALSE(loads(500, siblings)) << "written, it would be a thousand times as large";
}

TEST_F(SettingsTest, WritesEveryKindOfValueInItsForm)
{
    const auto store = storeOf(R"({"v":[true,null,{"a":[]},7.0,-0.0,3.14159265358979,1.5e300,0.001e-400,
        -1e-99999999999999999999,-9223372036854775808,18446744073709551615,18446744073709551616,
        "\u00e9 \/ \\ \" \n\u0000)"
                               "\xFF\"]}");
    const std::string onOneLine = std::regex_replace(written(*store), std::regex("\n *"), "");
    EXPECT_EQ(onOneLine, "{\"v\": [true,null,{\"a\": []},7,-0,3.14159,1.5e+300,0,-0,-9223372036854775808,"
                         "18446744073709551615,1.84467e+19,\"\xC3\xA9 / \\\\ \\\" \\n\\u0000\xFF\"]}");
}

TEST_F(SettingsTest, ReadsColours)
{
    const auto store = storeOf("{}");
    const auto color = [&](const char* text) {
        store->SetString("c", text);
        BASRGB read;
        const std::string error = printed([&] { read = store->GetRGB("c"); });
        return std::to_string(read.red) + ' ' + std::to_string(read.green) + ' ' + std::to_string(read.blue) +
               error;
    };
    EXPECT_EQ(color("10, 20,\t30"), "10 20 30");
    EXPECT_EQ(color(",1x,+2 3"), "0 1 2");
    EXPECT_EQ(color("010,0x10,3,4"), "10 0 3");
    EXPECT_EQ(color("99999999999,-99999999999,1"), "2147483647 -2147483648 1");
    EXPECT_EQ(color("5,6"), "5 6 0error: BASUserDefaults::GetRGB: \"c\" has fewer than three components\n");
}

TEST_F(SettingsTest, NamesMistakesInOneLineAndAnswersHarmlessly)
{
    const auto store =
        storeOf(R"({"":1,"text":"t","float":7.0,"more":2147483648,"list":[],"most":2147483647})");
    const std::string content = written(*store);
    EXPECT_EQ(store->GetInt("most"), 2147483647);
    for (const char* key : {"text", "float", "more", "missing", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(printed([&] { EXPECT_EQ(store->GetInt(key), 0); }),
                  std::string("error: BASUserDefaults::GetInt: \"") + (key == nullptr ? "(null)" : key) +
                      "\" is not an integer setting\n");
    }
    EXPECT_EQ(printed([&] { EXPECT_STREQ(store->GetString("list"), ""); }),
              "error: BASUserDefaults::GetString: \"list\" is not a text setting\n");
    EXPECT_NE(printed([&] { EXPECT_EQ(store->GetRGB("list"), BASRGB{}); }), "");
    EXPECT_NE(printed([&] { store->SetInt(nullptr, 1); }), "");
    EXPECT_NE(printed([&] { store->SetString(nullptr, "v"); }), "");
    EXPECT_NE(printed([&] { store->SetString("k", nullptr); }), "");
    EXPECT_NE(printed([] { BASUserDefaults(nullptr, nullptr, nullptr); }), "");
    EXPECT_EQ(written(*store), content);
    EXPECT_EQ(printed([&] { EXPECT_EQ(store->GetRGB("missing"), BASRGB{}); }), "");
    EXPECT_TRUE(store->GetValueObject("missing").IsNull());
}

TEST_F(SettingsTest, SetsInPlaceOrAtTheEndAndLeavesOtherTextsWhereTheyAre)
{
    const auto store = storeOf(R"({"a":"text","twice":1,"A":"tiny","twice":2})");
    const char* tiny = store->GetString("A");
    store->SetInt("a", 7);
    store->SetString("twice", "first");
    EXPECT_EQ(store->GetInt("a"), 7);
    for (int i = 0; i < 1000; ++i) {
        store->SetString(("key " + std::to_string(i)).c_str(), "value");
    }
    EXPECT_TRUE(written(*store).starts_with("{\n    \"a\": 7,\n    \"twice\": \"first\",\n    \"A\": "
                                            "\"tiny\",\n    \"twice\": 2,\n    \"key 0\": \"value\",\n"));
    EXPECT_STREQ(tiny, "tiny");
    store->SetString("A", tiny + 1);
    EXPECT_STREQ(store->GetString("A"), "iny") << "a text may be set from itself";
}

TEST_F(SettingsTest, LoadsAgain)
{
    std::int32_t result = 7;
    EXPECT_EQ(printed([&] { BASUserDefaults("test", path().c_str(), &result); }), "") << "without a file";
    EXPECT_EQ(result, 0);
    BASUserDefaults store("test", path().c_str(), nullptr);
    store.SetInt("a", 2);
    EXPECT_FALSE(store.ReadAll());
    EXPECT_EQ(store.GetInt("a"), 2) << "without a file, the content stays";
    EXPECT_NE(written(store), "");
    EXPECT_TRUE(store.ReadAll());
    folder.write("settings.json", "{\"a\":");
    EXPECT_EQ(printed([&] { EXPECT_FALSE(store.ReadAll()); }), "parse error\n");
    EXPECT_FALSE(store.HasMember("a"));
    EXPECT_FALSE(store.IsOk()) << "as at first";
}

TEST_F(SettingsTest, RegistersStoresByName)
{
    EXPECT_EQ(BASUserDefaults::GetUserDefaults("registry"), nullptr);
    EXPECT_FALSE(BASUserDefaults::InitUserDefaults("registry", path().c_str()));
    const BASUserDefaults* first = BASUserDefaults::GetUserDefaults("registry");
    EXPECT_EQ(written(*first), "{}") << "registered although the file did not load";
    EXPECT_TRUE(BASUserDefaults::InitUserDefaults("registry", path().c_str()));
    EXPECT_TRUE(BASUserDefaults::GetUserDefaults("registry")->IsOk());
    EXPECT_FALSE(first->IsOk()) << "the replaced store lives on";
}

} // namespace
