#include "util/FileUtil.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSDate.h"
#include "platform/foundation/NSDateFormatter.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSString.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>

namespace fs = std::filesystem;

namespace
{

Ref<NSString> textOf(const std::string& utf8)
{
    return NSString::stringWithUTF8String(utf8.c_str());
}

/// An empty path, at which nothing is, for null.
fs::path pathOf(const char* path)
{
    return path == nullptr ? "" : path;
}

fs::path pathOf(const NSString* path)
{
    return NSFileManager::defaultManager()->fileSystemRepresentationWithPath(path);
}

bool isThere(const fs::path& path)
{
    std::error_code error;
    return fs::exists(path, error);
}

bool isFolder(const fs::path& path)
{
    std::error_code error;
    return fs::is_directory(path, error);
}

bool isFile(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error);
}

/// Without slashes at the end, so that the path of a link names the link and that of a copy its name.
fs::path withoutSlashes(const char* path)
{
    std::string text = path == nullptr ? "" : path;
    while (text.size() > 1 && text.back() == '/') {
        text.pop_back();
    }
    return text;
}

/// Whether `folder` is `path` or one of the folders around it.
bool contains(const fs::path& folder, fs::path path)
{
    for (;;) {
        std::error_code error;
        if (fs::equivalent(folder, path, error)) {
            return true;
        }
        if (path == path.parent_path()) {
            return false;
        }
        path = path.parent_path();
    }
}

std::error_code copyItem(const fs::path& from, const fs::path& to);

std::error_code copyFolder(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    if (!fs::create_directory(to, error)) {
        return error ? error : make_error_code(std::errc::file_exists);
    }
    fs::permissions(to, fs::perms::owner_all, error);
    fs::directory_iterator entry(from, error);
    while (!error && entry != fs::directory_iterator()) {
        error = copyItem(entry->path(), to / entry->path().filename());
        if (error == std::errc::file_exists) {
            // Names that are one here, in a folder that is ours: not the destination, which is another's.
            return make_error_code(std::errc::io_error);
        }
        if (!error) {
            entry.increment(error);
        }
    }
    return error;
}

std::error_code copyItem(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    const fs::file_status status = fs::symlink_status(from, error);
    switch (status.type()) {
    case fs::file_type::symlink:
        fs::copy_symlink(from, to, error);
        return error;
    case fs::file_type::regular:
        fs::copy_file(from, to, error);
        break;
    case fs::file_type::directory:
        error = copyFolder(from, to);
        break;
    default:
        return error ? error : make_error_code(std::errc::not_supported);
    }
    // A folder only now: it may be one that nothing can be put into, and every entry changes its time.
    if (!error) {
        fs::permissions(to, status.permissions(), error);
    }
    if (!error) {
        const fs::file_time_type time = fs::last_write_time(from, error);
        if (!error) {
            fs::last_write_time(to, time, error);
        }
    }
    return error;
}

/// Removes a copy that was not completed, even if folders in it have their permissions already.
void removeCopy(const fs::path& path)
{
    std::error_code ignored;
    if (fs::is_directory(fs::symlink_status(path, ignored))) {
        fs::permissions(path, fs::perms::owner_all, ignored);
        for (fs::directory_iterator entry(path, ignored); !ignored && entry != fs::directory_iterator();
             entry.increment(ignored)) {
            removeCopy(entry->path());
        }
    }
    fs::remove(path, ignored);
}

/// `base` with the first number in parentheses, and `tail`, for which `isTaken` does not hold.
Ref<NSString> firstFreeName(const std::u16string& base, std::u16string_view tail,
                            bool (*isTaken)(const fs::path&))
{
    Ref<NSString> candidate;
    int number = 0;
    do {
        ++number;
        const std::string digits = std::to_string(number);
        std::u16string name = base + u'(';
        name.append(digits.begin(), digits.end()).append(u")").append(tail);
        candidate = NSString::stringWithCharacters(name);
    } while (isTaken(pathOf(candidate.get())));
    return candidate;
}

/// Finds the declared character set in the bytes of an HTML file, which come one after the other.
class CharsetFinder
{
public:
    /// Returns whether more bytes are needed.
    bool take(char byte)
    {
        constexpr std::string_view kKeyword = "charset";
        const char lower = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
        if (_matched < kKeyword.size()) {
            // The first letter does not occur again in the word: a failed match can only begin anew.
            _matched = lower == kKeyword[_matched] ? _matched + 1 : lower == kKeyword[0] ? 1 : 0;
        } else if (!_inValue) {
            _inValue = byte == '=';
        } else if (byte == '"') {
            _complete = true;
        } else {
            _value += static_cast<unsigned char>(byte);
        }
        return !_complete && _value.size() <= FileUtil::kLongestCharset;
    }

    /// The value between equals sign and quotation mark, if both have come.
    std::optional<std::u16string> value() const { return _complete ? std::optional(_value) : std::nullopt; }

private:
    std::size_t _matched = 0; // letters of the keyword
    bool _inValue = false;
    bool _complete = false;
    std::u16string _value;
};

} // namespace

