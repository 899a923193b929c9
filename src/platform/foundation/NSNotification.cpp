#include "platform/foundation/NSNotification.h"

#include "platform/foundation/NSString.h"

NSNotification::NSNotification(Ref<NSString> name, Ref<NSObject> object)
    : _name(std::move(name)), _object(std::move(object))
{
}

NSNotification::~NSNotification() = default;

Ref<NSNotification> NSNotification::notificationWithName_object(std::u16string_view name,
                                                                Ref<NSObject> object)
{
    return make<NSNotification>(NSString::stringWithCharacters(name), std::move(object));
}

Ref<NSString> NSNotification::name() const
{
    return _name;
}
