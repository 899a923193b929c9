#pragma once

#include "platform/foundation/NSObject.h"

/// How the pointer shows where it is not an arrow; immutable. There is one object of each kind.
class TESSALINE_EXPORT NSCursor final : public NSObject
{
public:
    // Null where there is no application (`NSApplication`), and so no desktop that has cursors.

    static Ref<NSCursor> IBeamCursor();
    static Ref<NSCursor> pointingHandCursor();

    enum class Shape { IBeam, PointingHand };
    Shape shape() const { return _shape; }

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    explicit NSCursor(Shape shape) : _shape(shape) {}

    template <Shape shape> static Ref<NSCursor> cursor();

    Shape _shape;
};
