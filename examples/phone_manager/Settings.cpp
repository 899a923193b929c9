#include "Settings.h"

#include "Resources.h"

#include <cstdlib>
#include <fstream>
#include <utility>

namespace fs = std::filesystem;

constexpr const char* kName = "phone manager"; // of the store
constexpr const char* kShipped = "settings.json";

static bool isThere(const fs::path& file)
{
    std::error_code error; // where nobody may look, there may be something
    return fs::exists(file, error) || error;
}

fs::path Settings::userFile()
{
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    const fs::path folder = configuration != nullptr && *configuration != '\0' ? configuration
                            : home != nullptr                                  ? fs::path(home) / ".config"
                                                                               : ".";
    return folder / "phone_manager" / kShipped;
}

Settings::Settings(fs::path file) : _file(std::move(file))
{
    if (isThere(_file) && !BASUserDefaults::InitUserDefaults(kName, _file.c_str())) {
        putAside();
    }
    if (!isThere(_file)) {
        std::error_code error; // shows with the first change, if it still matters
        fs::create_directories(_file.parent_path(), error);
        FileUtil::Cp_To(
            (StringUtil::NilToEmpty(FileUtil::GetResourcesDir().get())->UTF8String() + kShipped).c_str(),
            _file.c_str());
        BASUserDefaults::InitUserDefaults(kName, _file.c_str());
    }
    _store = BASUserDefaults::GetUserDefaults(kName);
}

void Settings::putAside()
{
    const Ref<NSString> aside = StringUtil::NilToEmpty(
        FileUtil::getFilePathNewName_withPosfix(::text(_file.string()).get(), ::text(".broken.json").get())
            .get());
    std::error_code error;
    fs::rename(_file, aside->UTF8String(), error);
    _isWritable = !error;
    _trouble = localised(
        error ? "The settings in “%s” cannot be read, and nothing is saved, so that the file stays as it is."
              : "The settings in “%s” could not be read. The file is now “%s”.",
        {shownName(_file.string()), aside->UTF8String()});
}

int Settings::number(const char* key, int otherwise) const
{
    return _store->HasMember(key) ? _store->GetInt(key) : otherwise;
}

std::string Settings::text(const char* key) const
{
    return _store->HasMember(key) ? _store->GetString(key) : "";
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
        const bool isOpen = std::ofstream(_file, std::ios::app).is_open(); // a save does not tell
        _store->WriteAll();
        _trouble = isOpen ? ""
                          : localised("The settings cannot be saved: “%s” is closed to us.",
                                      {shownName(_file.string())});
    }
}
