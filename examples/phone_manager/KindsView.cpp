#include "KindsView.h"

#include "Resources.h"

#include <algorithm>
#include <vector>

constinit const ClassTable KindsView::table{
    "KindsView", &ZuOutlineView::table, {}, {}, makeObject<KindsView>};

namespace
{

/// A cell that has the outline check all that its row stands for.
class CheckCell final : public ZuCheckImageCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t /*zone*/) const override
    {
        return Ref<NSCell>::adopt(new CheckCell(*this));
    }

    void performCheckOfRow_inView(std::int64_t row, NSTableView* view) override
    {
        dynamic_cast<KindsView&>(*view).toggleRow(row);
    }

    /// Also tells that some are checked, for which the cell's flag stands.
    Ref<NSString> accessibilityLabel() const override
    {
        const Ref<NSString> label = ZuCheckImageCell::accessibilityLabel();
        return flagValue() ? text(localised("%s, some of them", {label->UTF8String()})) : label;
    }
};

} // namespace

void KindsView::awakeFromNib()
{
    constexpr double kNameSize = 14.0; // with which names stand on one line with the counts
    _root = make<ZuOutlineItem>()->init();
    setHeaderView(nullptr);
    const Ref<CheckCell> cell = make<CheckCell>();
    cell->setFont(NSFont::fontWithName_size("Arial", kNameSize));
    const Ref<NSTableColumn> column = make<NSTableColumn>();
    column->setDataCell(cell);
    addTableColumn(column);
    setDelegate(this);
    setDataSource(this);
}

// Rows

KindsView::Item& KindsView::itemOf(Kind kind, const std::string& group)
{
    constexpr NSSize kLogoSize{16.0, 16.0};
    constexpr std::int64_t kLogoLeft = 30; // of a kind's: leaves room for triangle and check
    constexpr std::int64_t kLogoGap = 6;
    Ref<Item>& item = _items[{kind, group}];
    if (!item) {
        const char* name = kKindNames[static_cast<std::size_t>(kind)];
        const Ref<NSImage> own = icon(group.empty() ? name : "group-" + group);
        const Ref<NSImage> logo = own ? own : icon("folder");
        item = make<Item>();
        item->init();
        item->setId_(static_cast<std::int64_t>(kind));
        item->group = group;
        item->setName(text(group.empty() ? localised(name) : shownGroup(group)));
        item->setLogo(make<NSImage>()->initWithCGImage_size(ImageUtil::nsImageToCGImageRef(logo.get()).get(),
                                                            kLogoSize));
        const double indent = group.empty() ? 0.0 : indentationPerLevel();
        item->setIndent_item(kLogoLeft + static_cast<std::int64_t>(indent));
        item->setGap_logo_to_text(kLogoGap);
    }
    return *item;
}

void KindsView::update()
{
    _root->removeAllChildren();
    for (const Kind kind : kKinds) {
        _root->addChild(&itemOf(kind, ""));
    }
    for (const auto& [key, item] : _items) {
        item->setNumber(0);
        item->checked = 0;
        item->removeAllChildren();
    }
    const auto count = [](Item& item, bool isChecked) {
        item.setNumber(item.number() + 1);
        item.checked += isChecked ? 1 : 0;
    };
    phone->visit([&](Kind kind, const std::string& group, bool isChecked) {
        count(itemOf(kind, ""), isChecked);
        if (!group.empty()) {
            count(itemOf(kind, group), isChecked);
        }
    });
    std::vector<Ref<Item>> items;
    for (const auto& [key, item] : _items) {
        item->setIsEnable(item->number() > 0 ? 1 : 0);
        item->setIsChecked(item->number() > 0 && item->checked == item->number() ? 1 : 0);
        items.push_back(item);
    }
    std::ranges::sort(items, {}, [](const Ref<Item>& item) { return item->name()->UTF8String(); });
    for (const Ref<Item>& item : items) {
        if (!item->group.empty()) {
            itemOf(item->kind(), "").addChild(item);
        }
    }
    reloadData();
}

std::int64_t KindsView::outlineView_numberOfChildrenOfItem(NSOutlineView* /*view*/, NSObject* item)
{
    return (item != nullptr ? dynamic_cast<ZuOutlineItem&>(*item) : *_root).numberOfChildren();
}

Ref<NSObject> KindsView::outlineView_child_ofItem(NSOutlineView* /*view*/, std::int64_t index, NSObject* item)
{
    return (item != nullptr ? dynamic_cast<ZuOutlineItem&>(*item) : *_root)
        .childAtIndex(static_cast<std::uint64_t>(index));
}

bool KindsView::outlineView_isItemExpandable(NSOutlineView* view, NSObject* item)
{
    return outlineView_numberOfChildrenOfItem(view, item) > 0;
}

void KindsView::outlineView_willDisplayCell_forTableColumn_item(NSOutlineView* /*view*/, NSCell* cell,
                                                                NSTableColumn* /*column*/, NSObject* item)
{
    auto& shown = dynamic_cast<Item&>(*item);
    auto& check = dynamic_cast<ZuCheckImageCell&>(*cell);
    const bool isMixed = shown.isChecked() == 0 && shown.checked > 0;
    check.setItem(&shown);
    check.setTitle(shown.name());
    check.setFlagValue(isMixed);
    check.setImage(icon(shown.isEnable() == 0    ? "content-check-off"
                        : shown.isChecked() != 0 ? "content-check-yes"
                        : isMixed                ? "content-check-mixed"
                                                 : "content-check-no"));
}

// Checks and selection

void KindsView::toggleRow(std::int64_t row)
{
    const Ref<NSObject> object = itemAtRow(row);
    const auto& toggled = dynamic_cast<const Item&>(*object);
    const bool checks = toggled.isChecked() == 0;
    phone->visit([&](Kind kind, const std::string& group, bool& isChecked) {
        if (kind == toggled.kind() && (toggled.group.empty() || group == toggled.group)) {
            isChecked = checks;
        }
    });
    phone->didChange();
}

void KindsView::selectKind(Kind kind)
{
    _selectedKind = kind; // before the row is, which is no choice of the user's then
    const auto row = static_cast<std::size_t>(rowForItem(&itemOf(kind, "")));
    selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(row).get(), false);
}

void KindsView::outlineViewSelectionDidChange(NSOutlineView* /*view*/)
{
    const Ref<NSObject> item = selectedRow() < 0 ? nullptr : itemAtRow(selectedRow());
    const Kind kind = item ? dynamic_cast<Item&>(*item).kind() : _selectedKind;
    if (kind != std::exchange(_selectedKind, kind)) {
        sendAction_to(action(), target().get());
    }
}