bool FileUtil::Cp_To(const char* from, const char* to)
{
    const fs::path source = withoutSlashes(from);
    const fs::path destination = withoutSlashes(to);
    std::error_code error;
    const fs::path folder = fs::canonical(fs::absolute(destination, error).parent_path(), error);
    if (error || fs::exists(fs::symlink_status(destination, error))) {
        return false;
    }
    if (fs::is_directory(fs::symlink_status(source, error)) && contains(source, folder)) {
        return false;
    }
    error = copyItem(source, destination);
    if (error && error != std::errc::file_exists) { // what somebody else has just made is theirs
        removeCopy(destination);
    }
    return !error;
}

Ref<NSString> FileUtil::QxGetFormatSizeFromBytes(std::uint64_t bytes)
{
    struct Unit {
        const char* name;
        int digits;
    };
    constexpr std::array<Unit, 4> kUnits{{{" B", 1}, {" KB", 1}, {" MB", 2}, {" GB", 2}}};
    constexpr double kStep = 1024.0;
    auto size = static_cast<double>(bytes);
    const Unit* unit = kUnits.begin();
    for (; unit != &kUnits.back() && size / kStep >= 1.0; ++unit) {
        size /= kStep;
    }
    std::array<char, 64> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), size, std::chars_format::fixed, unit->digits);
    return textOf(std::string(text.data(), result.ptr) + unit->name);
}

Ref<NSString> FileUtil::getHtmlCharset(NSString* path)
{
    constexpr std::u16string_view kBlanks = u" \t";
    constexpr std::size_t kChunk = 65536;
    const fs::path file = pathOf(path);
    CharsetFinder finder;
    if (isFile(file)) {
        std::ifstream stream(file, std::ios::binary);
        std::string chunk(kChunk, '\0');
        do {
            stream.read(chunk.data(), static_cast<std::streamsize>(kChunk));
            chunk.resize(static_cast<std::size_t>(stream.gcount()));
        } while (std::ranges::all_of(chunk, [&](char byte) { return finder.take(byte); }) && stream);
    }
    const std::optional<std::u16string> value = finder.value();
    if (!value) {
        return textOf("UTF-8");
    }
    std::u16string_view trimmed = *value;
    trimmed.remove_prefix(std::min(trimmed.find_first_not_of(kBlanks), trimmed.size()));
    return NSString::stringWithCharacters(trimmed.substr(0, trimmed.find_last_not_of(kBlanks) + 1));
}

Ref<NSString> FileUtil::getDirNewName(NSString* path)
{
    if (path == nullptr || !isFolder(pathOf(path))) {
        return path;
    }
    const std::u16string_view whole = path->characters();
    const std::size_t nameStart = whole.rfind(u'/') + 1; // 0 if there is none
    const std::u16string_view name = whole.substr(nameStart);
    // Of several slashes before the name, and of the root's, one stays.
    std::u16string base(whole.substr(0, whole.substr(0, nameStart).find_last_not_of(u'/') + 1));
    base.append(nameStart > 0 ? u"/" : u"").append(name.substr(0, name.rfind(u'(')));
    return firstFreeName(base, u"", isFolder);
}

Ref<NSString> FileUtil::getFilePathNewName_withPosfix(NSString* path, NSString* tail)
{
    if (path == nullptr) {
        return nullptr;
    }
    const std::u16string_view whole = path->characters();
    const std::u16string base(whole.substr(0, whole.rfind(u'.')));
    const std::u16string_view ending = tail == nullptr ? std::u16string_view() : tail->characters();
    Ref<NSString> plain = NSString::stringWithCharacters(std::u16string(base).append(ending));
    return isThere(pathOf(plain.get())) ? firstFreeName(base, ending, isThere) : plain;
}

Ref<NSString> FileUtil::GetServerExePath()
{
    return NSBundle::mainBundle()->executablePath();
}

Ref<NSString> FileUtil::GetExeDir()
{
    const Ref<NSString> program = GetServerExePath();
    const std::string path = program ? program->UTF8String() : "";
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? nullptr : textOf(path.substr(0, slash + 1));
}

Ref<NSString> FileUtil::GetResourcesDir()
{
    const Ref<NSString> folder = NSBundle::mainBundle()->resourcePath();
    return folder ? textOf(folder->UTF8String() + '/') : nullptr;
}

bool FileUtil::ModifyFileDateTime_withPath(const char* dateTime, const char* path)
{
    const Ref<NSDateFormatter> formatter = make<NSDateFormatter>();
    formatter->setDateFormat(textOf("yyyy-MM-dd HH:mm:ss"));
    const Ref<NSDate> date = formatter->dateFromString(NSString::stringWithUTF8String(dateTime).get());
    if (!date) {
        return isFileExist(path);
    }
    std::array<timespec, 2> times{}; // of access and of modification
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = static_cast<time_t>(std::floor(date->timeIntervalSince1970()));
    return path != nullptr && utimensat(AT_FDCWD, path, times.data(), 0) == 0;
}

bool FileUtil::isFileExist(const char* path)
{
    return isThere(pathOf(path));
}

std::int64_t FileUtil::getFileSize(const char* path)
{
    if (!isFile(pathOf(path))) { // opening a pipe would wait for its other end
        return 0;
    }
    std::ifstream stream(path, std::ios::binary | std::ios::ate);
    return stream.is_open() ? std::max<std::int64_t>(stream.tellg(), 0) : 0;
}

bool FileUtil::Mkdir(const char* path)
{
    const fs::path folder = pathOf(path);
    if (!isThere(folder)) {
        std::error_code error;
        fs::create_directories(folder, error);
    }
    return isThere(folder);
}
