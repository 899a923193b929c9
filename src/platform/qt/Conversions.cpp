#include "platform/qt/Conversions.h"

#include "platform/foundation/NSString.h"
#include "platform/foundation/NSURL.h"
#include "platform/graphics/NSColor.h"

#include <QUrl>

#include <algorithm>

QString toQt(const NSString& text)
{
    return QStringView(text.characters()).toString();
}

QColor toQt(const NSColor& color)
{
    const auto component = [&](std::size_t index) {
        return static_cast<float>(std::clamp(color.components()[index], 0.0, 1.0));
    };
    return QColor::fromRgbF(component(0), component(1), component(2), component(3));
}

QUrl toQt(const NSURL& url)
{
    return {toQt(*url.absoluteString()), QUrl::StrictMode};
}

Ref<NSString> fromQt(const QString& text)
{
    return NSString::stringWithCharacters(
        {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())});
}
