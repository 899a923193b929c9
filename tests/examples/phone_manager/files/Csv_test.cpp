#include "phone_manager/files/Csv.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace
{

using namespace std::string_literals;

/// The records of a text, each as "line|field|field" or "line: what is wrong".
std::vector<std::string> recordsOf(const std::string& content)
{
    CsvReader reader(content);
    std::vector<std::string> records;
    for (CsvRecord record; reader.next(record);) {
        std::string text = std::to_string(record.line);
        for (const std::string& field : record.fields) {
            text += '|' + field;
        }
        text += record.fault == nullptr ? "" : ": "s + record.fault;
        records.push_back(text);
    }
    EXPECT_EQ(reader.progress(), 1.0);
    return records;
}

constexpr const char* kOutOfPlace = ": A quotation mark stands out of place.";
constexpr const char* kNotClosed = ": A quotation mark is not closed.";
constexpr const char* kNul = ": There is a NUL character in it.";
constexpr const char* kTooLong = ": The record is too long.";

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

TEST(CsvTest, LeavesOutWhatIsTooLong)
{
    constexpr std::size_t kLongest = CsvReader::kLongestRecord;
    const std::string most(kLongest - 1, 'x');
    EXPECT_EQ(recordsOf(most + "\r\na\nx" + most + "\nb"),
              (std::vector{"1|" + most, "2|a"s, "3"s + kTooLong, "4|b"s}));
    EXPECT_EQ(recordsOf(std::string(2 * kLongest, '"')), (std::vector{"1|" + std::string(kLongest - 1, '"')}))
        << "the field counts, not its marks";
    EXPECT_EQ(recordsOf("a,\"\n" + most + "\",\nb")[0], "1"s + kTooLong);

    // What a quotation mark may take in is read again, but only once.
    std::string lines = "a,\"b";
    while (lines.size() < 3 * kLongest) {
        lines += "\n\"\",\"" + std::string(52, '"') + '"';
    }
    const std::vector<std::string> records = recordsOf(lines + "\nc,\"d\"");
    EXPECT_EQ(records.size(), (lines.size() - 4) / 58 + 2);
    EXPECT_EQ(records[0], "1"s + kTooLong);
    EXPECT_EQ(records[1], "2||" + std::string(26, '"'));
    EXPECT_TRUE(records.back().ends_with("|c|d")) << records.back();
}

TEST(CsvTest, WritesWhatItReads)
{
    EXPECT_EQ(csvLine({"", "a b", " c", "d,e", "\"f\"", "g\nh", "\r", "=1+1", ""}),
              ",a b, c,\"d,e\",\"\"\"f\"\"\",\"g\nh\",\"\r\",=1+1,\r\n");
}

} // namespace
