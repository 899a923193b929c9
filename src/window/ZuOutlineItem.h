#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/Property.h"
#include "platform/foundation/Weak.h"

class NSImage;
class NSString;
template <class T> class NSMutableArray;

/// A node of the trees that an outline with check boxes shows: the application builds the tree, answers the
/// outline's questions from it, and hands each item to the cell that draws its row. Setters store and notify
/// no one.
///
/// An item keeps its children alive, never its parent. One that is put below itself, or below one of its
/// descendants, is never destroyed. Trees may be as deep as memory allows. The tree belongs to the
/// user-interface thread; all properties but `parent` and `children` can be read and written from any thread.
///
/// The defaults below are those after `init`; before, everything is 0 or null.
class TESSALINE_EXPORT ZuOutlineItem : public NSObject
{
public:
    ZuOutlineItem();

    /// Sets all values to their defaults, but for `point`.
    ZuOutlineItem* init();

    /// Appends a child, which is handed over, and becomes its parent; null is ignored. The child is not taken
    /// from the parent that it had, and is listed as often as it is added.
    void addChild(Ref<ZuOutlineItem> child);

    /// The name.
    Ref<NSString> getDescription() const;

    std::int64_t numberOfChildren() const;

    /// Null for an item that never had children, and behind the end, which is reported.
    Ref<ZuOutlineItem> childAtIndex(std::uint64_t index) const;

    // Removal gives a child up, and with its last reference the child dies: who still wants it takes a `Ref`
    // before. One that lives on keeps this item as its parent.

    void removeAllChildren();
    /// Removes the child at an index, wherever it is listed. One behind the end is reported, unless there are
    /// no children, and nothing is removed.
    void removeObjectFromChildrenAtIndex(std::uint64_t index);

    /// Default null. Copied.
    Ref<NSString> name() const;
    void setName(Ref<NSString> name);

    /// A count, which is shown in parentheses after the name unless it is negative. Default 0.
    std::int64_t number() const { return _number.get(); }
    void setNumber(std::int64_t number) { _number.set(number); }

    /// The application's own identifier. Default 0.
    std::int64_t id_() const { return _id_.get(); }
    void setId_(std::int64_t identifier) { _id_.set(identifier); }

    // Flags: 0 is no and anything else yes, kept as given.

    /// For the application; rows do not depend on it. Default 1.
    std::int8_t isEnable() const { return _isEnable.get(); }
    void setIsEnable(std::int8_t enable) { _isEnable.set(enable); }

    /// Default 1.
    std::int8_t isChecked() const { return _isChecked.get(); }
    void setIsChecked(std::int8_t checked) { _isChecked.set(checked); }

    /// The picture left of the name, which is handed over. Default null.
    Ref<NSImage> logo() const;
    void setLogo(Ref<NSImage> logo);

    /// The list itself, not a copy. Null until the first child is added; after the last one is removed it is
    /// empty.
    Ref<NSMutableArray<ZuOutlineItem>> children() const;

    /// Data of the application, which is never looked at, copied or freed. Default null.
    void* storage() const { return _storage.get(); }
    void setStorage(void* storage) { _storage.set(storage); }

    /// For the application. (0, 0) until it is set.
    NSPoint point() const { return _point.get(); }
    void setPoint(NSPoint point) { _point.set(point); }

    /// Where the logo starts in its row, in points. Default 0.
    std::int64_t indent_item() const { return _indent_item.get(); }
    void setIndent_item(std::int64_t indent) { _indent_item.set(indent); }

    /// From the logo's right edge to the name, in points. Default 20.
    std::int64_t gap_logo_to_text() const { return _gap_logo_to_text.get(); }
    void setGap_logo_to_text(std::int64_t gap) { _gap_logo_to_text.set(gap); }

    /// The item that this one was last added to, or was given as parent; null once that is destroyed. Setting
    /// it changes no list of children. Default null.
    Ref<ZuOutlineItem> parent() const { return _parent.get(); }
    void setParent(ZuOutlineItem* parent) { _parent = parent; }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuOutlineItem() override;

private:
    CopyProperty<NSString> _name;
    PlainProperty<std::int64_t> _number;
    PlainProperty<std::int64_t> _id_;
    PlainProperty<std::int8_t> _isEnable;
    PlainProperty<std::int8_t> _isChecked;
    RetainProperty<NSImage> _logo;
    Weak<ZuOutlineItem> _parent;
    Ref<NSMutableArray<ZuOutlineItem>> _children;
    PlainProperty<void*> _storage;
    StructProperty<NSPoint> _point;
    PlainProperty<std::int64_t> _indent_item;
    PlainProperty<std::int64_t> _gap_logo_to_text;
};
