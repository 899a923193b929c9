#include "platform/appkit/NSScrollView.h"

#include "platform/appkit/NSTableHeaderView.h"
#include "platform/appkit/NSTableView.h"
#include "platform/foundation/ClassTable.h"

constinit const ClassTable NSScrollView::table{
    "NSScrollView", &NSView::table, {}, {}, makeObject<NSScrollView>};

const ClassTable& NSScrollView::classTable() const
{
    return table;
}

NSScrollView::~NSScrollView() = default;

NSScrollView* NSScrollView::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}

void NSScrollView::setDocumentView(Ref<NSTableView> view)
{
    const Ref<NSTableView> before = documentView();
    if (before == view) {
        return;
    }
    if (before) {
        if (before->headerView() != nullptr) {
            before->headerView()->removeFromSuperview();
        }
        before->removeFromSuperview();
    }
    _documentView = view.get();
    if (view) {
        addSubview(view);
        if (view->headerView() != nullptr) {
            addSubview(view->headerView());
        }
        view->tile();
    }
}

Ref<NSTableView> NSScrollView::documentView() const
{
    Ref<NSTableView> view = _documentView.get();
    return view && view->superview() == this ? view : nullptr; // it may have gone into another
}
