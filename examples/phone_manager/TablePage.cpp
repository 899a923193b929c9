#include "TablePage.h"

#include "Label.h"
#include "Look.h"
#include "PageView.h"

#include <platform/appkit/NSScrollView.h>
#include <platform/appkit/NSTableView.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSParagraphStyle.h>
#include <window/ZuBorderView.h>

#include <utility>

namespace
{

constexpr double kBorder = 1.0;
constexpr double kStatusTop = 10.0; // below the table
constexpr double kStatusHeight = 18.0;

} // namespace

TablePage::TablePage() = default;

TablePage::~TablePage() = default;

TablePage* TablePage::initWithFrame(NSRect frame)
{
    ZuFlippedView::initWithFrame(frame);
    _status = make<Label>("Arial", 13.0, 0.27, NSTextAlignment::Left);
    _status->setFrame(NSMakeRect(PageView::kMargin, frame.size.height - kStatusBottom - kStatusHeight,
                                 frame.size.width - 2.0 * PageView::kMargin, kStatusHeight));
    addSubview(_status);
    return this;
}

void TablePage::setTable(Ref<NSTableView> view, double top)
{
    const NSRect status = _status->frame();
    const Ref<ZuBorderView> border = make<ZuBorderView>()->initWithFrame(
        NSMakeRect(status.origin.x, top, status.size.width, status.origin.y - kStatusTop - top));
    border->setColor_border_(grey(0.8));
    const Ref<NSScrollView> scrollView =
        make<NSScrollView>()->initWithFrame(NSInsetRect(border->bounds(), kBorder, kBorder));
    scrollView->setDocumentView(std::move(view));
    border->addSubview(scrollView);
    addSubview(border);
}

void TablePage::setStatus(const std::string& status)
{
    _status->setText(status);
}
