#include "Settings.h"

#include "Resources.h"

#include <basic/bas_user_defaults.h>
#include <platform/graphics/NSColor.h>
#include <util/FileUtil.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

namespace
{

constexpr const char* kShipped = "settings.json"; // beside the program's other resources

bool isThere(const std::string& file)
{
    std::error_code error; // where nobody may look, there may be something
    return std::filesystem::exists(file, error) || error;
}

} // namespace

std::string Settings::userFile()
{
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    const std::filesystem::path folder = configuration != nullptr && *configuration != '\0' ? configuration
                                         : home != nullptr ? std::filesystem::path(home) / ".config"
                                                           : std::filesystem::temp_directory_path();
    return (folder / "phone_manager" / kShipped).string();
}

Settings::Settings(std::string file) : _file(std::move(file))
{
    if (!isThere(_file)) {
        std::error_code error; // shows with the first change, if it still matters
        std::filesystem::create_directories(std::filesystem::path(_file).parent_path(), error);
        if (const Ref<NSString> resources = FileUtil::GetResourcesDir()) {
            FileUtil::Cp_To((resources->UTF8String() + kShipped).c_str(), _file.c_str());
        }
    }
    const bool isBroken = !BASUserDefaults::InitUserDefaults(kName, _file.c_str()) && isThere(_file);
    _store = BASUserDefaults::GetUserDefaults(kName);
    if (isBroken) {
        putAside();
    }
}

void Settings::putAside()
{
    const std::string aside =
        FileUtil::getFilePathNewName_withPosfix(::text(_file).get(), ::text(".broken.json").get())
            ->UTF8String();
    std::error_code error;
    std::filesystem::rename(_file, aside, error);
    _isWritable = !error;
    _trouble = error
                   ? localised("The settings in “%s” cannot be read, and nothing is saved, so that the file "
                               "stays as it is.",
                               {shownName(_file)})
                   : localised("The settings in “%s” could not be read. The file is now “%s”.",
                               {shownName(_file), shownName(aside)});
}

int Settings::number(const char* key, int otherwise) const
{
    return _store->HasMember(key) ? _store->GetInt(key) : otherwise;
}

std::string Settings::text(const char* key, const std::string& otherwise) const
{
    return _store->HasMember(key) ? _store->GetString(key) : otherwise;
}

Ref<NSColor> Settings::color(const char* key) const
{
    if (!_store->HasMember(key)) {
        return nullptr;
    }
    constexpr double kFull = 255.0;
    const BASRGB rgb = _store->GetRGB(key);
    return NSColor::colorWithSRGBRed_green_blue_alpha(rgb.red / kFull, rgb.green / kFull, rgb.blue / kFull,
                                                      1.0);
}

void Settings::set(const char* key, int value)
{
    _store->SetInt(key, value);
    save();
}

void Settings::set(const char* key, const std::string& value)
{
    _store->SetString(key, value.c_str());
    save();
}

void Settings::save()
{
    if (_isWritable) {
        if (std::ofstream(_file, std::ios::app)) { // a save does not tell
            _store->WriteAll();
        } else {
            _trouble = localised("The settings cannot be saved: “%s” is closed to us.", {shownName(_file)});
        }
    }
}
