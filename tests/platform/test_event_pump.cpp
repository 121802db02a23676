#include "platform/qt/qt_event_pump.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTime>
#include <QTimer>

#include <gtest/gtest.h>
#include <thread>

namespace harvelop::test
{

namespace
{

constexpr double Long = 20'000; // far beyond what any of these tests takes
constexpr double Short = 20;

// Waits as `WaitMs` does; gives how often the pump returned.
int Wait(QtEventPump& pump, double ms)
{
    QElapsedTimer clock;
    clock.start();
    int passes = 0;
    for (double left = ms; left > 0; left = ms - static_cast<double>(clock.nsecsElapsed()) / 1e6, ++passes)
        pump.ServeFor(left);
    return passes;
}

void Post(std::function<void()> event)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(event), Qt::QueuedConnection);
}

struct EventPump : testing::Test {
    QtEventPump pump;
    QElapsedTimer clock;

    void SetUp() override { clock.start(); }
};

} // namespace

TEST_F(EventPump, TimerGivesSecondsSinceMidnight)
{
    const double expected = QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
    const double seconds = pump.Timer();
    EXPECT_GE(seconds, 0);
    EXPECT_LT(seconds, 86400);
    EXPECT_NEAR(std::remainder(seconds - expected, 86400), 0, 2);
    Wait(pump, Short);
    EXPECT_NEAR(std::remainder(pump.Timer() - seconds, 86400), Short / 1000, 5);
    EXPECT_NE(pump.Timer(), seconds);
}

TEST_F(EventPump, ServePendingServesAndDoesNotBlock)
{
    QTimer later;
    later.start(static_cast<int>(Long));
    int served = 0;
    Post([&] { ++served; });
    pump.ServePending();
    EXPECT_EQ(served, 1);
    pump.ServePending();
    EXPECT_LT(clock.elapsed(), Long / 2);
}

TEST_F(EventPump, ServeForSleepsUntilItsLimit)
{
    const int passes = Wait(pump, Short);
    EXPECT_GE(clock.elapsed(), Short);
    EXPECT_LT(clock.elapsed(), Long);
    EXPECT_LT(passes, 10);
}

TEST_F(EventPump, ServeForNothingDoesNotBlock)
{
    bool served = false;
    Post([&] { served = true; });
    pump.ServeFor(0);
    EXPECT_TRUE(served);
    pump.ServeFor(-5);
    EXPECT_LT(clock.elapsed(), Long / 2);
}

TEST_F(EventPump, ShorterWaitAfterLongerOneIsNotLate)
{
    Post([] {});
    pump.ServeFor(Long);
    Wait(pump, Short);
    EXPECT_LT(clock.elapsed(), Long / 2);
}

TEST_F(EventPump, ServedTimerEndsServeFor)
{
    bool served = false;
    QTimer::singleShot(5, &pump, [&] { served = true; });
    while (!served)
        pump.ServeFor(Long);
    EXPECT_LT(clock.elapsed(), Long / 2);
}

// What wakes the loop and what is then served are two passes apart: the second must not go to sleep.
TEST_F(EventPump, EventFromOutsideEndsServeForAsSoonAsItIsServed)
{
    for (int round = 0; round < 20; ++round) {
        bool served = false;
        std::thread other([&] { Post([&] { served = true; }); });
        while (!served)
            pump.ServeFor(Long);
        other.join();
    }
    EXPECT_LT(clock.elapsed(), Long / 2);
}

TEST_F(EventPump, WaitInsideAnEventEndsTheWaitAroundIt)
{
    bool inner = false;
    Post([&] {
        Wait(pump, Short);
        inner = true;
    });
    pump.ServeFor(Long);
    EXPECT_TRUE(inner);
    EXPECT_LT(clock.elapsed(), Long / 2);
}

TEST_F(EventPump, LoopInsideAnEventSleeps)
{
    int passes = 0;
    const auto counting = QObject::connect(QAbstractEventDispatcher::instance(),
                                           &QAbstractEventDispatcher::aboutToBlock, [&] { ++passes; });
    Post([] {
        QEventLoop loop;
        QTimer::singleShot(static_cast<int>(Short), &loop, [&] { loop.quit(); });
        loop.exec();
    });
    pump.ServeFor(Long);
    QObject::disconnect(counting);
    EXPECT_LT(passes, 20);
    EXPECT_LT(clock.elapsed(), Long / 2);
}

TEST_F(EventPump, LoopAroundAWaitSleepsAfterIt)
{
    int passes = 0;
    int ticks = 0;
    QEventLoop loop;
    QTimer ticking;
    QObject::connect(&ticking, &QTimer::timeout, [&] {
        if (++ticks == 20)
            loop.quit();
    });
    Post([&] {
        Wait(pump, 1);
        ticking.start(2);
    });
    const auto counting = QObject::connect(QAbstractEventDispatcher::instance(),
                                           &QAbstractEventDispatcher::aboutToBlock, [&] { ++passes; });
    loop.exec();
    QObject::disconnect(counting);
    EXPECT_LT(passes, 35);
}

TEST_F(EventPump, WaitsInsideExecAndAfterQuitKeepTheirTime)
{
    double waited = 0;
    int passes = 0;
    QTimer::singleShot(0, &pump, [&] {
        Wait(pump, Short);
        QCoreApplication::quit();
        clock.restart();
        passes = Wait(pump, Short);
        waited = static_cast<double>(clock.elapsed());
    });
    QCoreApplication::exec();
    EXPECT_GE(waited, Short);
    EXPECT_LT(waited, Long / 2);
    EXPECT_LT(passes, 10);
}

TEST_F(EventPump, QuitFromWithinWaitsAndLoopsReachesTheOutermostLoop)
{
    bool ended = false;
    Post([&] {
        QEventLoop dialog;
        QTimer::singleShot(5, &dialog, [&] {
            Wait(pump, Short);
            Post([&] {
                Wait(pump, Short);
                QCoreApplication::quit();
                Wait(pump, Short);
                pump.ServePending();
            });
        });
        dialog.exec();
        ended = true;
    });
    QCoreApplication::exec();
    EXPECT_TRUE(ended);
    EXPECT_LT(clock.elapsed(), Long / 2);
}

TEST_F(EventPump, StartedProgramsChooseTheirOwnDispatcher)
{
    EXPECT_FALSE(qEnvironmentVariableIsSet("QT_NO_GLIB"));
}

} // namespace harvelop::test
