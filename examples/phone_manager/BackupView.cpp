#include "BackupView.h"

#include "Look.h"
#include "Texts.h"

#include <platform/appkit/NSTableColumn.h>
#include <platform/appkit/NSTableHeaderView.h>
#include <platform/graphics/CGImage.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSImage.h>
#include <util/ImageUtil.h>
#include <window/ZuCheckImageCell.h>
#include <window/ZuOutlineItem.h>
#include <window/ZuOutlineView.h>

#include <algorithm>
#include <utility>

namespace
{

constexpr double kNameSize = 14.0; // with which names stand on one line with the counts
constexpr double kRowHeight = 24.0;
constexpr NSSize kLogoSize{16.0, 16.0};
constexpr std::int64_t kLogoLeft = 30; // of a kind's: leaves room for triangle and check
constexpr std::int64_t kLevel = 16;    // how much farther right the folders' are, as the view indents them
constexpr std::int64_t kLogoGap = 6;

/// An icon made small.
Ref<NSImage> logo(const std::string& name)
{
    return make<NSImage>()->initWithCGImage_size(ImageUtil::nsImageToCGImageRef(icon(name).get()).get(),
                                                 kLogoSize);
}

/// A cell that tells the page of each check that the user toggles.
class CheckCell final : public ZuCheckImageCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t /*zone*/) const override
    {
        return Ref<NSCell>::adopt(new CheckCell(*this));
    }

    void performCheckOfRow_inView(std::int64_t row, NSTableView* view) override
    {
        ZuCheckImageCell::performCheckOfRow_inView(row, view);
        const Ref<NSObject> delegate = view->delegate();
        if (auto* page = dynamic_cast<BackupView*>(delegate.get())) {
            page->checkDidChange(row);
        }
    }
};

std::vector<Ref<ZuOutlineItem>> childrenOf(const ZuOutlineItem& item)
{
    std::vector<Ref<ZuOutlineItem>> children;
    for (std::int64_t index = 0; index < item.numberOfChildren(); ++index) {
        children.push_back(item.childAtIndex(static_cast<std::uint64_t>(index)));
    }
    return children;
}

bool isChecked(const Ref<ZuOutlineItem>& item)
{
    return item->isChecked() != 0;
}

/// Adds a checked item below another.
Ref<ZuOutlineItem> addItem(ZuOutlineItem& parent, const std::string& name, std::int64_t number,
                           Ref<NSImage> picture, std::int64_t left)
{
    Ref<ZuOutlineItem> item = make<ZuOutlineItem>()->init();
    item->setName(text(localised(name)));
    item->setNumber(number);
    item->setLogo(std::move(picture));
    item->setIndent_item(left);
    item->setGap_logo_to_text(kLogoGap);
    parent.addChild(item);
    return item;
}

} // namespace

BackupView::BackupView() = default;

BackupView::~BackupView() = default;

BackupView* BackupView::initWithFrame(NSRect frame)
{
    TablePage::initWithFrame(frame);
    _unchecked = icon("content-check-no");
    _checked = icon("content-check-yes");
    _mixed = icon("content-check-mixed");

    _outlineView = make<ZuOutlineView>();
    _outlineView->setHeaderView(nullptr);
    _outlineView->setRowHeight(kRowHeight);
    _outlineView->setIndentationPerLevel(kLevel);
    const Ref<CheckCell> cell = make<CheckCell>();
    cell->setFont(NSFont::fontWithName_size("Arial", kNameSize));
    const Ref<NSTableColumn> column = make<NSTableColumn>();
    column->setDataCell(cell);
    _outlineView->addTableColumn(column);
    setKinds({});
    _outlineView->setDelegate(this);
    _outlineView->setDataSource(this);
    setTable(_outlineView);
    return this;
}

void BackupView::setKinds(const std::vector<BackupKind>& kinds)
{
    _root = make<ZuOutlineItem>()->init();
    for (const BackupKind& kind : kinds) {
        std::int64_t count = 0;
        for (const BackupKind::Folder& folder : kind.folders) {
            count += folder.count;
        }
        const Ref<ZuOutlineItem> item = addItem(*_root, kind.name, count, logo(kind.icon), kLogoLeft);
        for (const BackupKind::Folder& folder : kind.folders) {
            const Ref<NSImage> own = icon(folder.name);
            addItem(*item, folder.name, folder.count, own ? own : icon("folder"), kLogoLeft + kLevel);
        }
    }
    _outlineView->reloadData();
    showChecks();
}

// What the tree is

ZuOutlineItem& BackupView::itemOf(NSObject* item) const
{
    return item != nullptr ? dynamic_cast<ZuOutlineItem&>(*item) : *_root;
}

std::int64_t BackupView::outlineView_numberOfChildrenOfItem(NSOutlineView* /*view*/, NSObject* item)
{
    return itemOf(item).numberOfChildren();
}

Ref<NSObject> BackupView::outlineView_child_ofItem(NSOutlineView* /*view*/, std::int64_t index,
                                                   NSObject* item)
{
    return itemOf(item).childAtIndex(static_cast<std::uint64_t>(index));
}

bool BackupView::outlineView_isItemExpandable(NSOutlineView* /*view*/, NSObject* item)
{
    return itemOf(item).numberOfChildren() > 0;
}

void BackupView::outlineView_willDisplayCell_forTableColumn_item(NSOutlineView* /*view*/, NSCell* cell,
                                                                 NSTableColumn* /*column*/, NSObject* item)
{
    ZuOutlineItem& shown = itemOf(item);
    auto& check = dynamic_cast<ZuCheckImageCell&>(*cell);
    check.setItem(&shown);
    check.setTitle(shown.name());
    const bool isMixed = shown.isChecked() == 0 && std::ranges::any_of(childrenOf(shown), isChecked);
    check.setImage(shown.isChecked() != 0 ? _checked : isMixed ? _mixed : _unchecked);
}

// Checks

void BackupView::checkDidChange(std::int64_t row)
{
    const Ref<NSObject> toggled = _outlineView->itemAtRow(row);
    const ZuOutlineItem& item = itemOf(toggled.get());
    for (const Ref<ZuOutlineItem>& folder : childrenOf(item)) {
        folder->setIsChecked(item.isChecked());
    }
    if (const Ref<ZuOutlineItem> parent = item.parent()) {
        parent->setIsChecked(std::ranges::all_of(childrenOf(*parent), isChecked) ? 1 : 0);
    }
    showChecks();
}

void BackupView::showChecks()
{
    std::int64_t chosen = 0;
    std::int64_t all = 0;
    for (const Ref<ZuOutlineItem>& kind : childrenOf(*_root)) {
        all += kind->number();
        for (const Ref<ZuOutlineItem>& folder : childrenOf(*kind)) {
            chosen += isChecked(folder) ? folder->number() : 0;
        }
    }
    setStatus(localised("%s of %s items chosen", {std::to_string(chosen), std::to_string(all)}));
    _outlineView->setNeedsDisplay();
}
