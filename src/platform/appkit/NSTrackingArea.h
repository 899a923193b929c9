#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/Weak.h"

class NSView;

using NSTrackingAreaOptions = unsigned long;

/// Tell the owner of entry and exit.
inline constexpr NSTrackingAreaOptions NSTrackingMouseEnteredAndExited = 0x01;
/// Only while the window of the view is the key window; when it stops being that, the pointer counts as
/// having left, and when it becomes that with the pointer inside, as having entered.
inline constexpr NSTrackingAreaOptions NSTrackingActiveInKeyWindow = 0x20;

/// A part of a view for which an owner is told when the pointer enters and leaves, through
/// `mouseEntered` and `mouseExited`. While a mouse button that went down in the view is held, the
/// pointer's crossing of the edge is not told; where it ended up is, after the release. Over a subview the
/// pointer counts as where it was last seen.
class TESSALINE_EXPORT NSTrackingArea final : public NSObject
{
public:
    /// `rect` is in the coordinates of the view that the area is added to, and stays as it is when the
    /// view changes. `owner` is not retained. No user information exists.
    NSTrackingArea* initWithRect_options_owner_userInfo(NSRect rect, NSTrackingAreaOptions options,
                                                        NSView* owner, std::nullptr_t userInfo);

    NSRect rect() const { return _rect; }
    NSTrackingAreaOptions options() const { return _options; }
    /// Null if the owner is gone.
    Ref<NSView> owner() const;

private:
    friend class NSView;

    NSRect _rect;
    NSTrackingAreaOptions _options = 0;
    Weak<NSView> _owner;
    bool _entered = false; // what the owner was told last
};
