#include "platform/foundation/NSObject.h"

#include "platform/foundation/Weak.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

namespace
{

class Watched : public NSObject
{
public:
    explicit Watched(std::function<void(Watched&)> atEnd) : _atEnd(std::move(atEnd)) {}

protected:
    ~Watched() override { _atEnd(*this); }

private:
    std::function<void(Watched&)> _atEnd;
};

TEST(NSObjectTest, DiesWithItsLastReferenceAndMayReferToItselfMeanwhile)
{
    for (const bool knownBefore : {true, false}) {
        int deaths = 0;
        Weak<Watched> before;
        Ref<Watched> first = make<Watched>([&](Watched& self) {
            ++deaths;
            const Ref<Watched> again(&self); // as when it is looked up in a list that still has it
            EXPECT_EQ(Weak<Watched>(&self).get(), nullptr);
        });
        if (knownBefore) {
            before = first;
        }
        Ref<NSObject> second = first;
        first = nullptr;
        Ref<NSObject> third = std::move(second);
        third = Ref<NSObject>(third);
        EXPECT_EQ(deaths, 0);
        third = nullptr;
        EXPECT_EQ(deaths, 1);
        EXPECT_EQ(before.get(), nullptr);
    }
}

TEST(NSObjectTest, IsCountedFromManyThreads)
{
    std::atomic<int> deaths = 0;
    for (int round = 0; round < 200; ++round) {
        Ref<Watched> object = make<Watched>([&](Watched&) { ++deaths; });
        std::array<std::jthread, 4> threads;
        for (std::jthread& thread : threads) {
            thread = std::jthread([mine = object, weak = Weak<Watched>(object)]() mutable {
                for (int j = 0; j < 50; ++j) {
                    Ref<Watched> shared;
                    shared = mine;
                    EXPECT_EQ(weak.get(), shared);
                }
                mine = nullptr;
                while (weak.get()) { // until the others have let go, too
                }
            });
        }
        object = nullptr;
    }
    EXPECT_EQ(deaths, 200);
}

} // namespace
