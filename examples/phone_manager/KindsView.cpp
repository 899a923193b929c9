#include "KindsView.h"

#include "Look.h"
#include "Texts.h"

#include <platform/appkit/NSTableColumn.h>
#include <platform/appkit/NSTableHeaderView.h>
#include <platform/foundation/ClassTable.h>
#include <platform/foundation/NSIndexSet.h>
#include <platform/graphics/CGImage.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSImage.h>
#include <util/ImageUtil.h>
#include <window/ZuCheckImageCell.h>
#include <window/ZuOutlineItem.h>

#include <algorithm>
#include <utility>

namespace
{

constexpr double kNameSize = 14.0; // with which names stand on one line with the counts
constexpr NSSize kLogoSize{16.0, 16.0};
constexpr std::int64_t kLogoLeft = 30; // of a kind's: leaves room for triangle and check
constexpr std::int64_t kLevel = 16;    // how much farther right the groups' are, as the view indents them
constexpr std::int64_t kLogoGap = 6;

struct KindLook {
    const char* name;
    const char* icon;
};
constexpr std::array kKinds{KindLook{"Contacts", "contacts"}, KindLook{"Messages", "messages"},
                            KindLook{"Pictures", "photos"}};
constexpr std::array kMessageGroups{KindLook{"Received", "received"}, KindLook{"Sent", "sent"},
                                    KindLook{"Failed", "sent"}};

/// An icon made small; null if there is none of that name.
Ref<NSImage> logo(const std::string& name)
{
    const Ref<NSImage> image = icon(name);
    return image ? make<NSImage>()->initWithCGImage_size(ImageUtil::nsImageToCGImageRef(image.get()).get(),
                                                         kLogoSize)
                 : nullptr;
}

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

const ClassTable& KindsView::classTable() const
{
    return table;
}

KindsView::KindsView() = default;

KindsView::~KindsView() = default;

void KindsView::awakeFromNib()
{
    _root = make<ZuOutlineItem>()->init();
    _checkImages = {icon("content-check-no"), icon("content-check-mixed"), icon("content-check-yes"),
                    icon("content-check-off")};
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

// The records

void KindsView::visitRecords(const Visitor& visit) const
{
    if (!_phone) {
        return;
    }
    for (Contact& contact : _phone->contacts()) {
        visit({Kind::Contacts, contact.group}, contact.isFixed ? nullptr : &contact.isChecked);
    }
    for (Message& message : _phone->messages()) {
        visit({Kind::Messages, kMessageGroups[static_cast<std::size_t>(message.kind)].name},
              &message.isChecked);
    }
    for (Picture& picture : _phone->pictures()) {
        visit({Kind::Pictures, {}}, &picture.isChecked);
    }
}

KindsView::Entry& KindsView::entryOf(const Key& key)
{
    Entry& entry = _entries[key];
    if (!entry.item) {
        const auto& [kind, group] = key;
        const bool isKind = group.empty();
        const KindLook& look = kKinds[static_cast<std::size_t>(kind)];
        const auto* const messages = std::ranges::find(kMessageGroups, group, &KindLook::name);
        const Ref<NSImage> own = logo(isKind                             ? look.icon
                                      : messages != kMessageGroups.end() ? messages->icon
                                                                         : group);
        entry.item = make<ZuOutlineItem>()->init();
        entry.item->setId_(static_cast<std::int64_t>(kind));
        entry.item->setName(text(localised(isKind ? look.name : group)));
        entry.item->setLogo(own ? own : logo("folder"));
        entry.item->setIndent_item(isKind ? kLogoLeft : kLogoLeft + kLevel);
        entry.item->setGap_logo_to_text(kLogoGap);
    }
    return entry;
}

void KindsView::update()
{
    for (auto& [key, entry] : _entries) {
        entry = {entry.item};
    }
    for (const Kind kind : {Kind::Contacts, Kind::Messages, Kind::Pictures}) {
        entryOf({kind, {}});
    }
    const auto count = [](Entry& entry, const bool* check) {
        ++entry.records;
        entry.checkable += check != nullptr ? 1 : 0;
        entry.checked += check != nullptr && *check ? 1 : 0;
    };
    visitRecords([&](const Key& key, const bool* check) {
        count(entryOf({key.first, {}}), check);
        if (!key.second.empty()) {
            count(entryOf(key), check);
        }
    });
    _root->removeAllChildren();
    Ref<ZuOutlineItem> kind;
    for (const auto& [key, entry] : _entries) { // each kind, then its groups
        entry.item->setNumber(static_cast<std::int64_t>(entry.records));
        entry.item->setIsEnable(entry.checkable > 0 ? 1 : 0);
        entry.item->setIsChecked(entry.checkable > 0 && entry.checked == entry.checkable ? 1 : 0);
        if (key.second.empty()) {
            kind = entry.item;
            kind->removeAllChildren();
            _root->addChild(kind);
        } else if (entry.records > 0) {
            kind->addChild(entry.item);
        }
    }
    reloadData();
}

void KindsView::toggleRow(std::int64_t row)
{
    const Key toggled = keyOf(itemOf(itemAtRow(row).get()));
    const Entry& entry = entryOf(toggled);
    const bool checks = entry.checked < entry.checkable;
    visitRecords([&](const Key& key, bool* check) {
        const bool belongs =
            key.first == toggled.first && (toggled.second.empty() || key.second == toggled.second);
        if (belongs && check != nullptr) {
            *check = checks;
        }
    });
    _phone->didChange();
}

// What the tree is

KindsView::Key KindsView::keyOf(const ZuOutlineItem& item) const
{
    return std::ranges::find_if(_entries, [&](const auto& each) { return each.second.item == &item; })->first;
}

ZuOutlineItem& KindsView::itemOf(NSObject* item) const
{
    return item != nullptr ? dynamic_cast<ZuOutlineItem&>(*item) : *_root;
}

std::int64_t KindsView::outlineView_numberOfChildrenOfItem(NSOutlineView* /*view*/, NSObject* item)
{
    return itemOf(item).numberOfChildren();
}

Ref<NSObject> KindsView::outlineView_child_ofItem(NSOutlineView* /*view*/, std::int64_t index, NSObject* item)
{
    return itemOf(item).childAtIndex(static_cast<std::uint64_t>(index));
}

bool KindsView::outlineView_isItemExpandable(NSOutlineView* /*view*/, NSObject* item)
{
    return itemOf(item).numberOfChildren() > 0;
}

void KindsView::outlineView_willDisplayCell_forTableColumn_item(NSOutlineView* /*view*/, NSCell* cell,
                                                                NSTableColumn* /*column*/, NSObject* item)
{
    ZuOutlineItem& shown = itemOf(item);
    const Entry& entry = _entries.at(keyOf(shown));
    auto& check = dynamic_cast<ZuCheckImageCell&>(*cell);
    check.setItem(&shown);
    check.setTitle(shown.name());
    const bool isMixed = shown.isChecked() == 0 && entry.checked > 0;
    check.setFlagValue(isMixed);
    check.setImage(_checkImages[shown.isEnable() == 0 ? 3 : shown.isChecked() != 0 ? 2 : isMixed ? 1 : 0]);
}

// Selection

void KindsView::selectKind(Kind kind)
{
    _selectedKind = kind; // before the row is, which is no choice of the user's then
    const std::int64_t row = rowForItem(entryOf({kind, {}}).item.get());
    selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(static_cast<std::size_t>(row)).get(),
                                          false);
}

void KindsView::outlineViewSelectionDidChange(NSOutlineView* /*view*/)
{
    const Ref<NSObject> item = itemAtRow(selectedRow());
    const Kind kind = item ? static_cast<Kind>(itemOf(item.get()).id_()) : _selectedKind;
    if (kind != std::exchange(_selectedKind, kind)) {
        sendAction_to(action(), target().get());
    }
}
