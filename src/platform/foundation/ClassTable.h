#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSObject.h"

#include <concepts>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

/// One property that can be reached by name.
struct PropertyEntry {
    std::string_view name;
    Ref<NSObject> (*get)(const NSObject& object);
    /// False, and nothing changed, if the value is not of the property's type.
    bool (*set)(NSObject& object, NSObject* value);
    /// Whether the property's type is `NSObject`: an object with a part to play, of whatever class.
    bool takesAnyObject = false;
};

/// One method that can be called by selector.
struct SelectorEntry {
    std::string_view name;
    void (*perform)(NSObject& object, NSObject* argument);
};

/// Describes a class: constant data, written beside the class's methods and found through
/// `NSObject::classTable`. Look-ups go on to the base's table.
struct TESSALINE_EXPORT ClassTable {
    std::string_view name;
    const ClassTable* base;
    std::span<const PropertyEntry> properties;
    std::span<const SelectorEntry> selectors;
    /// Makes an object in its allocated state; null for classes that interface files do not name.
    Ref<NSObject> (*factory)() = nullptr;

    const PropertyEntry* findProperty(std::string_view key) const;
    const SelectorEntry* findSelector(SEL selector) const;
};

/// Converts between a property's type and the object that stands for it by name.
template <class T> struct Boxing;

template <class T> struct Boxing<Ref<T>> {
    static Ref<NSObject> box(Ref<T> value) { return value; }
    static std::optional<Ref<T>> unbox(NSObject* value)
    {
        auto* object = dynamic_cast<T*>(value);
        if (value != nullptr && object == nullptr) {
            return std::nullopt;
        }
        return Ref<T>(object);
    }
};

template <std::integral T> struct Boxing<T> {
    static Ref<NSObject> box(T value) { return NSNumber::numberWithInteger(value); }
    static std::optional<T> unbox(NSObject* value)
    {
        const auto* number = dynamic_cast<NSNumber*>(value);
        if (number == nullptr || !number->isInteger() || !std::in_range<T>(number->integerValue())) {
            return std::nullopt;
        }
        return static_cast<T>(number->integerValue());
    }
};

template <> struct Boxing<bool> {
    static Ref<NSObject> box(bool value) { return NSNumber::numberWithInteger(value ? 1 : 0); }
    static std::optional<bool> unbox(NSObject* value)
    {
        const auto number = Boxing<int>::unbox(value);
        return number ? std::optional(*number != 0) : std::nullopt;
    }
};

template <> struct Boxing<double> {
    static Ref<NSObject> box(double value) { return NSNumber::numberWithDouble(value); }
    static std::optional<double> unbox(NSObject* value)
    {
        const auto* number = dynamic_cast<NSNumber*>(value);
        return number == nullptr ? std::nullopt : std::optional(number->doubleValue());
    }
};

namespace class_table_detail
{

template <auto Getter, auto Setter> struct Property;

/// The setter takes what the getter answers, or, to keep a weak reference, borrows the object.
template <class GetterClass, class SetterClass, class T, class Argument, T (GetterClass::*Getter)() const,
          void (SetterClass::*Setter)(Argument)>
requires std::same_as<Argument, T> || std::same_as<Ref<std::remove_pointer_t<Argument>>, T>
struct Property<Getter, Setter> {
    static constexpr bool kTakesAnyObject = std::same_as<T, Ref<NSObject>>;

    static Ref<NSObject> get(const NSObject& object)
    {
        return Boxing<T>::box((static_cast<const GetterClass&>(object).*Getter)());
    }
    static bool set(NSObject& object, NSObject* value)
    {
        auto unboxed = Boxing<T>::unbox(value);
        if (!unboxed) {
            return false;
        }
        if constexpr (std::is_pointer_v<Argument>) {
            (static_cast<SetterClass&>(object).*Setter)(unboxed->get());
        } else {
            (static_cast<SetterClass&>(object).*Setter)(std::move(*unboxed));
        }
        return true;
    }
};

template <auto Member> struct Outlet;

template <class Class, class T, T Class::*Member> struct Outlet<Member> {
    static constexpr bool kTakesAnyObject = std::same_as<T, Ref<NSObject>>;

    static Ref<NSObject> get(const NSObject& object)
    {
        return Boxing<T>::box(static_cast<const Class&>(object).*Member);
    }
    static bool set(NSObject& object, NSObject* value)
    {
        auto unboxed = Boxing<T>::unbox(value);
        if (unboxed) {
            static_cast<Class&>(object).*Member = std::move(*unboxed);
        }
        return unboxed.has_value();
    }
};

template <auto Method> struct Selector;

template <class Class, void (Class::*Method)()> struct Selector<Method> {
    static void perform(NSObject& object, NSObject* /*argument*/) { (static_cast<Class&>(object).*Method)(); }
};

template <class Class, void (Class::*Method)(NSObject*)> struct Selector<Method> {
    static void perform(NSObject& object, NSObject* argument)
    {
        (static_cast<Class&>(object).*Method)(argument);
    }
};

} // namespace class_table_detail

/// An entry for the property read by `Getter` and written by `Setter`, both member functions.
template <auto Getter, auto Setter> constexpr PropertyEntry property(std::string_view name)
{
    using Access = class_table_detail::Property<Getter, Setter>;
    return {name, &Access::get, &Access::set, Access::kTakesAnyObject};
}

/// An entry for the data member `Member`, which an interface file sets: an outlet of the application's.
template <auto Member> constexpr PropertyEntry outlet(std::string_view name)
{
    using Access = class_table_detail::Outlet<Member>;
    return {name, &Access::get, &Access::set, Access::kTakesAnyObject};
}

/// An entry for `Method`, a member function without result that takes nothing or an `NSObject*`.
template <auto Method> constexpr SelectorEntry selector(std::string_view name)
{
    return {name, &class_table_detail::Selector<Method>::perform};
}

/// The factory of a class that needs no arguments.
template <class T> Ref<NSObject> makeObject()
{
    return make<T>();
}
