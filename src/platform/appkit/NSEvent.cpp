#include "platform/appkit/NSEvent.h"

#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSString.h"

NSEvent::NSEvent(NSEventType type, NSPoint location, NSWindow* window)
    : _type(type), _location(location), _window(window)
{
}

NSEvent::NSEvent(NSEventType type, Ref<NSString> characters, bool isARepeat, NSWindow* window)
    : _type(type), _window(window), _characters(std::move(characters)), _repeat(isARepeat)
{
}

NSEvent::~NSEvent() = default;

Ref<NSEvent> NSEvent::mouseEventWithType_location_window(NSEventType type, NSPoint location, NSWindow* window)
{
    return make<NSEvent>(type, location, window);
}

Ref<NSEvent> NSEvent::keyEventWithType_characters_isARepeat_window(NSEventType type, Ref<NSString> characters,
                                                                   bool isARepeat, NSWindow* window)
{
    return make<NSEvent>(type, std::move(characters), isARepeat, window);
}

Ref<NSWindow> NSEvent::window() const
{
    return _window.get();
}

Ref<NSString> NSEvent::characters() const
{
    return _characters;
}
