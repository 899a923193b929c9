#include "DropArea.h"

#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSArray.h>

constinit const ClassTable DropArea::table{"DropArea", &DragDropView::table, {}, {}, makeObject<DropArea>};

bool DropArea::prepareForDragOperation(NSDraggingInfo* drag)
{
    const auto paths = drag->draggingPasteboard()->propertyListForType(NSFilenamesPboardType);
    auto* const taking = dynamic_cast<DragDropViewDeletegate*>(delegate().get());
    if (paths && taking != nullptr) {
        taking->dragDropViewFileList(paths.get());
    }
    return true;
}

bool DropArea::performDragOperation(NSDraggingInfo* /*drag*/)
{
    return true;
}
