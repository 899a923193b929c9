#include "platform/foundation/NSBundle.h"

#include "platform/foundation/NSString.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

namespace fs = std::filesystem;

std::string utf8(const Ref<NSString>& string)
{
    return string ? string->UTF8String() : "null";
}

/// A bundle with the resource folder `resources`, and what it prints on standard error.
class NSBundleTest : public testing::Test
{
protected:
    Ref<NSBundle> bundle(const char* resources = "Resources")
    {
        fs::create_directories(folder.path() / resources);
        return NSBundle::bundleWithPath(text(folder.path().c_str()).get());
    }

    /// The path below the bundle's folder, or "null".
    std::string find(const Ref<NSBundle>& in, const char* name, const char* type)
    {
        const Ref<NSString> key = name == nullptr ? nullptr : text(name);
        const Ref<NSString> ending = type == nullptr ? nullptr : text(type);
        const Ref<NSString> path = in->pathForResource_ofType(key.get(), ending.get());
        return path ? fs::path(path->UTF8String()).lexically_relative(folder.path()).string() : "null";
    }

    std::string translate(const Ref<NSBundle>& in, const Ref<NSString>& key, const char* table = nullptr)
    {
        testing::internal::CaptureStderr();
        const Ref<NSString> name = table == nullptr ? nullptr : text(table);
        const Ref<NSString> found = in->localizedStringForKey_value_table(key.get(), nullptr, name.get());
        output = testing::internal::GetCapturedStderr();
        return utf8(found);
    }

    /// What a table with that content says for a key.
    std::string translate(const std::string& content, const char* key)
    {
        const std::string table = "table" + std::to_string(++tables);
        folder.write(table + ".strings", content);
        return translate(bundle(), text(key), table.c_str());
    }

    TemporaryFolder folder;
    std::string output;
    int tables = 0;
};

TEST_F(NSBundleTest, KnowsItsFolders)
{
    const Ref<NSBundle> main = NSBundle::mainBundle();
    EXPECT_EQ(main, NSBundle::mainBundle());
    EXPECT_EQ(fs::path(utf8(main->executablePath())).filename(), "tessaline_tests");
    EXPECT_EQ(utf8(main->resourcePath()), fs::path(utf8(main->executablePath())).parent_path() / "Resources");

    const Ref<NSBundle> own = NSBundle::bundleWithPath(text(folder.path().c_str()).get());
    EXPECT_EQ(own, NSBundle::bundleWithPath(text((folder.path() / "").c_str()).get()));
    EXPECT_EQ(own->executablePath(), nullptr);
    for (const char* resources : {"", "/Contents/Resources", "/Resources"}) { // the later one goes before
        const std::string path = folder.path().string() + resources;
        fs::create_directories(path);
        EXPECT_EQ(utf8(own->resourcePath()), path);
    }

    folder.write("file", "");
    for (const std::string& none :
         {std::string(), folder.path().string() + "/file", std::string("/no/such")}) {
        EXPECT_EQ(NSBundle::bundleWithPath(text(none.c_str()).get()), nullptr) << none;
    }
    EXPECT_EQ(NSBundle::bundleWithPath(nullptr), nullptr);
    EXPECT_EQ(NSBundle::bundleWithPath(NSString::stringWithCharacters(std::u16string_view(u"/\0x", 3)).get()),
              nullptr);
}

TEST_F(NSBundleTest, FindsFilesAndFoldersByNameAndType)
{
    const Ref<NSBundle> own = bundle();
    for (const char* name : {"fr.lproj", "de.lproj", "de.lproj.old", "zh-Hans.lproj"}) {
        fs::create_directories(folder.path() / "Resources" / name);
    }
    for (const char* name : {"a.png", "caf\u00e9.tar.gz", "plain", ".lproj"}) {
        folder.write(std::string("Resources/") + name, "");
    }
    EXPECT_EQ(find(own, "a", "png"), "Resources/a.png");
    EXPECT_EQ(find(own, "caf\u00e9", "tar.gz"), "Resources/caf\u00e9.tar.gz");
    EXPECT_EQ(find(own, "fr", "lproj"), "Resources/fr.lproj");
    EXPECT_EQ(find(own, "plain", nullptr), "Resources/plain");
    EXPECT_EQ(find(own, "a.png", ""), "Resources/a.png");
    EXPECT_EQ(find(own, nullptr, "lproj"), "Resources/.lproj");
    fs::remove(folder.path() / "Resources/.lproj");
    EXPECT_EQ(find(own, nullptr, "lproj"), "Resources/de.lproj");
    EXPECT_EQ(find(own, "", "lproj"), "Resources/de.lproj");
    for (const auto& [name, type] : {std::pair<const char*, const char*>{"a", nullptr},
                                     {"", ""},
                                     {nullptr, nullptr},
                                     {"b", "png"},
                                     {nullptr, "pdf"},
                                     {"A", "png"}}) {
        EXPECT_EQ(find(own, name, type), "null");
    }
    EXPECT_EQ(own->pathForResource_ofType(
                  NSString::stringWithCharacters(std::u16string_view(u"plain\0", 6)).get(), nullptr),
              nullptr);
}

