#include "platform/foundation/NSBundle.h"

#include "support/Drawing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{

namespace fs = std::filesystem;

/// A bundle, and what it prints on standard error.
class NSBundleTest : public testing::Test
{
protected:
    Ref<NSBundle> bundle() { return NSBundle::bundleWithPath(text(folder.path().c_str()).get()); }

    /// The name in the folder of the resources, or "".
    std::string find(const char* name, const char* type)
    {
        const Ref<NSString> path = bundle()->pathForResource_ofType(text(name).get(), text(type).get());
        return path ? fs::path(path->UTF8String()).lexically_relative(folder.path() / "Resources") : "";
    }

    std::string translate(const char* key, const char* table = nullptr, const char* value = nullptr)
    {
        testing::internal::CaptureStderr();
        const Ref<NSString> found = bundle()->localizedStringForKey_value_table(
            text(key).get(), text(value).get(), text(table).get());
        output = testing::internal::GetCapturedStderr();
        return utf8(found);
    }

    /// What a new table with that content says for "k".
    std::string read(const std::string& content)
    {
        const std::string table = "table" + std::to_string(++tables);
        folder.write(table + ".strings", content);
        return translate("k", table.c_str());
    }

    TemporaryFolder folder;
    std::string output;
    int tables = 0;
};

TEST_F(NSBundleTest, KnowsItsFolders)
{
    const Ref<NSBundle> own = bundle();
    EXPECT_EQ(own, NSBundle::bundleWithPath(text((folder.path() / "").c_str()).get()));
    EXPECT_EQ(own->executablePath(), nullptr);
    for (const char* resources : {"", "/Contents/Resources", "/Resources"}) { // the later one goes before
        const std::string path = folder.path().string() + resources;
        fs::create_directories(path);
        EXPECT_EQ(utf8(own->resourcePath()), path);
    }
    folder.write("file", "");
    const std::string file = folder.path() / "file";
    for (const char* none : {"", file.c_str(), static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(NSBundle::bundleWithPath(text(none).get()), nullptr);
    }
    const Ref<NSString> withNul = NSString::stringWithCharacters(std::u16string_view(u"/\0x", 3));
    EXPECT_EQ(NSBundle::bundleWithPath(withNul.get()), nullptr);
    EXPECT_EQ(own->pathForResource_ofType(withNul.get(), nullptr), nullptr);
}

TEST_F(NSBundleTest, FindsFilesAndFoldersByNameAndType)
{
    for (const char* name : {"fr.lproj", "de.lproj", "de.lproj.old", "zh-Hans.lproj"}) {
        fs::create_directories(folder.path() / "Resources" / name);
    }
    folder.write("Resources/é.tar.gz", "");
    using Names = std::array<const char*, 3>;
    constexpr Names kCases[] = {{"é", "tar.gz", "é.tar.gz"},  {"fr", "lproj", "fr.lproj"},
                                {"fr.lproj", "", "fr.lproj"}, {nullptr, "lproj", "de.lproj"},
                                {"", "lproj", "de.lproj"},    {"fr", nullptr, ""},
                                {nullptr, nullptr, ""},       {nullptr, "pdf", ""}};
    for (const auto& [name, type, found] : kCases) {
        EXPECT_EQ(find(name, type), found);
    }
}

TEST_F(NSBundleTest, TranslatesFromItsFolderOrItsResources)
{
    fs::create_directories(folder.path() / "Resources");
    folder.write("Localizable.strings", "k = own;");
    folder.write("Resources/Localizable.strings", "k = resource;");
    folder.write("Resources/Other.strings", "k = other; empty = \"\";");
    EXPECT_EQ(translate("k"), "own");
    EXPECT_EQ(translate("k", ""), "own");
    EXPECT_EQ(translate("k", "Other"), "other");
    EXPECT_EQ(translate("empty", "Other"), "");
    EXPECT_EQ(translate("k", "No such table"), "k");
    folder.write("Localizable.strings", "k = changed;");
    EXPECT_EQ(translate("k"), "own") << "read once";
    EXPECT_EQ(translate("missing", nullptr, "value"), "value");
    EXPECT_EQ(translate("missing", nullptr, ""), "missing");
    EXPECT_EQ(translate(nullptr, nullptr, "value"), "value");
    EXPECT_EQ(translate(nullptr), "");
}

TEST_F(NSBundleTest, ReadsWhatTablesMaySay)
{
    using namespace std::string_literals;
    const std::pair<std::string, const char*> cases[] = {
        {"/* c */ \"k\" = \"v w\"; // end", "v w"},
        {"a.b_c-d$e/f:9=x//y;k=x//y;z=1;", "x//y"},
        {"alone;\"k\" ;", "k"},
        {R"(k = "\"\\\n\r\t\'\q\101\60\7777";)", "\"\\\n\r\t'qA0\u01ff7"},
        {R"(k = "\U00e9\u4e2D\ud83d\UDE00\ue9!\u!";)", "\u00e9\u4e2d\U0001F600\u00e9!u!"},
        {"k = first; k = last;", "last"},
        {"k = \"two\nlines\" /*;*/ ;", "two\nlines"},
        {"\xEF\xBB\xBFk = \"\xC3\xA9\";", "\u00e9"},
        {"\xFF\xFEk\0=\0\"\0\xE9\0\"\0;\0"s, "\u00e9"},
        {"\r\n//c\r\nk=v;\r\n", "v"},
    };
    for (const auto& [content, value] : cases) {
        EXPECT_EQ(read(content), value) << content;
        EXPECT_EQ(output, "");
    }
}

TEST_F(NSBundleTest, KeepsWhatComesBeforeAMistakeAndNamesItsLine)
{
    for (const char* bad : {"x", "x = ;", "= y;", "x y;", "\"x\\", "x = \"y;\n\n", "/* x", "x = /*",
                            "x = y /*", "x /*", "\xC3\xA9 = y;"}) {
        EXPECT_EQ(read(std::string("k = v;\n") + bad), "v") << bad;
        EXPECT_NE(output.find("/table" + std::to_string(tables) + ".strings\" has a mistake in line 2\n"),
                  std::string::npos)
            << bad << output;
    }
    EXPECT_EQ(read("\xFF\xFE") + output, "k");
    EXPECT_EQ(read("k = v;" + std::string(NSBundle::kMaxTableSize, ' ')), "k") << "too large";
}

} // namespace
