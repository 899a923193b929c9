#pragma once

#include "picture_sheet/Scenes.h"
#include "platform/appkit/NSView.h"
#include "platform/foundation/ClassTable.h"

/// A control in one of the looks that the pictures show.
template <class T> Ref<T> shown(const char* name)
{
    const Ref<NSView> view = look(T::table.name, name);
    auto* const control = dynamic_cast<T*>(view.get());
    return {control};
}
