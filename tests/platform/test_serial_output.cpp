#include "platform/serial_fixture.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>

#include <gtest/gtest.h>
#include <termios.h>
#include <thread>

namespace harvelop::test
{

TEST_F(SerialControl, OutputLeavesWhenEventsNextRun)
{
    ASSERT_EQ(port.Open(), PortOk);
    port.Output("TEST0\r\n");
    EXPECT_EQ(device.Received(), "");
    port.ClearInBuffer();
    pump.ServePending();
    EXPECT_EQ(device.Received(1000), "TEST0\r\n");
    port.Output("a");
    port.Output("b");
    pump.ServeFor(1);
    EXPECT_EQ(device.Received(1000), "ab");
}

TEST_F(SerialControl, OutputFromAnEventLeavesWithoutAnother)
{
    ASSERT_EQ(port.Open(), PortOk);
    for (const bool fromTimer : {true, false}) {
        if (fromTimer)
            QTimer::singleShot(0, &pump, [this] { port.Output("text"); });
        else
            QMetaObject::invokeMethod(
                &pump, [this] { port.Output("text"); }, Qt::QueuedConnection);
        std::string sent;
        EXPECT_TRUE(ServeUntil([&] { return (sent += device.Received()).size() == 4; }));
        EXPECT_EQ(sent, "text");
    }
}

// What wakes the loop and what is then served are two passes apart.
TEST_F(SerialControl, OutputInsideALoopLeavesBeforeTheLoopSleeps)
{
    ASSERT_EQ(port.Open(), PortOk);
    for (int round = 0; round < 20; ++round) {
        QEventLoop loop;
        QSocketNotifier sent(device.Device(), QSocketNotifier::Read);
        QObject::connect(&sent, &QSocketNotifier::activated, [&] { loop.quit(); });
        QTimer::singleShot(10'000, &loop, [&] {
            ADD_FAILURE() << "nothing has left";
            loop.quit();
        });
        std::thread other([&] {
            QMetaObject::invokeMethod(
                &loop, [&] { port.Output("key"); }, Qt::QueuedConnection);
        });
        loop.exec();
        other.join();
        EXPECT_EQ(device.Received(), "key");
    }
}

