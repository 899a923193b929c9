#pragma once

#include "platform/foundation/NSObject.h"

#include <utility>
#include <vector>

/// An immutable list of objects, none of them null, which it keeps alive.
template <class T> class TESSALINE_EXPORT NSArray final : public NSObject
{
public:
    /// Null references among the objects are left out.
    static Ref<NSArray> arrayWithObjects(std::vector<Ref<T>> objects)
    {
        std::erase(objects, nullptr);
        return make<NSArray>(std::move(objects));
    }

    std::size_t count() const { return _objects.size(); }

    /// Null behind the end.
    Ref<T> objectAtIndex(std::size_t index) const
    {
        return index < _objects.size() ? _objects[index] : nullptr;
    }

    auto begin() const { return _objects.begin(); }
    auto end() const { return _objects.end(); }

private:
    template <class U, class... Arguments> friend Ref<U> make(Arguments&&... arguments);
    explicit NSArray(std::vector<Ref<T>> objects) : _objects(std::move(objects)) {}

    std::vector<Ref<T>> _objects;
};
