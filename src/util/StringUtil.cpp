#include "util/StringUtil.h"

#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSArray.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"

#include <pthread.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <exception>
#include <iterator>
#include <limits>
#include <regex>
#include <string_view>

namespace
{

constexpr const char* kKitkat = "4.4";
constexpr char kVersionSeparator = '.';
constexpr std::u16string_view kForbiddenInFileNames = u"/\\?%*|\"<>";
constexpr char16_t kFileNameReplacement = u'-';
constexpr double kPointsPerMillimetre = 2.835;
constexpr const char* kLanguageKey = "Tavori";
constexpr const char* kLanguageFolderExtension = "lproj";

const char* orEmpty(const char* text)
{
    return text == nullptr ? "" : text;
}

// Regular expressions: the standard library calls itself for each nested group of a pattern and for each
// byte that it matches, so the work is done on a large stack of its own, of which only what is needed
// becomes memory.

constexpr std::size_t kMatcherStack = std::size_t{120} * 1024 * 1024;
/// What is kept free of it for compiling a pattern, and for all that is done between two bytes: both have
/// an end, since the standard library limits the size of its automata.
constexpr std::size_t kMatcherRoom = std::size_t{60} * 1024 * 1024;

/// A place in a text, which ends the search before that exhausts the matcher's stack.
class SubjectIterator
{
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    SubjectIterator() = default;
    SubjectIterator(const char* place, std::uintptr_t stackLimit) : _place(place), _stackLimit(stackLimit) {}

    reference operator*() const
    {
        if (reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < _stackLimit) {
            throw std::regex_error(std::regex_constants::error_stack);
        }
        return *_place;
    }
    SubjectIterator& operator++()
    {
        ++_place;
        return *this;
    }
    SubjectIterator operator++(int) { return {_place++, _stackLimit}; }
    SubjectIterator& operator--()
    {
        --_place;
        return *this;
    }
    SubjectIterator operator--(int) { return {_place--, _stackLimit}; }
    bool operator==(const SubjectIterator&) const = default;

    const char* place() const { return _place; }

private:
    const char* _place = nullptr;
    std::uintptr_t _stackLimit = 0;
};

/// Matches a pattern with a text, whole or anywhere.
class Matcher
{
public:
    Matcher(const char* text, const char* pattern, bool whole)
        : _text(orEmpty(text)), _pattern(orEmpty(pattern)), _whole(whole)
    {
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        pthread_attr_setstacksize(&attributes, kMatcherStack);
        pthread_t thread{};
        const bool started = pthread_create(&thread, &attributes, &Matcher::run, this) == 0;
        pthread_attr_destroy(&attributes);
        if (!started) {
            throw std::regex_error(std::regex_constants::error_stack);
        }
        pthread_join(thread, nullptr);
        if (_error) {
            std::rethrow_exception(_error);
        }
    }

    bool matches() const { return _matches; }
    /// What the pattern matched; empty if it did not.
    const std::string& match() const { return _match; }

private:
    static void* run(void* matcher)
    {
        auto* self = static_cast<Matcher*>(matcher);
        try {
            self->match(reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)));
        } catch (...) {
            self->_error = std::current_exception();
        }
        return nullptr;
    }

    void match(std::uintptr_t stackTop)
    {
        const std::uintptr_t limit = stackTop - kMatcherStack + kMatcherRoom;
        const SubjectIterator begin(_text.data(), limit);
        const SubjectIterator end(_text.data() + _text.size(), limit);
        const std::regex expression(_pattern);
        std::match_results<SubjectIterator> match;
        _matches = _whole ? std::regex_match(begin, end, match, expression)
                          : std::regex_search(begin, end, match, expression);
        if (_matches) {
            _match.assign(match[0].first.place(), match[0].second.place());
        }
    }

    std::string_view _text;
    const char* _pattern;
    bool _whole;
    bool _matches = false;
    std::string _match;
    std::exception_ptr _error;
};

