#include "phone_manager/files/TextFile.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string_view>

namespace
{

using namespace std::string_literals;

constexpr const char* kUnknown = "“%s”: The character set “%s” is not known.";

std::string utf16(std::u16string_view text, bool isLittleEndian)
{
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += isLittleEndian ? std::string{low, high} : std::string{high, low};
    }
    return bytes;
}

TEST(TextFileTest, ReadsInTheCharacterSetOfTheFile)
{
    const TemporaryFolder folder;
    const struct {
        std::string bytes;
        const char* charset; // that it is read in
        const char* found;
        std::string content;
        bool isLossy = false;
    } cases[] = {
        {"", "UTF-8", "UTF-8", ""},
        {"\xEF\xBB\xBF\u00e4,b", "windows-1252", "UTF-8", "\u00e4,b"}, // the mark says more than others
        {"\xEF\xBB\xBF#charset=latin1\nä", "UTF-8", "UTF-8", "\nä"},
        {utf16(u"\ufeff\u00e4,\U0001f600\r\n\u0a0d\r", true), "UTF-8", "UTF-16LE",
         "\u00e4,\U0001f600\r\n\u0a0d\r"},
        {utf16(u"\ufeff\u00e4\r\nb\rc\n", false), "UTF-8", "UTF-16BE", "\u00e4\r\nb\rc\n"},
        {utf16(u"\ufeff# charset=utf-8\r\na", true), "UTF-8", "UTF-16LE", "\r\na"},
        {utf16(u"a\nb", true) + "x", "UTF-16LE", "UTF-16LE", "a\nb\ufffd", true},
        {"# text/csv; charset=\"windows-1252\"\r\n\xE4;\x80\n", "UTF-8", "windows-1252",
         "\r\n\u00e4;\u20ac\n"},
        {"#Charset = 'Shift_JIS'; header=present\r\x93\xFA\x95\x5C", "UTF-8", "Shift_JIS", "\r\u65e5\u8868"},
        {"#charset=latin1 " + std::string(300, 'x') + "\n\xE4", "UTF-8", "latin1", "\n\u00e4"},
        {"#charset=latin1", "UTF-8", "latin1", ""},
        {"# charset:latin1\na", "UTF-8", "UTF-8", "# charset:latin1\na"},
        {"\xE4", "ISO-8859-15", "ISO-8859-15", "\u00e4"},
        {"a\xE4,\0c\xFF"s, "UTF-8", "UTF-8", "a\ufffd,\0c\ufffd"s, true},
        {"\ufffd\xEF\xBB\xBFx", "UTF-8", "UTF-8", "\ufffd\ufeffx"},
    };
    for (const auto& [bytes, charset, found, content, isLossy] : cases) {
        folder.write("file", bytes);
        const TextFile file(folder.path() / "file", charset);
        EXPECT_EQ(file.fault, nullptr) << bytes;
        EXPECT_EQ(file.charset, found) << bytes;
        EXPECT_EQ(file.content, content) << bytes;
        EXPECT_EQ(file.isLossy, isLossy) << bytes;
    }
}

TEST(TextFileTest, TellsWhatCannotBeRead)
{
    const TemporaryFolder folder;
    folder.write("file", "#charset=none such\na");
    EXPECT_STREQ(TextFile(folder.path() / "file").fault, kUnknown);
    folder.write("file", "a");
    for (const char* unknown : {"", "none", "/etc/passwd"}) {
        EXPECT_STREQ(TextFile(folder.path() / "file", unknown).fault, kUnknown) << unknown;
    }
    for (const char* name : {"none", "."}) {
        EXPECT_STREQ(TextFile(folder.path() / name).fault, "“%s” cannot be read.") << name;
    }
}

} // namespace
