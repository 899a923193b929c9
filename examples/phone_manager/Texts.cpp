#include "Texts.h"

#include <util/StringUtil.h>

#include <string_view>

Ref<NSString> text(const std::string& utf8)
{
    return NSString::stringWithUTF8String(utf8.c_str());
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

std::string shownName(const std::string& name)
{
    return text(name) ? name : localised("a file whose name is no text");
}
