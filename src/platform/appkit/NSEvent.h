#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/Weak.h"

class NSString;
class NSWindow;

enum class NSEventType : unsigned long {
    LeftMouseDown = 1,
    LeftMouseUp = 2,
    RightMouseDown = 3,
    LeftMouseDragged = 6,
    MouseEntered = 8,
    MouseExited = 9,
    KeyDown = 10,
};

/// Something the pointer or the keyboard did; immutable.
class TESSALINE_EXPORT NSEvent final : public NSObject
{
public:
    /// `location` is in the window's coordinates (origin bottom-left of its content). `window` is not
    /// retained and may be null.
    static Ref<NSEvent> mouseEventWithType_location_window(NSEventType type, NSPoint location,
                                                           NSWindow* window);

    /// `characters` is what the key types, empty for a key that types nothing. `window` is not retained and
    /// may be null.
    static Ref<NSEvent> keyEventWithType_characters_isARepeat_window(NSEventType type,
                                                                     Ref<NSString> characters, bool isARepeat,
                                                                     NSWindow* window);

    NSEventType type() const { return _type; }
    /// The origin for keys.
    NSPoint locationInWindow() const { return _location; }
    /// Null if the event belongs to no window, or the window is gone.
    Ref<NSWindow> window() const;

    /// Null unless this is about a key.
    Ref<NSString> characters() const;
    /// Whether the key sends this again because it is held down.
    bool isARepeat() const { return _repeat; }

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    NSEvent(NSEventType type, NSPoint location, NSWindow* window);
    NSEvent(NSEventType type, Ref<NSString> characters, bool isARepeat, NSWindow* window);
    ~NSEvent() override;

    NSEventType _type;
    NSPoint _location;
    Weak<NSWindow> _window;
    Ref<NSString> _characters;
    bool _repeat = false;
};
