#include "files/TextFile.h"

#include "Resources.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <regex>
#include <string_view>
#include <utility>

/// Whether a text begins with a line that tells its character set.
static bool isDeclaration(const std::string& bytes, std::smatch& match)
{
    static const std::regex kDeclaration(R"re(#[^\r\n]*charset *= *["']?([\w.:+-]+))re", std::regex::icase);
    constexpr std::ptrdiff_t kMostBytes = 200;
    const auto end = bytes.begin() + std::min(std::ssize(bytes), kMostBytes);
    return std::regex_search(bytes.begin(), end, match, kDeclaration, std::regex_constants::match_continuous);
}

TextFile::TextFile(const std::filesystem::path& file, std::string charsetIfNotTold)
    : charset(std::move(charsetIfNotTold))
{
    const std::optional<std::string> bytes = bytesOf(file);
    if (!bytes) {
        fault = "“%s” cannot be read.";
        return;
    }
    static constexpr std::array kMarks{std::pair("\xEF\xBB\xBF", "UTF-8"), std::pair("\xFF\xFE", "UTF-16LE"),
                                       std::pair("\xFE\xFF", "UTF-16BE")};
    std::string_view rest = *bytes;
    const auto* const mark =
        std::ranges::find_if(kMarks, [&](const auto& each) { return rest.starts_with(each.first); });
    if (mark != kMarks.end()) {
        rest.remove_prefix(std::string_view(mark->first).size());
        charset = mark->second;
    }
    std::smatch match;
    if (mark == kMarks.end() && isDeclaration(*bytes, match)) {
        charset = match[1];
    }
    const Ref<NSString> characters = NSString::stringWithData_charset_usedLossyConversion(
        NSData::dataWithBytes_length(rest.data(), rest.size()).get(), text(charset).get(), &isLossy);
    if (!characters) {
        fault = "“%s”: The character set “%s” is not known.";
        return;
    }
    content = characters->UTF8String();
    if (isDeclaration(content, match)) {
        content.erase(0, content.find_first_of("\r\n"));
    }
}
