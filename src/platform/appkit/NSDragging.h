#pragma once

#include "platform/appkit/NSPasteboard.h"
#include "platform/foundation/NSGeometry.h"

/// What becomes of something that is dropped: nothing, or a copy is taken.
using NSDragOperation = unsigned long;
inline constexpr NSDragOperation NSDragOperationNone = 0;
inline constexpr NSDragOperation NSDragOperationCopy = 1;

/// A drag over a view, at one of its places; immutable.
class TESSALINE_EXPORT NSDraggingInfo final : public NSObject
{
public:
    /// `location` is in the window's coordinates (origin bottom-left of its content).
    NSDraggingInfo(Ref<NSPasteboard> pasteboard, NSPoint location);

    /// What is being dragged; the same object as long as the drag is over the view.
    Ref<NSPasteboard> draggingPasteboard() const { return _pasteboard; }
    NSPoint draggingLocation() const { return _location; }

protected:
    ~NSDraggingInfo() override;

private:
    Ref<NSPasteboard> _pasteboard;
    NSPoint _location;
};
