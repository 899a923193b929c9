#include "platform/appkit/NSEvent.h"

#include "platform/appkit/NSWindow.h"

NSEvent::NSEvent(NSEventType type, NSPoint location, NSWindow* window)
    : _type(type), _location(location), _window(window)
{
}

Ref<NSEvent> NSEvent::mouseEventWithType_location_window(NSEventType type, NSPoint location, NSWindow* window)
{
    return make<NSEvent>(type, location, window);
}

Ref<NSWindow> NSEvent::window() const
{
    return _window.get();
}
