#include "window/ZuOutlineItem.h"

#include "platform/foundation/NSMutableArray.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

Ref<ZuOutlineItem> item(const char* name = "item")
{
    Ref<ZuOutlineItem> made = make<ZuOutlineItem>()->init();
    made->setName(text(name));
    return made;
}

/// The names of an item's children, one after the other.
std::string childrenOf(const Ref<ZuOutlineItem>& parent)
{
    std::string names;
    for (std::int64_t i = 0; i < parent->numberOfChildren(); ++i) {
        names += utf8(parent->childAtIndex(static_cast<std::uint64_t>(i))->getDescription());
    }
    return names;
}

TEST(ZuOutlineItemTest, StartsCheckedEnabledAndWithoutChildren)
{
    Ref<ZuOutlineItem> item = make<ZuOutlineItem>();
    EXPECT_EQ(item->isChecked() + item->isEnable() + item->gap_logo_to_text(), 0) << "as allocated";
    item->setNumber(3);
    item->setPoint({1.0, 2.0});
    item = item->init();
    EXPECT_EQ(item->isChecked(), 1);
    EXPECT_EQ(item->isEnable(), 1);
    EXPECT_EQ(item->gap_logo_to_text(), 20);
    EXPECT_EQ(item->number(), 0);
    EXPECT_EQ(item->point(), (NSPoint{1.0, 2.0}));
    EXPECT_EQ(item->storage(), nullptr);
    EXPECT_EQ(item->getDescription(), nullptr);
    EXPECT_EQ(item->children(), nullptr);
    EXPECT_EQ(item->numberOfChildren(), 0);
    EXPECT_EQ(item->childAtIndex(7), nullptr);
    item->addChild(nullptr);
    EXPECT_EQ(item->children(), nullptr);
}

TEST(ZuOutlineItemTest, StoresWhatItIsGiven)
{
    const Ref<ZuOutlineItem> item = make<ZuOutlineItem>()->init();
    const Ref<ZuOutlineItem> parent = make<ZuOutlineItem>();
    const Ref<NSString> name = text("Camera");
    EXPECT_TRUE(item->setValue_forKey(name.get(), "name"));
    EXPECT_TRUE(item->setValue_forKey(parent.get(), "parent"));
    EXPECT_FALSE(item->setValue_forKey(name.get(), "parent"));
    EXPECT_EQ(item->getDescription(), name);
    EXPECT_EQ(item->valueForKey("parent"), parent);
    EXPECT_TRUE(item->setValue_forKey(nullptr, "parent"));
    EXPECT_EQ(item->parent(), nullptr);
    item->setIsChecked(2);
    EXPECT_EQ(item->isChecked(), 2);
    item->setStorage(item.get());
    EXPECT_EQ(item->storage(), item.get());

    Weak<NSImage> logo;
    for (const bool another : {true, false}) {
        const Ref<ZuOutlineItem> shown = make<ZuOutlineItem>()->init();
        Ref<NSImage> image = blankImage("logo", 16.0, 16.0);
        logo = image;
        EXPECT_TRUE(shown->setValue_forKey(image.get(), "logo"));
        image = nullptr;
        EXPECT_EQ(shown->logo(), logo.get());
        EXPECT_NE(logo.get(), nullptr);
        if (another) {
            shown->setLogo(blankImage("another", 16.0, 16.0));
            EXPECT_EQ(logo.get(), nullptr);
        }
    }
    EXPECT_EQ(logo.get(), nullptr);
}

TEST(ZuOutlineItemTest, ListsChildrenAsOftenAsTheyAreAdded)
{
    for (const std::uint64_t removed : {0U, 2U}) {
        const Ref<ZuOutlineItem> parent = item();
        const Ref<ZuOutlineItem> twice = item("a");
        parent->addChild(twice);
        parent->addChild(item("b"));
        parent->addChild(twice);
        EXPECT_EQ(childrenOf(parent), "aba");
        EXPECT_EQ(twice->parent(), parent);
        parent->removeObjectFromChildrenAtIndex(removed);
        EXPECT_EQ(childrenOf(parent), "b");
        EXPECT_EQ(twice->parent(), parent) << "although it is removed";
    }
}

TEST(ZuOutlineItemTest, RemovesNothingBehindTheEnd)
{
    const Ref<ZuOutlineItem> parent = item();
    parent->addChild(item("a"));
    testing::internal::CaptureStderr();
    EXPECT_EQ(parent->childAtIndex(1), nullptr);
    parent->removeObjectFromChildrenAtIndex(std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "objectAtIndex: index 1 is behind the end of 1 objects\n"
              "objectAtIndex: index 18446744073709551615 is behind the end of 1 objects\n");
    EXPECT_EQ(childrenOf(parent), "a");

    const Weak<ZuOutlineItem> child = parent->childAtIndex(0);
    const auto list = parent->children();
    parent->removeAllChildren();
    EXPECT_EQ(child.get(), nullptr);
    EXPECT_EQ(parent->children(), list);
    EXPECT_EQ(list->count(), 0U);
    testing::internal::CaptureStderr();
    for (const Ref<ZuOutlineItem>& childless : {parent, item()}) {
        childless->removeAllChildren();
        childless->removeObjectFromChildrenAtIndex(0);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(ZuOutlineItemTest, KeepsChildrenAliveButNotParents)
{
    Ref<ZuOutlineItem> first = item();
    Ref<ZuOutlineItem> second = item();
    Ref<ZuOutlineItem> child = item("child");
    const Weak<ZuOutlineItem> watched = child;
    first->addChild(child);
    second->addChild(child);
    EXPECT_EQ(child->parent(), second);
    first = nullptr;
    EXPECT_EQ(childrenOf(second), "child") << "the end of one parent leaves the other alone";
    second->removeAllChildren();
    second = nullptr;
    EXPECT_EQ(child->parent(), nullptr);

    first = item();
    first->addChild(std::move(child));
    EXPECT_NE(watched.get(), nullptr);
    const auto list = first->children();
    first = nullptr;
    EXPECT_EQ(list->objectAtIndex(0), watched.get()) << "as long as somebody has the list";
    list->removeAllObjects();
    EXPECT_EQ(watched.get(), nullptr);
}

TEST(ZuOutlineItemTest, IsDestroyedHoweverWideAndDeepTheTree)
{
    Ref<ZuOutlineItem> root = make<ZuOutlineItem>()->init();
    for (int i = 0; i < 1000; ++i) {
        const Ref<ZuOutlineItem> group = make<ZuOutlineItem>()->init();
        root->addChild(group);
        for (int j = 0; j < 1000; ++j) {
            group->addChild(make<ZuOutlineItem>()->init());
        }
    }
    const Weak<ZuOutlineItem> last = root->childAtIndex(999)->childAtIndex(999);
    ASSERT_NE(last.get(), nullptr);
    root = nullptr;
    EXPECT_EQ(last.get(), nullptr);

    for (const bool byList : {true, false}) {
        root = make<ZuOutlineItem>()->init();
        Ref<ZuOutlineItem> deepest = root;
        for (int i = 0; i < 300'000; ++i) {
            const Ref<ZuOutlineItem> next = make<ZuOutlineItem>()->init();
            deepest->addChild(next);
            deepest = next;
        }
        const Weak<ZuOutlineItem> watched = deepest;
        deepest = nullptr;
        if (byList) {
            root->removeAllChildren();
            EXPECT_EQ(watched.get(), nullptr);
        }
        root = nullptr;
        EXPECT_EQ(watched.get(), nullptr);
    }
}

} // namespace
