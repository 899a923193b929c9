#include "platform/appkit/NSDragging.h"

NSDraggingInfo::NSDraggingInfo(Ref<NSPasteboard> pasteboard, NSPoint location)
    : _pasteboard(std::move(pasteboard)), _location(location)
{
}

NSDraggingInfo::~NSDraggingInfo() = default;
