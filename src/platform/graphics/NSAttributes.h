#pragma once

#include "platform/foundation/NSObject.h"

#include <array>
#include <initializer_list>

class NSColor;
class NSFont;

/// The key of a text attribute whose value is a `T`.
template <class T> struct NSAttributeKey {
    std::size_t index;
};

inline constexpr NSAttributeKey<NSFont> NSFontAttributeName{0};
inline constexpr NSAttributeKey<NSColor> NSForegroundColorAttributeName{1};

/// Text attributes: values by key, which keep their objects alive. Text without a font is set in
/// "Arial" 12.0, without a colour in black.
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
            _values[entry.index] = entry.value;
        }
    }

    /// The value of an attribute, or null; borrowed from this object.
    template <class T> T* operator[](NSAttributeKey<T> key) const
    {
        return static_cast<T*>(_values[key.index].get());
    }

private:
    static constexpr std::size_t kKeys = 2;
    std::array<Ref<NSObject>, kKeys> _values;
};
