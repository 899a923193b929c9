#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/foundation/NSRange.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

/// Reports an index behind the end of a list, in one line on standard error.
TESSALINE_EXPORT void reportIndexBehindEnd(const char* operation, std::size_t index, std::size_t count);

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
            reportIndexBehindEnd("objectAtIndex", index, _objects.size());
            return nullptr;
        }
        return _objects[index];
    }

    /// The place of the first entry that is equal to the object (`isEqual`); `NSNotFound` if there is none.
    std::size_t indexOfObject(const T* object) const
    {
        const auto found = std::ranges::find_if(
            _objects, [&](const Ref<T>& entry) { return object != nullptr && entry->isEqual(object); });
        return found != _objects.end() ? static_cast<std::size_t>(found - _objects.begin()) : NSNotFound;
    }

    /// At the end; null is not added.
    void addObject(Ref<T> object)
    {
        if (object) {
            _objects.push_back(std::move(object));
        }
    }

    // At an index: one behind the end is reported, and nothing happens, as for null.

    /// Before the object at the index; the end counts as one, too.
    void insertObject_atIndex(Ref<T> object, std::size_t index)
    {
        if (index > _objects.size()) {
            reportIndexBehindEnd("insertObject", index, _objects.size());
        } else if (object) {
            _objects.insert(_objects.begin() + static_cast<std::ptrdiff_t>(index), std::move(object));
        }
    }

    void replaceObjectAtIndex_withObject(std::size_t index, Ref<T> object)
    {
        if (index >= _objects.size()) {
            reportIndexBehindEnd("replaceObjectAtIndex", index, _objects.size());
        } else if (object) {
            std::swap(_objects[index], object); // the old one goes when the new one is in its place
        }
    }

    void removeObjectAtIndex(std::size_t index)
    {
        if (index >= _objects.size()) {
            reportIndexBehindEnd("removeObjectAtIndex", index, _objects.size());
            return;
        }
        const Ref<T> removed = std::move(_objects[index]);
        _objects.erase(_objects.begin() + static_cast<std::ptrdiff_t>(index));
    }

    void removeAllObjects() { const std::vector<Ref<T>> removed = std::exchange(_objects, {}); }

    /// Removes all entries that are this object itself, however many.
    void removeObjectIdenticalTo(Ref<T> object) { std::erase(_objects, object); }

    auto begin() const { return _objects.begin(); }
    auto end() const { return _objects.end(); }

private:
    std::vector<Ref<T>> _objects;
};
