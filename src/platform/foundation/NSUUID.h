#pragma once

#include "platform/foundation/NSObject.h"

class NSString;

/// A universally unique identifier; immutable.
class TESSALINE_EXPORT NSUUID final : public NSObject
{
public:
    /// A new random one (version 4).
    static Ref<NSUUID> UUID();

    /// 36 characters: upper-case hexadecimal digits in groups of 8-4-4-4-12.
    Ref<NSString> UUIDString() const;

    bool isEqual(const NSObject* other) const override;

protected:
    ~NSUUID() override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSUUID(Ref<NSString> text);

    Ref<NSString> _text;
};
