#pragma once

#include <window/DragDropView.h>

/// Takes folders as well as files.
class DropArea final : public DragDropView
{
public:
    bool prepareForDragOperation(NSDraggingInfo* drag) override;
    bool performDragOperation(NSDraggingInfo* drag) override;

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;
};
