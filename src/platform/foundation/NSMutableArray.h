#pragma once

#include "platform/foundation/NSObject.h"

#include <utility>
#include <vector>

/// Reports an index behind the end of a list, in one line on standard error.
TESSALINE_EXPORT void reportIndexBehindEnd(std::size_t index, std::size_t count);

/// A list of objects, none of them null, that can be changed. It keeps its objects alive, each as often as it
/// holds it. Objects that are destroyed by their removal find the list without them.
template <class T> class TESSALINE_EXPORT NSMutableArray final : public NSObject
{
public:
    std::size_t count() const { return _objects.size(); }

    /// Null behind the end, which is reported.
    Ref<T> objectAtIndex(std::size_t index) const
    {
        if (index >= _objects.size()) {
            reportIndexBehindEnd(index, _objects.size());
            return nullptr;
        }
        return _objects[index];
    }

    /// At the end; null is not added.
    void addObject(Ref<T> object)
    {
        if (object) {
            _objects.push_back(std::move(object));
        }
    }

    void removeAllObjects() { const std::vector<Ref<T>> removed = std::exchange(_objects, {}); }

    /// Removes all entries that are this object itself, however many.
    void removeObjectIdenticalTo(Ref<T> object) { std::erase(_objects, object); }

    auto begin() const { return _objects.begin(); }
    auto end() const { return _objects.end(); }

private:
    std::vector<Ref<T>> _objects;
};
