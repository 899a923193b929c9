#include "platform/appkit/NSWorkspace.h"

#include "platform/foundation/NSURL.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/OfApplication.h"

#include <QDesktopServices>
#include <QUrl>

Ref<NSWorkspace> NSWorkspace::sharedWorkspace()
{
    auto& shared = ofApplication<Ref<NSWorkspace>>();
    if (!shared) {
        shared = make<NSWorkspace>();
    }
    return shared;
}

void NSWorkspace::setSharedWorkspace(Ref<NSWorkspace> workspace)
{
    std::swap(ofApplication<Ref<NSWorkspace>>(), workspace); // the one before may end only then
}

bool NSWorkspace::openURL(NSURL* url)
{
    return url != nullptr && QDesktopServices::openUrl(toQt(*url));
}
