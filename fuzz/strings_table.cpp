// Feeds arbitrary bytes to the reader of localised texts and checks that texts which are written out again
// in full read the same.

#include "platform/foundation/StringsTable.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace
{

/// The text between quotation marks, each of its code units as an escape.
void write(std::string& file, const std::u16string& text)
{
    file += '"';
    for (const char16_t unit : text) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\U%04x", static_cast<unsigned>(unit));
        file += escape;
    }
    file += '"';
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const StringsTable table = parseStringsTable({reinterpret_cast<const char*>(data), size});
    std::string file;
    for (const auto& [key, value] : table.texts) {
        write(file, key);
        file += " = ";
        write(file, value);
        file += ";\n";
    }
    const StringsTable again = parseStringsTable(file);
    if (again.badLine != 0 || again.texts != table.texts) {
        std::fprintf(stderr, "broken promise: what was read reads the same when it is written\n");
        std::abort();
    }
    return 0;
}
