#include "platform/foundation/NSString.h"

#include "platform/qt/Conversions.h"

#include <QString>
#include <QStringDecoder>
#include <QStringEncoder>

#include <cstring>

Ref<NSString> NSString::stringWithUTF8String(const char* text)
{
    if (text == nullptr) {
        return nullptr;
    }
    // Stateless, so that an incomplete sequence at the end is an error and a byte-order mark is kept.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString decoded = decoder(QByteArrayView(text, static_cast<qsizetype>(std::strlen(text))));
    return decoder.hasError() ? nullptr : fromQt(decoded);
}

Ref<NSString> NSString::stringWithCharacters(std::u16string_view characters)
{
    return make<NSString>(characters);
}

std::string NSString::UTF8String() const
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    const QByteArray bytes = encoder(QStringView(_characters));
    return bytes.toStdString();
}

Ref<NSString> NSString::copy() const
{
    return const_cast<NSString*>(this);
}

bool NSString::isEqual(const NSObject* other) const
{
    const auto* string = dynamic_cast<const NSString*>(other);
    return string != nullptr && _characters == string->_characters;
}

NSRange NSString::rangeOfString_options(const NSString* text, NSStringCompareOptions options) const
{
    if (text == nullptr || text->length() == 0) {
        return {NSNotFound, 0};
    }
    const auto cases = (options & NSCaseInsensitiveSearch) != 0 ? Qt::CaseInsensitive : Qt::CaseSensitive;
    const qsizetype found = QStringView(_characters).indexOf(QStringView(text->_characters), 0, cases);
    return found < 0 ? NSRange{NSNotFound, 0} : NSRange{static_cast<std::size_t>(found), text->length()};
}
