#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

/// A strong reference to an object of type `T` (a class derived from `NSObject`): keeps it alive, may be
/// null. One `Ref` is used from one thread at a time; the object it designates may be shared by many.
///
/// Parameters: a function that keeps an object takes `Ref<T>` by value; one that only looks at it during
/// the call takes `T*`.
template <class T> class Ref
{
public:
    Ref() = default;
    Ref(std::nullptr_t) {}

    /// Shares `object`, which may be null.
    Ref(T* object) : _object(object) { retain(); }
    Ref(const Ref& other) : _object(other._object) { retain(); }
    Ref(Ref&& other) noexcept : _object(std::exchange(other._object, nullptr)) {}

    template <class U>
    requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other) : _object(other.get()) { retain(); }
    template <class U>
    requires std::is_convertible_v<U*, T*> Ref(Ref<U>&& other)
    noexcept : _object(other.leak()) {}

    ~Ref()
    {
        if (_object != nullptr) {
            _object->release();
        }
    }

    Ref& operator=(Ref other) noexcept
    {
        std::swap(_object, other._object);
        return *this;
    }

    /// Takes over a reference that the caller owns, without retaining again.
    static Ref adopt(T* object)
    {
        Ref ref;
        ref._object = object;
        return ref;
    }

    /// Gives the reference up to the caller, who then owns it.
    [[nodiscard]] T* leak() { return std::exchange(_object, nullptr); }

    T* get() const { return _object; }
    T* operator->() const { return _object; }
    T& operator*() const { return *_object; }
    explicit operator bool() const { return _object != nullptr; }

    template <class U> bool operator==(const Ref<U>& other) const { return _object == other.get(); }
    template <class U> bool operator==(U* other) const { return _object == other; }
    bool operator==(std::nullptr_t) const { return _object == nullptr; }

private:
    void retain() const
    {
        if (_object != nullptr) {
            _object->retain();
        }
    }

    T* _object = nullptr;
};

/// Creates an object in its allocated state; the returned reference is its first. Set-up follows with
/// one of the object's `init` functions: `Ref<T> object = make<T>()->initWithFrame(frame);`.
template <class T, class... Arguments> Ref<T> make(Arguments&&... arguments)
{
    return Ref<T>::adopt(new T(std::forward<Arguments>(arguments)...));
}
