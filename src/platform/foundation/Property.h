#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/Ref.h"

#include <atomic>
#include <mutex>
#include <type_traits>

/// Properties that can be read and written from several threads at once: each read yields a value that
/// was written as a whole. The type tells how the value is stored.

/// A number or flag.
template <class T> class PlainProperty
{
public:
    PlainProperty() = default;
    explicit PlainProperty(T value) : _value(value) {}

    T get() const { return _value.load(std::memory_order_relaxed); }
    void set(T value) { _value.store(value, std::memory_order_relaxed); }

private:
    static_assert(std::atomic<T>::is_always_lock_free);
    std::atomic<T> _value{};
};

/// The lock that guards the property at an address; properties share a fixed number of locks.
TESSALINE_EXPORT std::mutex& lockOfProperty(const void* property);

/// A value of several parts, a point for instance. Initially as its type has it.
template <class T> class StructProperty
{
public:
    T get() const
    {
        const std::scoped_lock lock(lockOfProperty(this));
        return _value;
    }

    void set(T value)
    {
        const std::scoped_lock lock(lockOfProperty(this));
        _value = value;
    }

private:
    static_assert(std::is_trivially_copyable_v<T>); // nothing of the value's own happens under the lock
    T _value{};
};

/// An object that is kept alive. Initially null.
template <class T> class RetainProperty
{
public:
    RetainProperty() = default;
    RetainProperty(const RetainProperty& other) : _value(other.get()) {}
    RetainProperty& operator=(const RetainProperty&) = delete;

    Ref<T> get() const
    {
        const std::scoped_lock lock(lockOfProperty(this));
        return _value;
    }

    void set(Ref<T> value)
    {
        // The old value is released by the parameter, after the lock: its destructor may do anything.
        const std::scoped_lock lock(lockOfProperty(this));
        std::swap(_value, value);
    }

private:
    Ref<T> _value;
};

/// An object of which a copy is kept, so that later changes to the original do not show. Initially null.
template <class T> class CopyProperty
{
public:
    Ref<T> get() const { return _value.get(); }
    void set(const Ref<T>& value) { _value.set(value ? value->copy() : nullptr); }

private:
    RetainProperty<T> _value;
};
