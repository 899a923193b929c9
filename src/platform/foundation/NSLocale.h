#pragma once

#include "platform/foundation/NSObject.h"

class NSString;

/// A language and a region with their customs, by identifier; immutable.
class TESSALINE_EXPORT NSLocale final : public NSObject
{
public:
    /// The locale that the environment asks for at the time of the call: the first of LC_ALL, LC_TIME and
    /// LANG that is not empty. None, "C" and "POSIX" are "en_US_POSIX".
    static Ref<NSLocale> currentLocale();

    /// Such as "de_DE": language, script if that is not the usual one, and region.
    Ref<NSString> localeIdentifier() const;

    /// Whether both have the same identifier.
    bool isEqual(const NSObject* other) const override;

protected:
    ~NSLocale() override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSLocale(Ref<NSString> identifier);

    Ref<NSString> _identifier;
};
