#pragma once

#include "platform/foundation/NSObject.h"

#include <string>
#include <vector>

class NSAttributedString;
class NSColor;
class NSFont;
class NSNumber;
class NSString;
template <class T> class NSArray;

/// Helpers for text. Byte strings are NUL-terminated UTF-8, borrowed; null counts as the empty one. Where a
/// result is made from bytes that are no UTF-8, it is null.
class TESSALINE_EXPORT StringUtil final : public NSObject
{
public:
    /// Regular expressions in the ECMAScript grammar of `std::regex`, compiled at each call and matched byte
    /// by byte. A pattern that is not valid throws its `std::regex_error`. So does, with the code
    /// `error_stack`, a match that is too long: the standard matcher calls itself for each byte that a
    /// repetition takes, and has the stack for some ten thousand of them, or more.
    ///
    /// The first match, or the empty text if there is none.
    static Ref<NSString> FindIfMatch_withPattern(const char* text, const char* pattern);
    /// Whether the pattern matches the whole text.
    static bool IsMatch_withPattern(const char* text, const char* pattern);

    /// Whether the text holds, anywhere, what a search for [^@]+@[^.]+[.]{1}.+ finds: a character before an
    /// at sign, then a full stop that does not follow it directly, then something on the same line. Takes
    /// texts of any length, in one pass.
    static bool IsSimpleEmailFormat(const char* text);

    /// The argument, or the empty text for null.
    static Ref<NSString> NilToEmpty(NSString* text);

    /// Red, green and blue of six hexadecimal digits RRGGBB, without number sign. Each pair is read as far as
    /// it holds digits, behind white space and an optional "0x"; what is missing is 0. A text shorter than
    /// six units, or null, is reported.
    static Ref<NSArray<NSNumber>> GetHexRGB(NSString* text);

    /// The text in a font and colour (null ones are left out), underlined once if asked for. Null for null.
    static Ref<NSAttributedString> getTitleAttributeString_withFont_withColor_withUnderline(NSString* text,
                                                                                            NSFont* font,
                                                                                            NSColor* color,
                                                                                            bool underline);

    /// Whether the version is 4.4 or later.
    static bool IsAndroidVersionAboveKitkat(const char* version);

    /// Compares versions by their numbers between full stops: 1, 0 or -1. A component is read as far as it
    /// is a number, else it is 0; numbers beyond `int` count as the nearest one. Beware, the comparison ends
    /// with the shorter version: 4.4 equals 4.4.1; and of 4.4.0.1 and 4.4, only the first component that the
    /// second lacks counts, so they are equal, too.
    static int CompareVersion_withSecond(const char* first, const char* second);

    /// The text with each of / \ ? % * | " < > replaced by a hyphen, as fits a file name. Null for null.
    static Ref<NSString> sanitizeFileNameString(NSString* text);

    /// Whole points nearest to a length in millimetres (2.835 points each), halves upwards.
    static float mmToPoint(float millimetres);

    /// The text of the bytes; the empty text for null.
    static Ref<NSString> cToObjcString(const char* text);
    static bool isStrNullOrEmpty(const char* text);

    /// The text for `key` in the default strings table of the language folder that the standard user default
    /// "Tavori" names, a folder of the main bundle with the extension "lproj"; the first such folder by name
    /// if there is no such default, or it is no text. The key itself where there is no text for it; the
    /// empty text for a null key. `table` is not used.
    static Ref<NSString> CustomLocalizedString_withTable(NSString* key, NSString* table);

    /// The pieces of the text between occurrences of a delimiter, found from the left; one more than there
    /// are occurrences. An empty delimiter leaves the text in one piece. One that can overlap itself may
    /// run into the end of the text, and then no last piece follows: "aaa" by "aa" gives two empty pieces.
    static std::vector<std::string> split_withPattern(std::string text, std::string delimiter);

    /// What stands after the last slash, or the whole text if there is none. Null for null.
    static Ref<NSString> SpliteString(NSString* path);
};
