#include "platform/foundation/NSString.h"

#include "platform/foundation/NSData.h"
#include "platform/qt/Conversions.h"

#include <QString>
#include <QStringDecoder>
#include <QStringEncoder>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/unistr.h>

#include <cstring>
#include <memory>
#include <utility>

namespace
{

/// Called by a converter for bytes that are no character; `context` is a bool that notes it.
void replaceBytes(const void* context, UConverterToUnicodeArgs* arguments, const char* /*bytes*/,
                  std::int32_t /*length*/, UConverterCallbackReason reason, UErrorCode* status)
{
    if (reason > UCNV_IRREGULAR) {
        return; // the converter begins anew, or ends
    }
    *static_cast<bool*>(const_cast<void*>(context)) = true;
    *status = U_ZERO_ERROR;
    constexpr char16_t kReplacement = 0xFFFD;
    ucnv_cbToUWriteUChars(arguments, &kReplacement, 1, 0, status);
}

} // namespace

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

Ref<NSString> NSString::stringWithData_charset_usedLossyConversion(const NSData* data,
                                                                   const NSString* charset,
                                                                   bool* usedLossyConversion)
{
    if (data == nullptr || charset == nullptr || !std::in_range<std::int32_t>(data->length())) {
        return nullptr;
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::string name = charset->UTF8String();
    if (name.find('\0') != std::string::npos || ucnv_countAliases(name.c_str(), &status) == 0) {
        return nullptr; // such a name would be looked for among files
    }
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(name.c_str(), &status),
                                                                       &ucnv_close);
    bool isLossy = false;
    ucnv_setToUCallBack(converter.get(), &replaceBytes, &isLossy, nullptr, nullptr, &status);
    if (U_FAILURE(status)) {
        return nullptr;
    }
    const auto* bytes = reinterpret_cast<const char*>(data->bytes().data());
    const icu::UnicodeString characters(bytes, static_cast<std::int32_t>(data->length()), converter.get(),
                                        status);
    if (U_FAILURE(status) || characters.isBogus()) {
        return nullptr;
    }
    if (usedLossyConversion != nullptr) {
        *usedLossyConversion = isLossy;
    }
    return stringWithCharacters({characters.getBuffer(), static_cast<std::size_t>(characters.length())});
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
