#include "platform/Timer.h"

#include <QTest>
#include <chrono>

#include <gtest/gtest.h>

#include "platform/Application.h"

namespace larder {
namespace {

TEST(ATimer, TicksAtItsIntervalWhileItIsEnabled) {
    Timer timer(20);
    int ticks = 0;
    timer.OnTimer = [&] { ++ticks; };
    EXPECT_EQ(timer.Interval(), 20);
    EXPECT_FALSE(timer.Enabled());
    QTest::qWait(60);
    EXPECT_EQ(ticks, 0);
    const auto start = std::chrono::steady_clock::now();
    timer.SetEnabled(true);
    EXPECT_TRUE(timer.Enabled());
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks >= 3; }, 5000));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(55));
    timer.SetEnabled(false);
    const int before = ticks;
    QTest::qWait(60);
    EXPECT_EQ(ticks, before);
}

TEST(ATimer, MayStopItselfInItsTick) {
    Timer timer(5);
    int ticks = 0;
    timer.OnTimer = [&] {
        ++ticks;
        timer.SetEnabled(false);
    };
    timer.SetEnabled(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks > 0; }, 2000));
    QTest::qWait(30);
    EXPECT_EQ(ticks, 1);
}

TEST(ATimer, NoTickComesWithinATick) {
    Timer timer(2);
    int depth = 0;
    int deepest = 0;
    int ticks = 0;
    timer.OnTimer = [&] {
        ++ticks;
        deepest = std::max(deepest, ++depth);
        QTest::qWait(20);
        --depth;
    };
    timer.SetEnabled(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks >= 2; }, 5000));
    timer.SetEnabled(false);
    EXPECT_EQ(deepest, 1);
}

TEST(ATimer, EnablingItAgainDoesNotPutOffItsTick) {
    Timer timer(60);
    int ticks = 0;
    timer.OnTimer = [&] { ++ticks; };
    timer.SetEnabled(true);
    for (int i = 0; i < 40 && ticks == 0; ++i) {
        QTest::qWait(10);
        timer.SetEnabled(true);
    }
    EXPECT_GE(ticks, 1);
}

}  // namespace
}  // namespace larder
