#include "platform/foundation/NSBundle.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/StringsTable.h"

#include <fstream>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#if defined(__APPLE__)
#include <mach-o/dyld.h>
#endif

namespace fs = std::filesystem;

struct NSBundle::Tables {
    std::mutex mutex;
    std::map<std::string, StringsTable> byName; // guarded by mutex
};

namespace
{

/// An empty path for null.
fs::path pathOf(const NSString* text)
{
    return text == nullptr ? "" : text->UTF8String();
}

/// Whether the system can look for a file that is called so: what follows a NUL, it would not see.
bool isPath(const NSString* text)
{
    return text == nullptr || text->characters().find(u'\0') == std::u16string_view::npos;
}

Ref<NSString> textOf(const fs::path& path)
{
    return path.empty() ? nullptr : NSString::stringWithUTF8String(path.c_str());
}

fs::path pathOfProgram()
{
#if defined(__APPLE__)
    char nothing = '\0';
    std::uint32_t size = sizeof nothing;
    _NSGetExecutablePath(&nothing, &size); // tells the size that it needs
    std::string path(size + std::size_t{1}, '\0');
    return _NSGetExecutablePath(path.data(), &size) == 0 ? path.c_str() : "";
#else
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
#endif
}

/// The first path in the order of names in `folder` that ends in `extension`; empty if there is none.
fs::path firstWithExtension(const fs::path& folder, const std::string& extension)
{
    fs::path first;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (entry->path().native().ends_with(extension) && (first.empty() || entry->path() < first)) {
            first = entry->path();
        }
    }
    return first;
}

StringsTable readTable(const fs::path& path)
{
    std::error_code error;
    if (!fs::is_regular_file(path, error)) {
        return {};
    }
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size > NSBundle::kMaxTableSize) {
        diagnose("NSBundle", '"' + path.string() + "\" is too large or cannot be read");
        return {};
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    StringsTable table = parseStringsTable(bytes);
    if (table.badLine > 0) {
        diagnose("NSBundle",
                 '"' + path.string() + "\" has a mistake in line " + std::to_string(table.badLine));
    }
    return table;
}

} // namespace

NSBundle::NSBundle(fs::path folder, fs::path executable)
    : _folder(std::move(folder)), _executable(std::move(executable)), _tables(std::make_unique<Tables>())
{
}

NSBundle::~NSBundle() = default;

Ref<NSBundle> NSBundle::mainBundle()
{
    static const Ref<NSBundle> bundle = [] {
        const fs::path program = pathOfProgram();
        return make<NSBundle>(program.parent_path(), program);
    }();
    return bundle;
}

Ref<NSBundle> NSBundle::bundleWithPath(NSString* path)
{
    std::error_code error;
    fs::path folder = fs::absolute(pathOf(path), error);
    if (!isPath(path) || !fs::is_directory(folder, error)) {
        return nullptr;
    }
    if (!folder.has_filename()) {
        folder = folder.parent_path(); // it ends in a slash
    }
    static constinit std::mutex mutex;
    static std::map<fs::path, Ref<NSBundle>> bundles; // guarded by mutex
    const std::scoped_lock lock(mutex);
    Ref<NSBundle>& bundle = bundles[folder];
    if (!bundle) {
        bundle = make<NSBundle>(folder, fs::path());
    }
    return bundle;
}

Ref<NSString> NSBundle::executablePath() const
{
    return textOf(_executable);
}

fs::path NSBundle::resourceFolder() const
{
    // The program of a Mac application lies in "Contents/MacOS".
    const fs::path classic = _executable.empty() ? _folder / "Contents" : _folder.parent_path();
    for (const fs::path& parent : {_folder, classic}) {
        fs::path folder = parent / "Resources";
        std::error_code error;
        if (fs::is_directory(folder, error)) {
            return folder;
        }
    }
    return _folder;
}

Ref<NSString> NSBundle::resourcePath() const
{
    return textOf(resourceFolder());
}

Ref<NSString> NSBundle::pathForResource_ofType(NSString* name, NSString* type) const
{
    if (!isPath(name) || !isPath(type)) {
        return nullptr;
    }
    const fs::path folder = resourceFolder();
    fs::path file = pathOf(name);
    const fs::path ending = pathOf(type);
    const std::string extension = ending.empty() ? "" : "." + ending.native();
    if (!file.empty()) {
        file = folder / (file += extension);
    } else if (!extension.empty()) {
        file = firstWithExtension(folder, extension);
    }
    std::error_code error;
    return fs::exists(file, error) ? textOf(file) : nullptr;
}

Ref<NSString> NSBundle::localizedStringForKey_value_table(NSString* key, NSString* value,
                                                          NSString* tableName) const
{
    const Ref<NSString> wanted = key == nullptr ? NSString::stringWithCharacters(u"") : key;
    Ref<NSString> fallback = value == nullptr || value->length() == 0 ? wanted : value;
    if (key == nullptr || !isPath(tableName)) {
        return fallback;
    }
    fs::path name = pathOf(tableName);
    name = (name.empty() ? fs::path("Localizable") : name) += ".strings";

    const std::scoped_lock lock(_tables->mutex);
    auto known = _tables->byName.find(name);
    if (known == _tables->byName.end()) {
        std::error_code error;
        const fs::path own = _folder / name;
        StringsTable read = readTable(fs::exists(own, error) ? own : resourceFolder() / name);
        known = _tables->byName.emplace(name, std::move(read)).first;
    }
    const auto text = known->second.texts.find(wanted->characters());
    return text == known->second.texts.end() ? fallback : NSString::stringWithCharacters(text->second);
}
