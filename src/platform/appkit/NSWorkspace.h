#pragma once

#include "platform/foundation/NSObject.h"

class NSURL;

/// The desktop around the application: opens what belongs to other programs. Belongs to the user-interface
/// thread.
class TESSALINE_EXPORT NSWorkspace : public NSObject
{
public:
    static Ref<NSWorkspace> sharedWorkspace();
    /// What `sharedWorkspace` answers from now on until the application ends, so that an application can open
    /// links by itself; null for the desktop's own.
    static void setSharedWorkspace(Ref<NSWorkspace> workspace);

    /// Opens the URL with the program that the user has chosen for its kind. False if there is none, the
    /// desktop could not be asked, or the URL is null. An application (`NSApplication`) has to exist.
    virtual bool openURL(NSURL* url);
};
