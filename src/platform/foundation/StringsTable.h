#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

/// What a file of localised texts says.
struct StringsTable {
    std::map<std::u16string, std::u16string, std::less<>> texts;
    /// The line, counted from 1, at which the file stops making sense; 0 if it does not.
    std::size_t badLine = 0;
};

/// Reads `"key" = "value";` and `key;`, which stands for itself, with comments in between. Quotation marks
/// may be left out around letters, digits and ._-$/: of ASCII. The bytes are UTF-8, or what a byte-order mark
/// says, and may be anything: those that are no text become U+FFFD, and what comes before the first mistake
/// counts. Of texts with the same key the last one does.
StringsTable parseStringsTable(std::string_view bytes);
