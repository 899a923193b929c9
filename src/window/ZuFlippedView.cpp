#include "window/ZuFlippedView.h"

ZuFlippedView* ZuFlippedView::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}
