#include "platform/foundation/NSMutableArray.h"

#include "support/Drawing.h"

#include <gtest/gtest.h>

namespace
{

/// Counts what is in a list when it dies.
class Mourner : public NSObject
{
public:
    Mourner(const NSMutableArray<NSObject>& list, std::size_t& left) : _list(list), _left(left) {}

protected:
    ~Mourner() override { _left = _list.count(); }

private:
    const NSMutableArray<NSObject>& _list;
    std::size_t& _left;
};

TEST(NSMutableArrayTest, IsWholeWhileItLosesObjects)
{
    const Ref<NSMutableArray<NSObject>> list = make<NSMutableArray<NSObject>>();
    std::size_t left = 0;
    list->addObject(nullptr);
    list->addObject(make<NSObject>());
    for (int i = 0; i < 2; ++i) {
        list->addObject(make<Mourner>(*list, left));
    }
    EXPECT_EQ(list->count(), 3U);
    list->removeObjectIdenticalTo(list->objectAtIndex(2));
    EXPECT_EQ(left, 2U);
    list->removeObjectAtIndex(1);
    EXPECT_EQ(left, 1U);
    list->insertObject_atIndex(make<Mourner>(*list, left), 0);
    list->replaceObjectAtIndex_withObject(0, make<Mourner>(*list, left));
    EXPECT_EQ(left, 2U);
    list->removeAllObjects();
    EXPECT_EQ(left, 0U);
}

TEST(NSMutableArrayTest, IsChangedAtIndexesThatItHas)
{
    const Ref<NSMutableArray<NSString>> list = make<NSMutableArray<NSString>>();
    list->insertObject_atIndex(text("C"), 0);
    list->insertObject_atIndex(text("A"), 0);
    list->insertObject_atIndex(text("A"), 1);
    list->replaceObjectAtIndex_withObject(2, text("B"));
    list->insertObject_atIndex(nullptr, 0);
    list->replaceObjectAtIndex_withObject(0, nullptr);

    testing::internal::CaptureStderr();
    list->insertObject_atIndex(text("D"), 4);
    list->replaceObjectAtIndex_withObject(3, text("D"));
    list->removeObjectAtIndex(3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "insertObject: index 4 is behind the end of 3 objects\n"
              "replaceObjectAtIndex: index 3 is behind the end of 3 objects\n"
              "removeObjectAtIndex: index 3 is behind the end of 3 objects\n");
    std::string entries;
    for (const Ref<NSString>& entry : *list) {
        entries += utf8(entry);
    }
    EXPECT_EQ(entries, "AAB");
    EXPECT_EQ(list->indexOfObject(text("A").get()), 0U);
    EXPECT_EQ(list->indexOfObject(text("B").get()), 2U);
    EXPECT_EQ(list->indexOfObject(text("C").get()), NSNotFound);
    EXPECT_EQ(list->indexOfObject(nullptr), NSNotFound);
}

} // namespace
