#include "platform/appkit/NSPopover.h"

#include "platform/appkit/NSView.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSNotification.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/PopoverPeer.h"
#include "platform/qt/ViewPeer.h"

void NSPopoverDelegate::popoverDidClose(NSNotification* /*notification*/) {}

NSPopover::NSPopover() : _peer(new PopoverPeer(*this)) {}

NSPopover::~NSPopover()
{
    _peer->abandon();
}

void NSPopover::setContentView(Ref<NSView> view)
{
    const Ref<NSPopover> self(this);
    close();
    _peer->release();
    if (view) {
        view->leaveItsPlace();
    }
    _contentView = std::move(view);
}

NSSize NSPopover::contentSize() const
{
    return _contentView ? _contentView->frame().size : NSSize{};
}

void NSPopover::showRelativeToRect_ofView_preferredEdge(NSRect rect, NSView* view, NSRectEdge edge)
{
    if (!_contentView) {
        diagnose("showRelativeToRect", "the pop-over has no content view");
        return;
    }
    if (view == nullptr || !view->widget()->isVisible()) {
        diagnose("showRelativeToRect", "the view is not on the screen");
        return;
    }
    const bool flipped = view->isFlipped();
    const NSRect anchor = NSIsEmptyRect(rect) ? view->bounds() : rect;
    const NSPoint origin = view->originOfPeer();
    const double top = flipped ? anchor.origin.y - origin.y
                               : view->bounds().size.height - anchor.origin.y - anchor.size.height;
    const QRectF shown(anchor.origin.x - origin.x, top, anchor.size.width, anchor.size.height);
    const Qt::Edge side = edge == NSRectEdge::MinX                ? Qt::LeftEdge
                          : edge == NSRectEdge::MaxX              ? Qt::RightEdge
                          : (edge == NSRectEdge::MaxY) == flipped ? Qt::BottomEdge
                                                                  : Qt::TopEdge;
    _shown = this;
    _peer->showBeside(*_contentView->widget(), *view->widget(), shown.toAlignedRect(), side);
}

void NSPopover::close()
{
    _peer->hide();
}

void NSPopover::performClose(NSObject* /*sender*/)
{
    close();
}

void NSPopover::didClose()
{
    const EventInProgress progress; // the window is still at it when the pop-over ends
    const Ref<NSPopover> self = std::exchange(_shown, nullptr);
    if (!self) {
        return;
    }
    const Ref<NSObject> listener = delegate();
    if (auto* const heard = dynamic_cast<NSPopoverDelegate*>(listener.get())) {
        heard->popoverDidClose(
            NSNotification::notificationWithName_object(NSPopoverDidCloseNotification, this).get());
    }
}
