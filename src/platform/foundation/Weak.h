#pragma once

#include "platform/foundation/NSObject.h"

#include <mutex>

/// What all weak references to one object share. It outlives the object and then answers null.
class TESSALINE_EXPORT WeakLink
{
public:
    /// The link of `object`, made on first use, with a reference for the caller.
    static WeakLink* of(const NSObject& object);

    /// The object, or null if it is gone or going.
    Ref<NSObject> object();

    void retain();
    void release();

private:
    friend class NSObject;

    explicit WeakLink(const NSObject* object);
    void clear();

    /// The link of all objects that are being destroyed, so that a weak reference which an object makes
    /// to itself in its destructor is null too.
    static WeakLink* ofTheDead();

    std::mutex _mutex;
    NSObject* _object;                         // guarded by _mutex
    std::atomic<std::int64_t> _retainCount{2}; // the object's and the caller's
};

/// A reference that does not keep its object alive and becomes null when it dies. `get` answers a strong
/// reference, so that the object stays while it is used.
template <class T> class Weak
{
public:
    Weak() = default;
    Weak(T* object)
    {
        if (object != nullptr) {
            _link = Ref<WeakLink>::adopt(WeakLink::of(*object));
        }
    }
    Weak(const Ref<T>& object) : Weak(object.get()) {}

    Ref<T> get() const
    {
        if (!_link) {
            return nullptr;
        }
        return Ref<T>::adopt(static_cast<T*>(_link->object().leak()));
    }

private:
    Ref<WeakLink> _link;
};
