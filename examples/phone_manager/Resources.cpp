#include "Resources.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <map>
#include <string_view>
#include <utility>

constexpr const char* kLanguageKey = "Tavori"; // where the library looks for it

Ref<NSString> text(const std::string& utf8)
{
    return NSString::stringWithUTF8String(utf8.c_str());
}

void useLanguageOfEnvironment()
{
    const bool german = NSLocale::currentLocale()->localeIdentifier()->UTF8String().starts_with("de");
    NSUserDefaults::standardUserDefaults()->registerDefault_forKey(text(german ? "de" : "en"),
                                                                   text(kLanguageKey).get());
}

std::string language()
{
    const Ref<NSObject> chosen =
        NSUserDefaults::standardUserDefaults()->objectForKey(text(kLanguageKey).get());
    return text("de")->isEqual(chosen.get()) ? "de" : "en";
}

void setLanguage(const std::string& language)
{
    NSUserDefaults::standardUserDefaults()->setObject_forKey(text(language).get(), text(kLanguageKey).get());
}

std::string localised(const std::string& key, std::initializer_list<std::string> values)
{
    constexpr std::string_view kPlace = "%s";
    std::string result = StringUtil::CustomLocalizedString_withTable(text(key).get(), nullptr)->UTF8String();
    std::size_t place = 0;
    for (const std::string& value : values) {
        place = result.find(kPlace, place);
        if (place == std::string::npos) {
            break;
        }
        result.replace(place, kPlace.size(), value);
        place += value.size();
    }
    return result;
}

std::string shownGroup(const std::string& group)
{
    const std::string key = "group " + group;
    const std::string shown = localised(key);
    return shown == key ? group : shown;
}

std::string shownName(const std::string& name)
{
    return text(name) ? name : localised("a file whose name is no text");
}

std::string shownDate(double moment)
{
    const Ref<NSString> date = SystemUtil::DateToString_withFormat(
        NSDate::dateWithTimeIntervalSince1970(moment).get(), text(localised("d MMMM yyyy, HH:mm")).get());
    return StringUtil::NilToEmpty(date.get())->UTF8String();
}

std::string detailsOf(const std::filesystem::path& file)
{
    std::error_code error;
    const auto written = std::filesystem::last_write_time(file, error);
    if (error) {
        return localised("The file is gone.");
    }
    const auto bytes = static_cast<std::uint64_t>(FileUtil::getFileSize(file.c_str()));
    const std::chrono::duration<double> moment = std::chrono::file_clock::to_sys(written).time_since_epoch();
    return FileUtil::QxGetFormatSizeFromBytes(bytes)->UTF8String() + ", " + shownDate(moment.count());
}

std::optional<std::string> bytesOf(const std::filesystem::path& file)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > kLargestFile) {
        return std::nullopt;
    }
    std::string bytes(size, '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), static_cast<std::streamsize>(size));
    return stream ? std::optional(std::move(bytes)) : std::nullopt;
}

Ref<NSImage> thumbnailOf(const std::filesystem::path& file, NSSize largest)
{
    const std::string bytes = bytesOf(file).value_or("");
    const Ref<NSImage> picture =
        ImageUtil::loadData_withLength(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    if (!picture) {
        return nullptr;
    }
    const NSSize size = ImageUtil::getEqualScaleImageSize_imageSize(largest, picture->size());
    // Of one that is long and thin, something has to be left.
    return ImageUtil::resizeImage_size(picture.get(),
                                       {std::max(size.width, 1.0), std::max(size.height, 1.0)});
}

Ref<NSImage> icon(const std::string& name)
{
    static std::map<std::string, Ref<NSImage>> icons;
    const auto [kept, isNew] = icons.try_emplace(name);
    if (isNew) {
        // Some are there for screens with two pixels to the point only.
        for (const char* scale : {"", "@2x"}) {
            const Ref<NSString> path =
                NSBundle::mainBundle()->pathForResource_ofType(text(name + scale).get(), text("png").get());
            kept->second = kept->second ? kept->second : make<NSImage>()->initByReferencingFile(path.get());
        }
        if (kept->second) {
            kept->second->setName(name);
        }
    }
    return kept->second;
}
