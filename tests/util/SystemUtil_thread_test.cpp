#include "support/EnvironmentVariable.h"
#include "util/SystemUtil.h"
#include "util/SystemUtilState.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <ctime>
#include <thread>
#include <vector>

namespace
{

TEST(TaskIdentifierTest, AreDistinctAndDenseFromTheFirstCallOn)
{
    constexpr std::size_t kThreads = 8;
    constexpr std::size_t kEach = 1'000'000;
    const SystemUtilState state = systemUtilState();
    ASSERT_EQ(state.gTaskAddId, 0) << "begins in a new process";
    std::vector<std::int64_t> identifiers(kThreads * kEach);
    std::atomic<std::size_t> ready{0};
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            ++ready;
            while (ready < kThreads) { // so that the first calls come together
            }
            std::generate_n(identifiers.begin() + static_cast<std::ptrdiff_t>(thread * kEach), kEach,
                            &SystemUtil::getTaskId);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        const auto own = identifiers.begin() + static_cast<std::ptrdiff_t>(thread * kEach);
        EXPECT_TRUE(std::is_sorted(own, own + static_cast<std::ptrdiff_t>(kEach)));
    }
    std::ranges::sort(identifiers);
    for (std::size_t i = 0; i < identifiers.size(); ++i) {
        ASSERT_EQ(identifiers[i], static_cast<std::int64_t>(i) + 1);
    }

    static bool ranAgain;
    ranAgain = false;
    pthread_once(&state.random_is_initialized, [] { ranAgain = true; });
    EXPECT_FALSE(ranAgain) << "the mutex has been made";
}

TEST(TaskIdentifierTest, TakeANewBaseFromTheClockWhenTheyRunOut)
{
    const EnvironmentVariable zone("TZ", "Asia/Tokyo");
    constexpr std::int64_t kScale = 10'000'000'000;
    const SystemUtilState state = systemUtilState();
    const auto baseNow = [] {
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        localtime_r(&now, &local);
        return ((local.tm_mday * 100 + local.tm_hour) * 100 + local.tm_min) * std::int64_t{100} +
               local.tm_sec;
    };
    state.gTaskStartSecond = 5 * kScale;
    state.gTaskAddId = 2147483645;
    EXPECT_EQ(SystemUtil::getTaskId(), 5 * kScale + 2147483646);
    // The clock may move on meanwhile: then another try finds it at rest.
    std::int64_t base = 0;
    std::int64_t before = -1;
    for (std::int64_t after = 0; before != after; after = baseNow()) {
        state.gTaskAddId = 2147483646;
        tzset();
        before = baseNow();
        base = SystemUtil::getTaskId();
    }
    EXPECT_EQ(base, before * kScale);
    EXPECT_EQ(SystemUtil::getTaskId(), base + 1);
    EXPECT_EQ(SystemUtil::getTaskId(), base + 2);
    EXPECT_EQ(state.gTaskStartSecond, base);
    state.gTaskStartSecond = 0;
    state.gTaskAddId = 0;
}

} // namespace