TEST_F(SerialControl, OutputWaitsForADeviceThatTakesNoMore)
{
    ASSERT_EQ(port.Open(), PortOk);
    const int slave = ::open(device.Name().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    size_t filled = 0;
    while (slave >= 0 && write(slave, "x", 1) == 1)
        ++filled;
    close(slave);
    port.Output("late");
    pump.ServePending();
    EXPECT_TRUE(port.PortOpen());
    std::string sent;
    EXPECT_TRUE(ServeUntil([&] { return (sent += device.Received()).size() >= filled + 4; }));
    EXPECT_EQ(sent, std::string(filled, 'x') + "late");
}

TEST_F(SerialControl, MoreThanTheDeviceTakesAtOnceStillArrivesWhole)
{
    ASSERT_EQ(port.Open(), PortOk);
    std::string text;
    for (int line = 0; line < 5000; ++line)
        text += std::to_string(line) + "\r\n";
    port.Output(std::string_view(text).substr(0, 20'000));
    pump.ServePending();
    port.Output(std::string_view(text).substr(20'000));
    std::string sent;
    EXPECT_TRUE(ServeUntil([&] { return (sent += device.Received()).size() >= text.size(); }));
    EXPECT_EQ(sent, text);
}

TEST_F(SerialControl, ClearedAndLateOutputNeverLeaves)
{
    port.Output("closed");
    ASSERT_EQ(port.Open(), PortOk);
    port.Output("cleared");
    port.ClearOutBuffer();
    ServeAWhile();
    EXPECT_EQ(device.Received(), "");
    port.Output("at the end");
    port.ClearOutBuffer();
    port.Close();
    port.Output("closed");
    ServeAWhile();
    EXPECT_EQ(device.Received(), "");
}

TEST_F(SerialControl, QueuedOutputLeavesBeforeThePortCloses)
{
    for (const bool servedBefore : {false, true}) {
        ASSERT_EQ(port.Open(), PortOk);
        port.Output("/h/R/U/N\r\n\r\n");
        if (servedBefore)
            pump.ServePending();
        port.Close();
        EXPECT_EQ(device.Received(1000), "/h/R/U/N\r\n\r\n");
    }
}

TEST_F(SerialControl, OpeningAnewLosesNothingThatWasSent)
{
    const std::string before(8'000, 'x'); // more than the device has taken in by then
    ASSERT_EQ(port.Open(), PortOk);
    port.Output(before);
    ASSERT_EQ(port.Open(), PortOk);
    std::string sent;
    EXPECT_TRUE(ServeUntil([&] { return (sent += device.Received()).size() >= before.size(); }));
}

TEST_F(SerialControl, ClosingSendsWithoutServingEvents)
{
    ASSERT_EQ(port.Open(), PortOk);
    int served = 0;
    QTimer::singleShot(0, &pump, [&] { ++served; });
    device.Send("reply");
    port.Output("last");
    port.Close();
    EXPECT_EQ(served, 0);
    EXPECT_EQ(raised, 0);
}

TEST_F(SerialControl, ClosingWaitsForADeviceThatTakesItSlowlyButNotForOneThatNeverDoes)
{
    const std::string text(20'000, 'x'); // more than a line without a reader holds
    ASSERT_EQ(port.Open(), PortOk);
    port.Output(text);
    std::string sent;
    std::thread reader([&] {
        while (sent.size() < text.size()) {
            const std::string more = device.Received(5'000);
            if (more.empty())
                break;
            sent += more;
        }
    });
    port.Close();
    reader.join();
    EXPECT_EQ(sent, text);

    ASSERT_EQ(port.Open(), PortOk);
    port.Output(text);
    QElapsedTimer clock;
    clock.start();
    port.Close();
    EXPECT_LT(clock.elapsed(), 5'000);
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialControl, OnlyXonEndsAnXoff)
{
    port.Handshaking(1);
    ASSERT_EQ(port.Open(), PortOk);
    const auto flow = [&] {
        termios line{};
        EXPECT_EQ(tcgetattr(device.Device(), &line), 0);
        return line.c_iflag & (IXON | IXOFF | IXANY);
    };
    EXPECT_EQ(flow(), unsigned(IXON | IXOFF));
    port.Settings("1200,E,7,2");
    EXPECT_EQ(flow(), unsigned(IXON | IXOFF));
    port.Handshaking(0);
    EXPECT_EQ(flow(), 0U);
    port.Handshaking(1);
    EXPECT_EQ(flow(), unsigned(IXON | IXOFF));
}

TEST_F(SerialControl, XoffHoldsOutputUntilXon)
{
    port.Handshaking(1);
    ASSERT_EQ(port.Open(), PortOk);
    device.Send("\x13reply");
    ASSERT_TRUE(ServeUntil([&] { return arrived == "reply"; }));
    port.Output("held");
    ServeAWhile();
    EXPECT_TRUE(port.PortOpen());
    EXPECT_EQ(device.Received(), "");
    device.Send("\x11");
    std::string sent;
    EXPECT_TRUE(ServeUntil([&] { return (sent += device.Received()).size() >= 4; }));
    EXPECT_EQ(sent, "held");
}

TEST_F(SerialControl, XoffDoesNotHoldTheClosingUp)
{
    port.Handshaking(1);
    ASSERT_EQ(port.Open(), PortOk);
    device.Send("\x13reply");
    ASSERT_TRUE(ServeUntil([&] { return arrived == "reply"; }));
    for (const char* text : {"served", "queued"}) {
        port.Output(text);
        pump.ServePending();
    }
    QElapsedTimer clock;
    clock.start();
    port.Close();
    EXPECT_LT(clock.elapsed(), 5'000);
    EXPECT_EQ(port.Open(), PortOk);
    EXPECT_EQ(device.Received(), "");
}

} // namespace harvelop::test
