#include "files/TextFile.h"

#include "Resources.h"

#include <algorithm>
#include <array>
#include <optional>
#include <regex>
#include <string_view>
#include <utility>

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
    static const std::regex kDeclaration(R"re(#[^\r\n]*charset *= *["']?([\w.:+-]+))re", std::regex::icase);
    constexpr std::size_t kBeginning = 200; // bytes
    const std::string beginning(rest.substr(0, kBeginning));
    std::smatch match;
    if (std::regex_search(beginning, match, kDeclaration, std::regex_constants::match_continuous)) {
        charset = mark == kMarks.end() ? match[1].str() : charset;
        rest.remove_prefix(std::min(rest.find_first_of("\r\n"), rest.size()));
    }
    const Ref<NSString> characters = NSString::stringWithData_charset_usedLossyConversion(
        NSData::dataWithBytes_length(rest.data(), rest.size()).get(), text(charset).get(), &isLossy);
    if (characters) {
        content = characters->UTF8String();
    } else {
        fault = "“%s”: The character set “%s” is not known.";
    }
}
