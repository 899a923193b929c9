#pragma once

#include "platform/foundation/NSObject.h"

#include <array>
#include <initializer_list>

class NSColor;
class NSFont;
class NSNumber;
class NSParagraphStyle;

/// The key of a text attribute whose value is a `T`.
template <class T> struct NSAttributeKey {
    std::size_t index;
};

inline constexpr NSAttributeKey<NSFont> NSFontAttributeName{0};
inline constexpr NSAttributeKey<NSColor> NSForegroundColorAttributeName{1};
/// One of the `NSUnderlineStyle` numbers.
inline constexpr NSAttributeKey<NSNumber> NSUnderlineStyleAttributeName{2};
/// A paragraph takes the style of its first character.
inline constexpr NSAttributeKey<NSParagraphStyle> NSParagraphStyleAttributeName{3};
/// What the text links to: an `NSURL`, or an `NSString` that holds one.
inline constexpr NSAttributeKey<NSObject> NSLinkAttributeName{4};

inline constexpr int NSUnderlineStyleNone = 0;
inline constexpr int NSUnderlineStyleSingle = 1;

/// Text attributes: values by key, which keep their objects alive. Text without a font is set in
/// "Arial" 12.0, without a colour in black, without a paragraph style in natural alignment.
class TESSALINE_EXPORT NSAttributes
{
public:
    struct Entry {
        template <class T>
        Entry(NSAttributeKey<T> key, Ref<T> object) : index(key.index), value(std::move(object))
        {
        }

        std::size_t index;
        Ref<NSObject> value;
    };

    NSAttributes() = default;
    NSAttributes(std::initializer_list<Entry> entries)
    {
        for (const Entry& entry : entries) {
            set(entry);
        }
    }

    /// The value of an attribute, or null; borrowed from this object.
    template <class T> T* operator[](NSAttributeKey<T> key) const
    {
        return static_cast<T*>(_values[key.index].get());
    }

    /// The same by the key's index.
    NSObject* valueAt(std::size_t index) const { return _values[index].get(); }

    /// Sets an attribute; null takes it away.
    void set(const Entry& entry) { _values[entry.index] = entry.value; }
    /// Sets an attribute unless there is one with that key.
    void setMissing(const Entry& entry)
    {
        if (!_values[entry.index]) {
            set(entry);
        }
    }

    /// Whether both have the same attributes with equal values.
    bool operator==(const NSAttributes& other) const;

private:
    static constexpr std::size_t kKeys = 5;
    std::array<Ref<NSObject>, kKeys> _values;
};