// Numbers

template <class Character> bool isSpace(Character character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

/// The integer that the text begins with, 0 if it begins with none.
int intValue(std::string_view text)
{
    auto digit = std::ranges::find_if_not(text, isSpace<char>);
    const bool negative = digit != text.end() && *digit == '-';
    if (digit != text.end() && (*digit == '-' || *digit == '+')) {
        ++digit;
    }
    constexpr std::int64_t kLargest = std::numeric_limits<int>::max();
    std::int64_t value = 0;
    for (; digit != text.end() && *digit >= '0' && *digit <= '9'; ++digit) {
        value = std::min(value * 10 + (*digit - '0'), kLargest + 1);
    }
    return static_cast<int>(negative ? -value : std::min(value, kLargest));
}

/// Takes the piece before the next separator off the text; the last piece leaves `more` false.
std::string_view takeComponent(std::string_view& text, bool& more)
{
    const std::size_t end = text.find(kVersionSeparator);
    const std::string_view component = text.substr(0, end);
    more = end != std::string_view::npos;
    text.remove_prefix(more ? end + 1 : text.size());
    return component;
}

/// The value of a hexadecimal digit, or -1.
int hexadecimalDigit(char16_t character)
{
    if (character >= u'0' && character <= u'9') {
        return character - u'0';
    }
    const int lower = character | 0x20;
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

int scanHexInt(std::u16string_view text)
{
    text.remove_prefix(
        static_cast<std::size_t>(std::ranges::find_if_not(text, isSpace<char16_t>) - text.begin()));
    if (text.starts_with(u"0x") || text.starts_with(u"0X")) {
        text.remove_prefix(2);
    }
    int value = 0;
    for (const char16_t character : text) {
        const int digit = hexadecimalDigit(character);
        if (digit < 0) {
            break;
        }
        value = value * 16 + digit;
    }
    return value;
}

} // namespace

Ref<NSString> StringUtil::FindIfMatch_withPattern(const char* text, const char* pattern)
{
    return cToObjcString(Matcher(text, pattern, false).match().c_str());
}

bool StringUtil::IsMatch_withPattern(const char* text, const char* pattern)
{
    return Matcher(text, pattern, true).matches();
}

bool StringUtil::IsSimpleEmailFormat(const char* text)
{
    const std::string_view subject(orEmpty(text));
    bool sign = false; // a usable at sign stands directly before
    bool name = false; // one stands further left, with no full stop since
    for (std::size_t index = 0; index < subject.size(); ++index) {
        if (subject[index] == '.') {
            const char next = index + 1 < subject.size() ? subject[index + 1] : '\n';
            if (name && next != '\n' && next != '\r') {
                return true;
            }
            sign = name = false;
        } else {
            name = name || sign;
            sign = subject[index] == '@' && index > 0 && subject[index - 1] != '@';
        }
    }
    return false;
}

Ref<NSString> StringUtil::NilToEmpty(NSString* text)
{
    return text == nullptr ? cToObjcString("") : Ref(text);
}

Ref<NSArray<NSNumber>> StringUtil::GetHexRGB(NSString* text)
{
    constexpr std::size_t kUnitsOfComponent = 2;
    constexpr std::size_t kComponents = 3;
    const std::u16string_view digits = text == nullptr ? std::u16string_view() : text->characters();
    if (digits.size() < kComponents * kUnitsOfComponent) {
        diagnose("GetHexRGB", "the text has fewer than six digits");
    }
    std::vector<Ref<NSNumber>> numbers;
    for (std::size_t component = 0; component < kComponents; ++component) {
        const std::size_t start = std::min(component * kUnitsOfComponent, digits.size());
        numbers.push_back(NSNumber::numberWithInteger(scanHexInt(digits.substr(start, kUnitsOfComponent))));
    }
    return NSArray<NSNumber>::arrayWithObjects(std::move(numbers));
}

Ref<NSAttributedString> StringUtil::getTitleAttributeString_withFont_withColor_withUnderline(NSString* text,
                                                                                             NSFont* font,
                                                                                             NSColor* color,
                                                                                             bool underline)
{
    if (text == nullptr) {
        return nullptr;
    }
    NSAttributes attributes{{NSForegroundColorAttributeName, Ref(color)}, {NSFontAttributeName, Ref(font)}};
    if (underline) {
        attributes.set({NSUnderlineStyleAttributeName, NSNumber::numberWithInteger(NSUnderlineStyleSingle)});
    }
    Ref<NSMutableAttributedString> title = make<NSMutableAttributedString>();
    title->initWithString_attributes(text, attributes);
    return title;
}

bool StringUtil::IsAndroidVersionAboveKitkat(const char* version)
{
    return CompareVersion_withSecond(version, kKitkat) >= 0;
}

int StringUtil::CompareVersion_withSecond(const char* first, const char* second)
{
    std::string_view firstRest(orEmpty(first));
    std::string_view secondRest(orEmpty(second));
    bool firstHasMore = true;
    bool secondHasMore = true;
    while (firstHasMore) {
        const int a = intValue(takeComponent(firstRest, firstHasMore));
        if (!secondHasMore) {
            return a == 0 ? 0 : (a > 0 ? 1 : -1);
        }
        const int b = intValue(takeComponent(secondRest, secondHasMore));
        if (a != b) {
            return a > b ? 1 : -1;
        }
    }
    return 0;
}

Ref<NSString> StringUtil::sanitizeFileNameString(NSString* text)
{
    if (text == nullptr) {
        return nullptr;
    }
    std::u16string name(text->characters());
    std::ranges::replace_if(
        name,
        [](char16_t character) { return kForbiddenInFileNames.find(character) != std::u16string_view::npos; },
        kFileNameReplacement);
    return NSString::stringWithCharacters(name);
}

float StringUtil::mmToPoint(float millimetres)
{
    return static_cast<float>(std::floor(static_cast<double>(millimetres) * kPointsPerMillimetre + 0.5));
}

Ref<NSString> StringUtil::cToObjcString(const char* text)
{
    return NSString::stringWithUTF8String(orEmpty(text));
}

bool StringUtil::isStrNullOrEmpty(const char* text)
{
    return text == nullptr || *text == '\0';
}

Ref<NSString> StringUtil::CustomLocalizedString_withTable(NSString* key, NSString* /*table*/)
{
    const Ref<NSObject> folder =
        NSUserDefaults::standardUserDefaults()->objectForKey(cToObjcString(kLanguageKey).get());
    const Ref<NSString> path = NSBundle::mainBundle()->pathForResource_ofType(
        dynamic_cast<NSString*>(folder.get()), cToObjcString(kLanguageFolderExtension).get());
    const Ref<NSBundle> bundle = NSBundle::bundleWithPath(path.get());
    return bundle ? bundle->localizedStringForKey_value_table(key, cToObjcString("").get(), nullptr)
                  : NilToEmpty(key);
}

std::vector<std::string> StringUtil::split_withPattern(std::string text, std::string delimiter)
{
    if (delimiter.empty()) {
        return {std::move(text)};
    }
    text += delimiter;
    std::vector<std::string> pieces;
    std::size_t start = 0;
    for (std::size_t end = text.find(delimiter); end != std::string::npos;
         end = text.find(delimiter, start)) {
        pieces.push_back(text.substr(start, end - start));
        start = end + delimiter.size();
    }
    return pieces;
}

Ref<NSString> StringUtil::SpliteString(NSString* path)
{
    if (path == nullptr) {
        return nullptr;
    }
    const std::u16string_view characters = path->characters();
    return NSString::stringWithCharacters(characters.substr(characters.rfind(u'/') + 1));
}
