#include "window/DragDropView.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSString.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace
{

constexpr std::array kProperties{
    property<&DragDropView::filePostfix, &DragDropView::setFilePostfix>("filePostfix"),
    property<&DragDropView::delegate, &DragDropView::setDelegate>("delegate"),
};

/// Null without a drag, and for one without files.
Ref<NSArray<NSString>> pathsOf(const NSDraggingInfo* drag)
{
    const Ref<NSPasteboard> pasteboard = drag != nullptr ? drag->draggingPasteboard() : nullptr;
    return pasteboard ? pasteboard->propertyListForType(NSFilenamesPboardType) : nullptr;
}

bool isFolder(const Ref<NSString>& path)
{
    bool isDirectory = false;
    return NSFileManager::defaultManager()->fileExistsAtPath_isDirectory(path.get(), &isDirectory) &&
           isDirectory;
}

Ref<NSString> extensionOf(const NSString& path)
{
    const std::u16string_view whole = path.characters();
    const std::size_t stop = whole.rfind(u'.');
    return NSString::stringWithCharacters(stop == std::u16string_view::npos ? u"" : whole.substr(stop + 1));
}

} // namespace

constinit const ClassTable DragDropView::table{
    "DragDropView", &NSView::table, kProperties, {}, makeObject<DragDropView>};

const ClassTable& DragDropView::classTable() const
{
    return table;
}

DragDropView::DragDropView()
{
    registerForDraggedTypes({NSFilenamesPboardType});
}

DragDropView::~DragDropView() = default;

DragDropView* DragDropView::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}

void DragDropView::drawRect(NSRect /*rect*/) {}

NSDragOperation DragDropView::draggingEntered(NSDraggingInfo* drag)
{
    NSLog("draggingEntered");
    return pathsOf(drag) ? NSDragOperationCopy : NSDragOperationNone;
}

bool DragDropView::prepareForDragOperation(NSDraggingInfo* drag)
{
    std::vector<Ref<NSString>> files;
    if (const Ref<NSArray<NSString>> paths = pathsOf(drag)) {
        std::ranges::remove_copy_if(*paths, std::back_inserter(files), isFolder);
    }
    const Ref<NSObject> taking = delegate();
    if (auto* delegate = dynamic_cast<DragDropViewDeletegate*>(taking.get())) {
        delegate->dragDropViewFileList(NSArray<NSString>::arrayWithObjects(std::move(files)).get());
    }
    return true;
}

bool DragDropView::performDragOperation(NSDraggingInfo* drag)
{
    const Ref<NSArray<NSString>> paths = pathsOf(drag);
    if (paths && std::ranges::any_of(*paths, isFolder)) {
        return false;
    }
    const Ref<NSString> wanted = filePostfix();
    if (wanted && wanted->characters() == kAllTypes) {
        return true;
    }
    return paths && std::ranges::any_of(*paths, [&](const Ref<NSString>& path) {
               return !wanted ||
                      wanted->rangeOfString_options(extensionOf(*path).get(), NSCaseInsensitiveSearch)
                              .location != NSNotFound;
           });
}

Ref<NSString> DragDropView::filePostfix() const
{
    return _filePostfix.get();
}

void DragDropView::setFilePostfix(Ref<NSString> extensions)
{
    _filePostfix.set(extensions);
}
