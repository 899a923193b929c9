#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/Ref.h"

#include <atomic>
#include <cstdint>
#include <string_view>

struct ClassTable;
class WeakLink;

/// Names a method of an object, as `SEL{"setCheckItem:"}`: one colon for each argument. The text must
/// outlive the selector, which a literal does. An empty name designates no method.
struct SEL {
    std::string_view name;

    bool operator==(const SEL&) const = default;
};

/// The root of all reference-counted objects. The count starts at 1 and belongs to the creator (`make`);
/// counting is safe from any thread, everything else is up to the class. An object destroys itself when
/// its last reference goes; its `Weak` references are null from then on, even in its destructor.
class TESSALINE_EXPORT NSObject
{
public:
    NSObject() = default;
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;

    void retain() const;
    void release() const;

    /// Describes the class: its name, its base and what can be reached by name. A class with properties
    /// or selectors of its own overrides this to return its table.
    virtual const ClassTable& classTable() const;
    static const ClassTable table;

    /// Whether the object's class, or a base of it, lists the selector.
    bool respondsToSelector(SEL selector) const;

    /// Calls the method that `selector` names, with `argument` (borrowed, may be null) unless it takes
    /// none. Returns false, with a line on standard error, if the object has no such method.
    bool performSelector_withObject(SEL selector, NSObject* argument);

    /// Does that from the event loop after so many seconds (at most 24 days), or with its next turn for 0,
    /// less and no number; messages of the same delay come in the order in which they were asked for. Object
    /// and argument are kept alive until then. To be called on the user-interface thread. While no loop
    /// runs, the message waits, and it is dropped when the application ends; where there is no application,
    /// that is reported and nothing happens.
    void performSelector_withObject_afterDelay(SEL selector, NSObject* argument, double seconds);

    /// Sets a property by name. Numbers are handed over as `NSNumber`. Returns false, and changes
    /// nothing, if there is no such property or the value is not of its type; null fits object
    /// properties only.
    bool setValue_forKey(NSObject* value, std::string_view key);

    /// The value of the property named `key`, numbers as `NSNumber`; null if there is none.
    Ref<NSObject> valueForKey(std::string_view key) const;

    /// Whether both stand for the same value; for most classes, whether both are the same object.
    virtual bool isEqual(const NSObject* other) const;

protected:
    virtual ~NSObject();

private:
    friend class WeakLink;

    bool retainIfAlive() const;

    mutable std::atomic<std::int64_t> _retainCount{1};
    mutable std::atomic<WeakLink*> _weakLink{nullptr};
};
