#pragma once

#include "platform/foundation/NSObject.h"

#include <string_view>

class NSString;

/// Says what happened, and to which object; immutable.
class TESSALINE_EXPORT NSNotification final : public NSObject
{
public:
    /// Keeps the object alive; null for none.
    static Ref<NSNotification> notificationWithName_object(std::u16string_view name, Ref<NSObject> object);

    Ref<NSString> name() const;
    Ref<NSObject> object() const { return _object; }

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    NSNotification(Ref<NSString> name, Ref<NSObject> object);
    ~NSNotification() override;

    Ref<NSString> _name;
    Ref<NSObject> _object;
};
