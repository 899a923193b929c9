#include "platform/foundation/NSFileManager.h"

#include "platform/foundation/NSString.h"

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

Ref<NSFileManager> NSFileManager::defaultManager()
{
    static const Ref<NSFileManager> manager = make<NSFileManager>();
    return manager;
}

bool NSFileManager::fileExistsAtPath_isDirectory(const NSString* path, bool* isDirectory) const
{
    std::error_code error;
    const fs::file_status status = fs::status(fileSystemRepresentationWithPath(path), error);
    if (isDirectory != nullptr) {
        *isDirectory = fs::is_directory(status);
    }
    return fs::exists(status);
}

std::string NSFileManager::fileSystemRepresentationWithPath(const NSString* path) const
{
    const bool ends = path != nullptr && path->characters().find(u'\0') == std::u16string_view::npos;
    return ends ? path->UTF8String() : "";
}
