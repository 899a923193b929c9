#include "window/ZuOutlineItem.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSMutableArray.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSImage.h"

#include <array>
#include <vector>

namespace
{

constexpr std::int64_t kDefaultGap = 20; // points, from logo to text

constexpr std::array kProperties{
    property<&ZuOutlineItem::name, &ZuOutlineItem::setName>("name"),
    property<&ZuOutlineItem::number, &ZuOutlineItem::setNumber>("number"),
    property<&ZuOutlineItem::id_, &ZuOutlineItem::setId_>("id_"),
    property<&ZuOutlineItem::isEnable, &ZuOutlineItem::setIsEnable>("isEnable"),
    property<&ZuOutlineItem::isChecked, &ZuOutlineItem::setIsChecked>("isChecked"),
    property<&ZuOutlineItem::logo, &ZuOutlineItem::setLogo>("logo"),
    property<&ZuOutlineItem::indent_item, &ZuOutlineItem::setIndent_item>("indent_item"),
    property<&ZuOutlineItem::gap_logo_to_text, &ZuOutlineItem::setGap_logo_to_text>("gap_logo_to_text"),
    property<&ZuOutlineItem::parent, &ZuOutlineItem::setParent>("parent"),
};

using Lists = std::vector<Ref<NSMutableArray<ZuOutlineItem>>>;

/// The lists that destroyed items of this thread leave behind, while one of them is releasing these.
constinit thread_local Lists* leftBehind = nullptr;

} // namespace

constinit const ClassTable ZuOutlineItem::table{"ZuOutlineItem", &NSObject::table, kProperties, {}};

const ClassTable& ZuOutlineItem::classTable() const
{
    return table;
}

ZuOutlineItem::ZuOutlineItem() = default;

ZuOutlineItem::~ZuOutlineItem()
{
    if (!_children) {
        return;
    }
    if (leftBehind != nullptr) {
        leftBehind->push_back(std::move(_children));
        return;
    }
    // One after the other: each within the destruction of the one above, a deep tree would exhaust the stack.
    Lists lists;
    leftBehind = &lists;
    lists.push_back(std::move(_children));
    while (!lists.empty()) {
        const auto released = std::move(lists.back());
        lists.pop_back();
    }
    leftBehind = nullptr;
}

ZuOutlineItem* ZuOutlineItem::init()
{
    setName(nullptr);
    setNumber(0);
    setId_(0);
    setIsEnable(1);
    setIsChecked(1);
    setLogo(nullptr);
    setParent(nullptr);
    _children = nullptr;
    setStorage(nullptr);
    setIndent_item(0);
    setGap_logo_to_text(kDefaultGap);
    return this;
}

void ZuOutlineItem::addChild(Ref<ZuOutlineItem> child)
{
    if (!child) {
        return;
    }
    if (!_children) {
        _children = make<NSMutableArray<ZuOutlineItem>>();
    }
    child->setParent(this);
    _children->addObject(std::move(child));
}

Ref<NSString> ZuOutlineItem::getDescription() const
{
    return name();
}

std::int64_t ZuOutlineItem::numberOfChildren() const
{
    return _children ? static_cast<std::int64_t>(_children->count()) : 0;
}

Ref<ZuOutlineItem> ZuOutlineItem::childAtIndex(std::uint64_t index) const
{
    return _children ? _children->objectAtIndex(index) : nullptr;
}

void ZuOutlineItem::removeAllChildren()
{
    if (_children) {
        _children->removeAllObjects();
    }
}

void ZuOutlineItem::removeObjectFromChildrenAtIndex(std::uint64_t index)
{
    if (numberOfChildren() > 0) {
        _children->removeObjectIdenticalTo(_children->objectAtIndex(index));
    }
}

Ref<NSString> ZuOutlineItem::name() const
{
    return _name.get();
}

void ZuOutlineItem::setName(Ref<NSString> name)
{
    _name.set(name);
}

Ref<NSImage> ZuOutlineItem::logo() const
{
    return _logo.get();
}

void ZuOutlineItem::setLogo(Ref<NSImage> logo)
{
    _logo.set(std::move(logo));
}

Ref<NSMutableArray<ZuOutlineItem>> ZuOutlineItem::children() const
{
    return _children;
}
