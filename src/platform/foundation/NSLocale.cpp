#include "platform/foundation/NSLocale.h"

#include "platform/foundation/NSString.h"

#include <unicode/locid.h>

#include <cstdlib>
#include <string>

namespace
{

/// The identifier for a name of the form language_REGION.encoding@modifier.
std::string identifierOf(const std::string& posixName)
{
    constexpr const char* kPosixIdentifier = "en_US_POSIX";
    const std::string name = posixName.substr(0, posixName.find_first_of(".@"));
    if (name.empty() || name == "C" || name == "POSIX") {
        return kPosixIdentifier;
    }
    const std::size_t mark = posixName.find('@');
    const std::string modifier = mark == std::string::npos ? "" : posixName.substr(mark + 1);
    const char* script = modifier == "latin" ? "_Latn" : modifier == "cyrillic" ? "_Cyrl" : "";
    const std::size_t region = std::min(name.find('_'), name.size());
    const auto locale =
        icu::Locale::createCanonical((name.substr(0, region) + script + name.substr(region)).c_str());
    return locale.isBogus() ? kPosixIdentifier : locale.getName();
}

} // namespace

NSLocale::NSLocale(Ref<NSString> identifier) : _identifier(std::move(identifier)) {}

NSLocale::~NSLocale() = default;

Ref<NSLocale> NSLocale::currentLocale()
{
    std::string name;
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            name = value;
            break;
        }
    }
    Ref<NSString> identifier = NSString::stringWithUTF8String(identifierOf(name).c_str());
    return make<NSLocale>(identifier ? identifier : NSString::stringWithUTF8String("en_US_POSIX"));
}

Ref<NSString> NSLocale::localeIdentifier() const
{
    return _identifier;
}

bool NSLocale::isEqual(const NSObject* other) const
{
    const auto* locale = dynamic_cast<const NSLocale*>(other);
    return locale != nullptr && _identifier->isEqual(locale->_identifier.get());
}
