#include "platform/foundation/NSObject.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/Weak.h"

#include <algorithm>
#include <string>

constinit const ClassTable NSObject::table{"NSObject", nullptr, {}, {}};

NSObject::~NSObject() = default;

void NSObject::retain() const
{
    _retainCount.fetch_add(1, std::memory_order_relaxed);
}

bool NSObject::retainIfAlive() const
{
    std::int64_t count = _retainCount.load(std::memory_order_relaxed);
    while (count > 0) {
        if (_retainCount.compare_exchange_weak(count, count + 1, std::memory_order_relaxed)) {
            return true;
        }
    }
    return false;
}

void NSObject::release() const
{
    if (_retainCount.fetch_sub(1, std::memory_order_acq_rel) != 1) {
        return;
    }
    if (WeakLink* link = _weakLink.exchange(WeakLink::ofTheDead(), std::memory_order_acq_rel)) {
        link->clear();
        link->release();
    }
    // The destructor may hand out references to this object (removing it from a list, say): they must
    // not bring the count back to zero.
    constexpr std::int64_t kInDestruction = std::int64_t{1} << 32;
    _retainCount.store(kInDestruction, std::memory_order_relaxed);
    delete this;
}

const ClassTable& NSObject::classTable() const
{
    return table;
}

bool NSObject::respondsToSelector(SEL selector) const
{
    return classTable().findSelector(selector) != nullptr;
}

bool NSObject::performSelector_withObject(SEL selector, NSObject* argument)
{
    const SelectorEntry* entry = classTable().findSelector(selector);
    if (entry == nullptr) {
        diagnose("performSelector", std::string(classTable().name) + " does not respond to \"" +
                                        std::string(selector.name) + '"');
        return false;
    }
    const Ref<NSObject> self(this);
    entry->perform(*this, argument);
    return true;
}

bool NSObject::setValue_forKey(NSObject* value, std::string_view key)
{
    const PropertyEntry* entry = classTable().findProperty(key);
    return entry != nullptr && entry->set(*this, value);
}

Ref<NSObject> NSObject::valueForKey(std::string_view key) const
{
    const PropertyEntry* entry = classTable().findProperty(key);
    return entry == nullptr ? nullptr : entry->get(*this);
}

bool NSObject::isEqual(const NSObject* other) const
{
    return this == other;
}

namespace
{

template <class Entry>
const Entry* findEntry(const ClassTable* table, std::span<const Entry> ClassTable::*entries,
                       std::string_view name)
{
    for (; table != nullptr; table = table->base) {
        const std::span<const Entry> own = table->*entries;
        const auto found = std::ranges::find(own, name, &Entry::name);
        if (found != own.end()) {
            return &*found;
        }
    }
    return nullptr;
}

} // namespace

const PropertyEntry* ClassTable::findProperty(std::string_view key) const
{
    return findEntry(this, &ClassTable::properties, key);
}

const SelectorEntry* ClassTable::findSelector(SEL selector) const
{
    return findEntry(this, &ClassTable::selectors, selector.name);
}

WeakLink::WeakLink(const NSObject* object) : _object(const_cast<NSObject*>(object)) {}

WeakLink* WeakLink::ofTheDead()
{
    static auto* link = new WeakLink(nullptr);
    return link;
}

WeakLink* WeakLink::of(const NSObject& object)
{
    WeakLink* link = object._weakLink.load(std::memory_order_acquire);
    if (link == nullptr) {
        auto* made = new WeakLink(&object);
        if (object._weakLink.compare_exchange_strong(link, made, std::memory_order_acq_rel)) {
            return made;
        }
        delete made;
    }
    link->retain();
    return link;
}

Ref<NSObject> WeakLink::object()
{
    const std::scoped_lock lock(_mutex);
    if (_object == nullptr || !_object->retainIfAlive()) {
        return nullptr;
    }
    return Ref<NSObject>::adopt(_object);
}

void WeakLink::clear()
{
    const std::scoped_lock lock(_mutex);
    _object = nullptr;
}

void WeakLink::retain()
{
    _retainCount.fetch_add(1, std::memory_order_relaxed);
}

void WeakLink::release()
{
    if (_retainCount.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete this;
    }
}
