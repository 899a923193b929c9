#include "phone_manager/files/Csv.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace
{

using namespace std::string_literals;

/// The records of a file, each as "line|field|field" or "line: what is wrong", with "!" behind it where bytes
/// are no characters.
std::vector<std::string> recordsOf(const std::string& content, const std::string& charset = "UTF-8")
{
    const TemporaryFolder folder;
    folder.write("file", content);
    TextFile file(folder.path() / "file", charset);
    CsvReader reader(file);
    std::vector<std::string> records;
    for (CsvRecord record; reader.next(record);) {
        std::string text = std::to_string(record.line);
        for (const std::string& field : record.fields) {
            text += '|' + field;
        }
        text += record.fault == nullptr ? "" : ": "s + record.fault;
        text += record.isLossy ? "!" : "";
        records.push_back(text);
    }
    EXPECT_TRUE(reader.bytesRead() == content.size() || !file.knowsCharset()) << content.substr(0, 60);
    return records;
}

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

constexpr const char* kOutOfPlace = ": A quotation mark stands out of place.";
constexpr const char* kNotClosed = ": A quotation mark is not closed.";
constexpr const char* kNul = ": There is a NUL character in it.";
constexpr const char* kTooLong = ": The line is too long.";

TEST(CsvTest, ReadsRecords)
{
    const struct {
        std::string content;
        std::vector<std::string> expected;
    } cases[] = {
        {"", {}},
        {"a,b\r\nc,d\ne,f\rg,h", {"1|a|b", "2|c|d", "3|e|f", "4|g|h"}},
        {"a,b\n", {"1|a|b"}},
        {",\n\n ,\r\n\r\n", {"1||", "2", "3| |", "4"}},
        {"\"a\",\"\",\"\"\"\"\n\" b,\"\"c\"\" \",", {"1|a||\"", "2| b,\"c\" |"}},
        {"\"1\r\n2\n3\r4\r\r\n\",b\nc", {"1|1\r\n2\n3\r4\r\r\n|b", "7|c"}},
        {"a;b,c;d\n1,2;\"3;\"\n", {"1|a|b,c|d", "2|1,2|3;"}},
        {"\n\ta\tb,\n1\t2", {"1", "2||a|b,", "3|1|2"}},
        {"a|b", {"1|a|b"}},
        // Faults, each with the line on which its record begins, and what follows them
        {"a,b\"c\"\nd\n", {"1"s + kOutOfPlace, "2|d"}},
        {"\"a\"b,c\nd", {"1"s + kOutOfPlace, "2|d"}},
        {"\"a\nb\"c\nd", {"1"s + kOutOfPlace, "2"s + kOutOfPlace, "3|d"}},
        {"a,\"b\nc\nd,\"e\"\nf", {"1"s + kOutOfPlace, "2|c", "3|d|e", "4|f"}},
        {"a,\"b\nc\nd\n", {"1"s + kNotClosed, "2|c", "3|d"}},
        {"a,\"", {"1"s + kNotClosed}},
        {"a\0b,c\nd,\"\n\0\"\ne"s, {"1"s + kNul, "2"s + kNul, "3"s + kNul, "4|e"}},
    };
    for (const auto& [content, expected] : cases) {
        EXPECT_EQ(recordsOf(content), expected) << content;
    }
}

TEST(CsvTest, ReadsInTheCharacterSetOfTheFile)
{
    const struct {
        std::string content;
        const char* charset;
        std::vector<std::string> expected;
    } cases[] = {
        {"\xEF\xBB\xBF\u00e4,b", "windows-1252", {"1|\u00e4|b"}}, // the mark says more than others
        {"\xEF\xBB\xBF#charset=latin1\nä", "UTF-8", {"1", "2|ä"}},
        {utf16(u"\ufeff\u00e4,\U0001f600\r\n\u0a0d\r\u0d0a\n\"\n\"", true),
         "UTF-8",
         {"1|\u00e4|\U0001f600", "2|\u0a0d", "3|\u0d0a", "4|\n"}},
        {utf16(u"\ufeff\u00e4\r\nb\rc\n", false), "UTF-8", {"1|\u00e4", "2|b", "3|c"}},
        {utf16(u"a\nb", true) + "x", "UTF-16LE", {"1|a", "2|b\ufffd!"}},
        {utf16(u"a\r\nb", false), "utf-16", {"1|a", "2|b"}},
        {"# text/csv; charset=\"windows-1252\"\r\n\xE4;\x80\n\n", "UTF-8", {"1", "2|\u00e4|\u20ac", "3"}},
        {"#Charset = 'Shift_JIS'; header=present\r\x93\xFA\n\"\x95\x5C\"",
         "UTF-8",
         {"1", "2|\u65e5", "3|\u8868"}},
        {"#charset=latin1 " + std::string(300, 'x') + "\n\xE4", "UTF-8", {"1", "2|\u00e4"}},
        {"#charset=none such\na", "UTF-8", {}},
        {"# charset:latin1\na", "UTF-8", {"1|# charset:latin1", "2|a"}},
        {"\xE4", "ISO-8859-15", {"1|\u00e4"}},
        {"a\n\xE4,\"b\nc\xFF\n\"\n\ufffd", "UTF-8", {"1|a", "2|\ufffd|b\nc\ufffd\n!", "5|\ufffd!"}},
        {"a,\"\n\xFF\"\nb,\"\n\xFF\n", "UTF-8", {"1|a|\n\ufffd!", "3"s + kNotClosed, "4|\ufffd!"}},
        {"a\n\xEF\xBB\xBFx", "UTF-8", {"1|a", "2|\ufeffx"}},
    };
    for (const auto& [content, charset, expected] : cases) {
        EXPECT_EQ(recordsOf(content, charset), expected) << content;
    }
    for (const char* unknown : {"", "none", "UTF-32", "/etc/passwd"}) {
        EXPECT_FALSE(TextFile::knowsCharset(unknown)) << unknown;
    }
}

TEST(CsvTest, LeavesOutWhatIsTooLong)
{
    constexpr std::size_t kLongest = CsvReader::kLongestRecord;
    const std::string most(kLongest - 2, 'x');
    EXPECT_EQ(recordsOf(most + "\r\na\n" + most + "\n"), (std::vector{"1|" + most, "2|a"s, "3|" + most}));
    const std::vector<std::string> cut = {"1|a", "2"s + kTooLong, "2"s + kTooLong, "3|b"};
    EXPECT_EQ(recordsOf("a\n" + most + "xx\nb"), cut);
    const std::string chunk(65535, 'x'); // behind which the file is read again
    EXPECT_EQ(recordsOf(chunk + "\r\na"), (std::vector{"1|" + chunk, "2|a"s}));
    EXPECT_EQ(recordsOf("a,\"\n" + most + "xx\",\nb")[0], "1"s + kNotClosed);

    // Wherever the file is read on
    const std::string first(199, 'a'); // its line ends with the piece that tells the character set
    EXPECT_EQ(recordsOf(first + '\n' + most + "x\r\nb"),
              (std::vector{"1|" + first, "2|" + most + 'x', "3|b"s}));
    std::string wide = "a";
    while (wide.size() < kLongest / 2) {
        wide += "\u00e4";
    }
    EXPECT_EQ(recordsOf(wide + '\r' + wide + '\r' + wide + '\r' + wide),
              (std::vector{"1|" + wide, "2|" + wide, "3|" + wide, "4|" + wide}));

    // What a quotation mark may take in is read again, but only once.
    std::string lines = "a,\"b";
    while (lines.size() < 3 * kLongest) {
        lines += "\n\"\",\"" + std::string(52, '"') + '"';
    }
    const std::vector<std::string> records = recordsOf(lines + "\nc,\"d\"");
    EXPECT_EQ(records.size(), (lines.size() - 4) / 58 + 2);
    EXPECT_EQ(records[0], "1"s + kNotClosed);
    EXPECT_EQ(records[1], "2||" + std::string(26, '"'));
    EXPECT_TRUE(records.back().ends_with("|c|d")) << records.back();
}

TEST(CsvTest, WritesWhatItReads)
{
    EXPECT_EQ(csvLine({"", "a b", " c", "d,e", "\"f\"", "g\nh", "\r", "=1+1", ""}),
              ",a b, c,\"d,e\",\"\"\"f\"\"\",\"g\nh\",\"\r\",=1+1,\r\n");
}

} // namespace
