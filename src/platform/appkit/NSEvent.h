#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/Weak.h"

class NSWindow;

enum class NSEventType : unsigned long {
    LeftMouseDown = 1,
    LeftMouseUp = 2,
    LeftMouseDragged = 6,
    MouseEntered = 8,
    MouseExited = 9,
};

/// Something the pointer did; immutable.
class TESSALINE_EXPORT NSEvent final : public NSObject
{
public:
    /// `location` is in the window's coordinates (origin bottom-left of its content). `window` is not
    /// retained and may be null.
    static Ref<NSEvent> mouseEventWithType_location_window(NSEventType type, NSPoint location,
                                                           NSWindow* window);

    NSEventType type() const { return _type; }
    NSPoint locationInWindow() const { return _location; }
    /// Null if the event belongs to no window, or the window is gone.
    Ref<NSWindow> window() const;

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    NSEvent(NSEventType type, NSPoint location, NSWindow* window);

    NSEventType _type;
    NSPoint _location;
    Weak<NSWindow> _window;
};
