#pragma once

#include "platform/foundation/NSArray.h"
#include "platform/foundation/NSString.h"
#include "window/DragDropView.h"

#include <functional>

/// Keeps the files that are dropped.
class FileTaker : public NSObject, public DragDropViewDeletegate
{
public:
    void dragDropViewFileList(NSArray<NSString>* paths) override
    {
        ++calls;
        list = paths;
        if (onFiles) {
            onFiles();
        }
    }

    int calls = 0;
    Ref<NSArray<NSString>> list;
    std::function<void()> onFiles;
};