TEST_F(NSBundleTest, TranslatesFromItsFolderOrItsResources)
{
    const Ref<NSBundle> own = bundle();
    folder.write("Localizable.strings", "k = own;");
    folder.write("Resources/Localizable.strings", "k = resource;");
    folder.write("Resources/Other.strings", "k = other; empty = \"\";");
    EXPECT_EQ(translate(own, text("k")), "own");
    EXPECT_EQ(translate(own, text("k"), ""), "own");
    EXPECT_EQ(translate(own, text("k"), "Other"), "other");
    EXPECT_EQ(translate(own, text("empty"), "Other"), "");
    EXPECT_EQ(translate(own, text("missing"), "Other"), "missing");
    EXPECT_EQ(translate(own, text("k"), "No such table"), "k");
    EXPECT_EQ(translate(own, nullptr), "");
    folder.write("Localizable.strings", "k = changed;");
    EXPECT_EQ(translate(own, text("k")), "own") << "read once";

    const Ref<NSString> value = text("value");
    EXPECT_EQ(own->localizedStringForKey_value_table(text("missing").get(), value.get(), nullptr), value);
    EXPECT_EQ(own->localizedStringForKey_value_table(nullptr, value.get(), nullptr), value);
    EXPECT_EQ(utf8(own->localizedStringForKey_value_table(text("missing").get(), text("").get(), nullptr)),
              "missing");
}

TEST_F(NSBundleTest, ReadsWhatTablesMaySay)
{
    struct Case {
        std::string content;
        const char* key;
        const char* text;
    };
    using namespace std::string_literals;
    for (const Case& example : {
             Case{"/* c */ \"Copy URL\" = \"URL kopieren\"; // end", "Copy URL", "URL kopieren"},
             {"a.b_c-d$e/f:9=x//y;z=1;", "a.b_c-d$e/f:9", "x//y"},
             {"alone;\"quoted\" ;", "quoted", "quoted"},
             {R"(k = "\"\\\n\r\t\'\q\101\0\60\7777";)", "k", "\"\\\n\r\t'qA"},
             {R"(k = "\U00e9\u4e2D\ud83d\UDE00\ue9!\u!";)", "k", "\u00e9\u4e2d\U0001F600\u00e9!"},
             {"k = first; k = last;", "k", "last"},
             {"\"\" = nothing;", "", "nothing"},
             {"k = \"two\nlines\" /*;*/ ;", "k", "two\nlines"},
             {"\xEF\xBB\xBFk = \"\xC3\xA9\";", "k", "\u00e9"},
             {"\xFF\xFEk\0=\0\xE9\0;\0"s, "k", "k"}, // not among the letters that need no quotation marks
             {"\xFF\xFEk\0=\0\"\0\xE9\0\"\0;\0"s, "k", "\u00e9"},
             {"\xFE\xFF\0k\0=\0\"\x4E\x2D\0\"\0;"s, "k", "\u4e2d"},
             {"k = \"\xFF\";", "k", "\uFFFD"},
             {"\r\n//c\r\nk=v;\r\n", "k", "v"},
         }) {
        EXPECT_EQ(translate(example.content, example.key).substr(0, std::string(example.text).size()),
                  example.text)
            << example.content;
    }
    EXPECT_EQ(translate(R"(k = "\0\60\7777\u!";)", "k"), "\0"
                                                         "0\u01ff7u!"s);
}

TEST_F(NSBundleTest, KeepsWhatComesBeforeAMistakeAndNamesItsLine)
{
    const std::string good = "k = v;\n";
    for (const char* bad : {"x", "x =", "x = y", "x = ;", "= y;", "x y;", "\"x", "\"x\\", "x = \"y;\n\n",
                            "/* x", "x /*", "x = /*", "x = y /*", "{", ";", "\xC3\xA9 = y;", "x = y z;"}) {
        EXPECT_EQ(translate(good + bad, "k"), "v") << bad;
        EXPECT_NE(output.find("/table" + std::to_string(tables) + ".strings\" has a mistake in line 2\n"),
                  std::string::npos)
            << bad << output;
    }
    EXPECT_EQ(translate(good + "\n\n", "k"), "v");
    EXPECT_EQ(translate("", "k"), "k");
    EXPECT_EQ(translate("\xFF\xFE", "k"), "k");
    EXPECT_EQ(output, "");
    EXPECT_EQ(translate(good + std::string(NSBundle::kMaxTableSize, ' '), "k"), "k") << "too large";
}

} // namespace
