#include "platform/foundation/NSURL.h"

#include "platform/foundation/NSString.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/UriList.h"

#include <QUrl>

NSURL::NSURL(Ref<NSString> text) : _text(std::move(text)) {}

NSURL::~NSURL() = default;

Ref<NSURL> NSURL::URLWithString(NSString* text)
{
    if (text == nullptr || !toQt(*text).isValidUtf16()) {
        return nullptr;
    }
    Ref<NSURL> url = make<NSURL>(text);
    return toQt(*url).isValid() ? url : nullptr;
}

Ref<NSURL> NSURL::fileURLWithPath(NSString* path)
{
    return path == nullptr || path->length() == 0
               ? nullptr
               : URLWithString(
                     fromQt(QString::fromLatin1(QUrl::fromLocalFile(toQt(*path)).toEncoded())).get());
}

Ref<NSString> NSURL::absoluteString() const
{
    return _text;
}

Ref<NSString> NSURL::path() const
{
    const std::vector<QString> names = fileNamesIn(toQt(*_text).toUtf8(), QString());
    return names.empty() ? nullptr : fromQt(names.front());
}

bool NSURL::isEqual(const NSObject* other) const
{
    const auto* url = dynamic_cast<const NSURL*>(other);
    return url != nullptr && _text->isEqual(url->_text.get());
}
