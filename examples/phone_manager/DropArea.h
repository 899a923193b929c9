#pragma once

#include <Tessaline.h>

/// Takes folders as well as files.
class DropArea final : public DragDropView
{
public:
    bool prepareForDragOperation(NSDraggingInfo* drag) override;
    bool performDragOperation(NSDraggingInfo* /*drag*/) override { return true; }

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;
};
