#include "DropArea.h"

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
