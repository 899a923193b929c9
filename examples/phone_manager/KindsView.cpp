#include "KindsView.h"

#include "Resources.h"

#include <platform/appkit/NSTableColumn.h>
#include <platform/appkit/NSTableHeaderView.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSIndexSet.h>
#include <platform/graphics/CGImage.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSImage.h>
#include <util/ImageUtil.h>
#include <window/ZuCheckImageCell.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

constexpr double kNameSize = 14.0; // with which names stand on one line with the counts
constexpr NSSize kLogoSize{16.0, 16.0};
constexpr std::int64_t kLogoLeft = 30; // of a kind's: leaves room for triangle and check
constexpr std::int64_t kLevel = 16;    // how much farther right the groups' are, as the view indents them
constexpr std::int64_t kLogoGap = 6;

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

constinit const ClassTable KindsView::table{
    "KindsView", &ZuOutlineView::table, {}, {}, makeObject<KindsView>};

void KindsView::awakeFromNib()
{
    _root = make<ZuOutlineItem>()->init();
    setHeaderView(nullptr);
    setIndentationPerLevel(kLevel);
    const Ref<CheckCell> cell = make<CheckCell>();
    cell->setFont(NSFont::fontWithName_size("Arial", kNameSize));
    const Ref<NSTableColumn> column = make<NSTableColumn>();
    column->setDataCell(cell);
    addTableColumn(column);
    setDelegate(this);
    setDataSource(this);
}

void KindsView::setPhone(Ref<Phone> phone)
{
    _phone = std::move(phone);
    update();
}

// Records

void KindsView::visitRecords(const Visitor& visit) const
{
    if (!_phone) {
        return;
    }
    for (Contact& contact : _phone->contacts()) {
        visit(Kind::Contacts, contact.group, contact.isFixed ? nullptr : &contact.isChecked);
    }
    for (Message& message : _phone->messages()) {
        visit(Kind::Messages, message.kindName(), &message.isChecked);
    }
    for (Picture& picture : _phone->pictures()) {
        visit(Kind::Pictures, "", &picture.isChecked);
    }
}

void KindsView::toggleRow(std::int64_t row)
{
    const Item& toggled = itemAt(row);
    const bool checks = toggled.checked < toggled.checkable;
    visitRecords([&](Kind kind, const std::string& group, bool* check) {
        const bool belongs = kind == toggled.kind() && (toggled.group.empty() || group == toggled.group);
        if (belongs && check != nullptr) {
            *check = checks;
        }
    });
    _phone->didChange();
}

// Rows

KindsView::Item& KindsView::itemOf(Kind kind, const std::string& group)
{
    Ref<Item>& item = _items[{kind, group}];
    if (!item) {
        item = makeItem(kind, group);
    }
    return *item;
}

KindsView::Item& KindsView::itemAt(std::int64_t row) const
{
    return dynamic_cast<Item&>(*itemAtRow(row));
}

Ref<KindsView::Item> KindsView::makeItem(Kind kind, const std::string& group)
{
    const bool isKind = group.empty();
    const char* kindName = kKindNames[static_cast<std::size_t>(kind)];
    const Ref<NSImage> own = isKind ? icon(kindName) : groupIcon(group);
    const Ref<NSImage> picture = own ? own : icon("folder");
    Ref<Item> item = make<Item>();
    item->init();
    item->setId_(static_cast<std::int64_t>(kind));
    item->group = group;
    item->setName(text(isKind ? localised(kindName) : shownGroup(group)));
    item->setLogo(make<NSImage>()->initWithCGImage_size(ImageUtil::nsImageToCGImageRef(picture.get()).get(),
                                                        kLogoSize));
    item->setIndent_item(isKind ? kLogoLeft : kLogoLeft + kLevel);
    item->setGap_logo_to_text(kLogoGap);
    return item;
}

void KindsView::update()
{
    for (const auto& [key, item] : _items) {
        item->records = item->checkable = item->checked = 0;
    }
    _root->removeAllChildren();
    for (const Kind kind : {Kind::Contacts, Kind::Messages, Kind::Pictures}) {
        _root->addChild(&itemOf(kind, ""));
    }
    const auto count = [](Item& item, const bool* check) {
        ++item.records;
        item.checkable += check != nullptr ? 1 : 0;
        item.checked += check != nullptr && *check ? 1 : 0;
    };
    visitRecords([&](Kind kind, const std::string& group, const bool* check) {
        count(itemOf(kind, ""), check);
        if (!group.empty()) {
            count(itemOf(kind, group), check);
        }
    });
    std::vector<Ref<Item>> rows;
    for (const auto& [key, item] : _items) {
        item->setNumber(static_cast<std::int64_t>(item->records));
        item->setIsEnable(item->checkable > 0 ? 1 : 0);
        item->setIsChecked(item->checkable > 0 && item->checked == item->checkable ? 1 : 0);
        item->removeAllChildren();
        rows.push_back(item);
    }
    std::ranges::sort(rows, {}, [](const Ref<Item>& item) { return item->name()->UTF8String(); });
    for (const Ref<Item>& item : rows) {
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

// Selection

void KindsView::selectKind(Kind kind)
{
    _selectedKind = kind; // before the row is, which is no choice of the user's then
    const auto row = static_cast<std::size_t>(rowForItem(&itemOf(kind, "")));
    selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(row).get(), false);
}

void KindsView::outlineViewSelectionDidChange(NSOutlineView* /*view*/)
{
    const Kind kind = selectedRow() < 0 ? _selectedKind : itemAt(selectedRow()).kind();
    if (kind != std::exchange(_selectedKind, kind)) {
        sendAction_to(action(), target().get());
    }
}
