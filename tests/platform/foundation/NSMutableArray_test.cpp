#include "platform/foundation/NSMutableArray.h"

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
    list->removeAllObjects();
    EXPECT_EQ(left, 0U);
}

} // namespace
