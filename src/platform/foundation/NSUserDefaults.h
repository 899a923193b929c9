#pragma once

#include "platform/foundation/NSObject.h"

#include <functional>
#include <map>
#include <mutex>
#include <string>

class NSString;

/// Values that the user's choices have, by key: texts and numbers, kept in a file from one run of the
/// program to the next. Keys are compared character by character. From any thread.
///
/// Every call reads or writes the file, so what other processes write shows. Lines of a damaged file that
/// are no values count for nothing and go when a value is set. If the file cannot be written, which a line on
/// standard error tells, what is set counts for this domain's object only, and until it is set again.
class TESSALINE_EXPORT NSUserDefaults final : public NSObject
{
public:
    /// The values of the domain that is standard at the time of the call.
    static Ref<NSUserDefaults> standardUserDefaults();

    /// Makes `domain` standard: the name of a file, without its extension, in the user's configuration
    /// folder, or if it begins with a slash the full path of a file. Null is the program's name, which
    /// is the initial domain. Those who hold the values of another keep them.
    static void setStandardDomain(NSString* domain);

    /// Has this object answer with a value, as long as none is kept. Not written. Null takes it back.
    void registerDefault_forKey(Ref<NSObject> object, NSString* key);

    /// An `NSString` or `NSNumber`; null if there is no value, or `key` is null or empty.
    Ref<NSObject> objectForKey(NSString* key) const;

    /// `object` is an `NSString` or `NSNumber`, or null to remove the value. Anything else, and a key that
    /// is null or empty, changes nothing and is named in a line on standard error.
    void setObject_forKey(NSObject* object, NSString* key);
    void removeObjectForKey(NSString* key);

protected:
    ~NSUserDefaults() override;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSUserDefaults(Ref<NSString> path);

    Ref<NSString> _path;
    using Values = std::map<std::u16string, Ref<NSObject>, std::less<>>; // by key
    mutable std::mutex _mutex;
    Values _registered; // guarded by the mutex, as are the next
    Values _unwritten;  // null for those removed
};
