#include "DropArea.h"

#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSArray.h>

constinit const ClassTable DropArea::table{"DropArea", &DragDropView::table, {}, {}, makeObject<DropArea>};

bool DropArea::prepareForDragOperation(NSDraggingInfo* drag)
{
    const auto paths = drag->draggingPasteboard()->propertyListForType(NSFilenamesPboardType);
    const Ref<NSObject> taking = delegate();
    if (auto* files = dynamic_cast<DragDropViewDeletegate*>(taking.get()); files != nullptr && paths) {
        files->dragDropViewFileList(paths.get());
    }
    return true;
}

bool DropArea::performDragOperation(NSDraggingInfo* /*drag*/)
{
    return true;
}
