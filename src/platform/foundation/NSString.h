#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/NSRange.h"

#include <string>
#include <string_view>

class NSAttributedString;
class NSAttributes;
class NSData;

/// How a text is searched.
using NSStringCompareOptions = unsigned long;
/// Letters count as the same in either case: by simple case folding, which is one to one.
inline constexpr NSStringCompareOptions NSCaseInsensitiveSearch = 1;

/// An immutable text of UTF-16 code units; lengths and ranges count these.
class TESSALINE_EXPORT NSString final : public NSObject
{
public:
    /// Null if `text` is null or no valid UTF-8.
    static Ref<NSString> stringWithUTF8String(const char* text);
    static Ref<NSString> stringWithCharacters(std::u16string_view characters);
    /// The text of bytes in a character set by its name, such as "windows-1252" or "Shift_JIS", in either
    /// case; a byte-order mark is text where the name tells the order. What is no character becomes U+FFFD,
    /// and `usedLossyConversion`, unless null, tells whether there was any. Null if data or name are null,
    /// the name is unknown, or there are 2 GiB of bytes or more.
    static Ref<NSString> stringWithData_charset_usedLossyConversion(const NSData* data,
                                                                    const NSString* charset,
                                                                    bool* usedLossyConversion);

    std::size_t length() const { return _characters.size(); }
    std::u16string_view characters() const { return _characters; }
    /// Surrogates without a partner become U+FFFD.
    std::string UTF8String() const;

    /// This string itself, since it cannot change.
    Ref<NSString> copy() const;
    bool isEqual(const NSObject* other) const override;

    /// Where `text` occurs first; without options, exactly as it stands. At `NSNotFound` with a length
    /// of 0 if it does not, as null and an empty text.
    NSRange rangeOfString_options(const NSString* text, NSStringCompareOptions options) const;

    /// The size of the text when drawn without wrapping: the widest line by the sum of the line heights,
    /// in points, not rounded. An empty text has the height of a line.
    NSSize sizeWithAttributes(const NSAttributes& attributes) const;

    /// Draw the text into the current graphics context as an attributed one is drawn.
    void drawInRect_withAttributes(NSRect rect, const NSAttributes& attributes) const;
    void drawAtPoint_withAttributes(NSPoint point, const NSAttributes& attributes) const;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSString(std::u16string_view characters) : _characters(characters) {}

    Ref<NSAttributedString> withAttributes(const NSAttributes& attributes) const;

    std::u16string _characters;
};
