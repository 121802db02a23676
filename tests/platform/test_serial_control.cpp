#include "platform/child_process.h"
#include "platform/pseudo_terminal.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_serial_control.h"
#include "support/fake_desktop.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>

#include <fstream>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <thread>

namespace harvelop::test
{

namespace
{

struct SerialControl : testing::Test {
    PseudoTerminal device;
    MemorySettings settings;
    QtEventPump pump;
    QtSerialControl port{settings};
    std::string arrived;
    int raised = 0;

    void SetUp() override
    {
        settings.Save("Harvel", "ComPorts", "3", device.Name());
        port.CommPort(3);
        port.RThreshold(1);
        port.InBufferSize(2048);
        port.OnComm = [this] { drain(); };
    }

    // As the program's link layer takes what arrives.
    void drain()
    {
        ++raised;
        EXPECT_EQ(port.CommEvent, CommEventReceived);
        port.RThreshold(0);
        while (port.InBufferCount() >= 1)
            arrived += port.Input();
        port.RThreshold(1);
    }

    // Serves events until `done` or far too long.
    template <class Done> bool ServeUntil(Done done)
    {
        QElapsedTimer clock;
        clock.start();
        while (!done() && clock.elapsed() < 10'000)
            pump.ServeFor(1000);
        return done();
    }
    // Serves events for a little while; gives how often any were served.
    int ServeAWhile()
    {
        QElapsedTimer clock;
        clock.start();
        int passes = 0;
        for (; clock.elapsed() < 50; ++passes)
            pump.ServeFor(50 - static_cast<double>(clock.elapsed()));
        return passes;
    }
};

} // namespace

TEST_F(SerialControl, StartsClosedWithTheUsualSettings)
{
    EXPECT_FALSE(port.PortOpen());
    EXPECT_EQ(port.Settings(), "9600,N,8,1");
    EXPECT_EQ(port.CommPort(), 3);
    EXPECT_EQ(port.DeviceName(3), device.Name());
    EXPECT_EQ(port.DeviceName(17), "");
    port.Close();
}

TEST_F(SerialControl, AbsentPortIsToldAndStaysClosed)
{
    settings.Save("Harvel", "ComPorts", "3", "/dev/none");
    EXPECT_EQ(port.Open(), PortAbsent);
    settings.Save("Harvel", "ComPorts", "3", "");
    EXPECT_EQ(port.Open(), PortAbsent);
    port.CommPort(99);
    EXPECT_EQ(port.Open(), PortAbsent);
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialControl, BusyPortIsToldWithItsHolderAndStaysClosed)
{
    const ChildProcess other([&] { flock(::open(device.Name().c_str(), O_RDWR | O_NOCTTY), LOCK_EX); });
    EXPECT_EQ(port.Open(), PortBusy);
    EXPECT_EQ(port.Holder(), "test_platform (process " + std::to_string(other.Id()) + ")");
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialControl, LeftoverLockFileOfAnotherUserIsAMatterOfPermission)
{
    ASSERT_EQ(chmod(device.Name().c_str(), 0666), 0);
    ChildProcess ended([] {});
    const std::string path = "/run/lock/LCK..pts_" + device.Name().substr(device.Name().rfind('/') + 1);
    std::ofstream(path) << ended.Id() << "\ntest_platform\nhost\n";
    ended.Kill();
    struct stat folder {
    };
    const bool sticky =
        stat("/run/lock", &folder) == 0 && (folder.st_mode & (S_ISVTX | S_IWOTH)) == (S_ISVTX | S_IWOTH);
    if (geteuid() == 0 && sticky) {
        const PlainUser user;
        EXPECT_EQ(port.Open(), PortNoPermission);
        EXPECT_EQ(port.Holder(), "");
    }
    unlink(path.c_str());
    if (geteuid() != 0 || !sticky)
        GTEST_SKIP() << "there is no other user whose file stays";
}

TEST_F(SerialControl, PortOfAKilledProgramIsFreeThoughSomebodyElseHasItOpen)
{
    const int other = ::open(device.Name().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_EQ(port.Open(), PortOk);
    int exclusive = -1;
    EXPECT_EQ(ioctl(other, TIOCGEXCL, &exclusive), 0);
    EXPECT_EQ(exclusive, 0);
    close(other);
}

TEST_F(SerialControl, TwoControlsCannotShareAPort)
{
    QtSerialControl second(settings);
    second.CommPort(3);
    EXPECT_EQ(port.Open(), PortOk);
    EXPECT_EQ(second.Open(), PortBusy);
    port.Close();
    EXPECT_EQ(second.Open(), PortOk);
}

TEST_F(SerialControl, OpensAgainAndAgain)
{
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(port.Open(), PortOk);
        EXPECT_TRUE(port.PortOpen());
    }
    port.Close();
    port.Close();
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(SerialControl, SetsEverySpeedExactly)
{
    for (const int baud : {300, 600, 1200, 2400, 4800, 9600, 14400, 19200, 28800, 38400, 56000, 57600, 115200}) {
        port.Settings(std::to_string(baud) + ",N,8,1");
        ASSERT_EQ(port.Open(), PortOk);
        EXPECT_EQ(device.Speed(), baud);
        port.Close();
    }
}

TEST_F(SerialControl, SettingsOnAnOpenPortTakeEffectAtOnce)
{
    ASSERT_EQ(port.Open(), PortOk);
    EXPECT_EQ(device.Speed(), 9600);
    for (const int baud : {56000, 1200, 14400, 28800}) {
        port.Settings(std::to_string(baud) + ",N,8,1");
        EXPECT_EQ(device.Speed(), baud);
    }
}

TEST_F(SerialControl, WhatTheDeviceRefusesDoesNotEndTheLink)
{
    for (const char* line : {"14400,E,7,2", "14400,M,5,1.5", "14400,O,8,1"}) {
        port.Settings(line);
        port.Handshaking(2);
        port.RTSEnable(true);
        ASSERT_EQ(port.Open(), PortOk) << line;
        EXPECT_EQ(device.Speed(), 14400) << line;
        port.Settings(std::string("28800") + (line + 5));
        port.Handshaking(1);
        port.Handshaking(0);
        port.RTSEnable(false);
        EXPECT_EQ(device.Speed(), 28800) << line;
        ServeAWhile();
        EXPECT_TRUE(port.PortOpen()) << line;
    }
}

// With nothing else to change, the refusal of one setting is the refusal of all.
TEST_F(SerialControl, RefusedSettingDoesNotKeepThePortFromOpening)
{
    ASSERT_EQ(port.Open(), PortOk);
    termios line{};
    ASSERT_EQ(tcgetattr(device.Device(), &line), 0);
    port.Close();
    ASSERT_EQ(tcsetattr(device.Device(), TCSANOW, &line), 0);
    port.Settings("9600,E,7,1");
    EXPECT_EQ(port.Open(), PortOk);
}

TEST_F(SerialControl, UnreadableSettingsChangeNothing)
{
    port.Settings("1200,N,8,1");
    ASSERT_EQ(port.Open(), PortOk);
    for (const char* text : {"", ",,,", "rubbish", "9600,N,8"}) {
        port.Settings(text);
        EXPECT_EQ(port.Settings(), "1200,N,8,1");
        EXPECT_EQ(device.Speed(), 1200);
    }
}

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

TEST_F(SerialControl, ArrivalRaisesOnCommFromThePumpOnly)
{
    ASSERT_EQ(port.Open(), PortOk);
    device.Send(std::string_view("reply\0\xff", 7));
    EXPECT_EQ(port.Input(), "");
    EXPECT_EQ(raised, 0);
    EXPECT_TRUE(ServeUntil([&] { return arrived.size() >= 7; }));
    EXPECT_EQ(arrived, std::string("reply\0\xff", 7));
}

TEST_F(SerialControl, ArrivalInsideANestedWaitIsRaised)
{
    ASSERT_EQ(port.Open(), PortOk);
    bool inner = false;
    QTimer::singleShot(0, &pump, [&] {
        device.Send("nested");
        inner = ServeUntil([&] { return arrived == "nested"; });
    });
    EXPECT_TRUE(ServeUntil([&] { return inner; }));
}

TEST_F(SerialControl, ThresholdZeroHoldsTextUntilTheNextArrival)
{
    ASSERT_EQ(port.Open(), PortOk);
    port.RThreshold(0);
    device.Send("held ");
    EXPECT_TRUE(ServeUntil([&] { return port.InBufferCount() == 5; }));
    EXPECT_EQ(raised, 0);
    port.RThreshold(1);
    ServeAWhile();
    EXPECT_EQ(raised, 0);
    device.Send("back");
    EXPECT_TRUE(ServeUntil([&] { return arrived.size() >= 9; }));
    EXPECT_EQ(arrived, "held back");
}

TEST_F(SerialControl, ClearInBufferDropsWhatControlAndDeviceHold)
{
    ASSERT_EQ(port.Open(), PortOk);
    port.RThreshold(0);
    device.Send("in the control");
    ASSERT_TRUE(ServeUntil([&] { return port.InBufferCount() == 14; }));
    // Seen by the system, but not yet taken by the control.
    device.Send("in the system");
    const int slave = ::open(device.Name().c_str(), O_RDWR | O_NOCTTY);
    int waiting = 0;
    while (slave >= 0 && waiting < 13)
        ASSERT_EQ(ioctl(slave, FIONREAD, &waiting), 0);
    close(slave);
    port.ClearInBuffer();
    EXPECT_EQ(port.InBufferCount(), 0);
    port.RThreshold(1);
    device.Send("fresh");
    EXPECT_TRUE(ServeUntil([&] { return arrived.size() >= 5; }));
    EXPECT_EQ(arrived, "fresh");
}

TEST_F(SerialControl, TextFromBeforeTheOpeningIsDropped)
{
    const int slave = ::open(device.Name().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    device.Send("stale\n");
    int waiting = 0;
    while (slave >= 0 && waiting < 6)
        ASSERT_EQ(ioctl(slave, FIONREAD, &waiting), 0);
    ASSERT_EQ(port.Open(), PortOk);
    close(slave);
    device.Send("fresh");
    EXPECT_TRUE(ServeUntil([&] { return arrived.size() >= 5; }));
    EXPECT_EQ(arrived, "fresh");
}

TEST_F(SerialControl, FullBufferThatWasClearedReceivesAgain)
{
    port.InBufferSize(16);
    ASSERT_EQ(port.Open(), PortOk);
    port.RThreshold(0);
    device.Send(std::string(100, 'x'));
    ASSERT_TRUE(ServeUntil([&] { return port.InBufferCount() == 16; }));
    ServeAWhile();
    EXPECT_EQ(port.InBufferCount(), 16);
    port.ClearInBuffer();
    port.RThreshold(1);
    device.Send("fresh");
    EXPECT_TRUE(ServeUntil([&] { return arrived.size() >= 5; }));
    EXPECT_EQ(arrived, "fresh");
}

TEST_F(SerialControl, FullBufferThatWasHeldIsTakenWhenTheThresholdReturns)
{
    port.InBufferSize(16);
    ASSERT_EQ(port.Open(), PortOk);
    port.RThreshold(0);
    device.Send(std::string(100, 'x'));
    ASSERT_TRUE(ServeUntil([&] { return port.InBufferCount() == 16; }));
    port.RThreshold(1);
    EXPECT_EQ(raised, 0);
    EXPECT_TRUE(ServeUntil([&] { return arrived.size() == 100; }));
}

TEST_F(SerialControl, VanishedPortClosesOnceAndQuietly)
{
    ASSERT_EQ(port.Open(), PortOk);
    port.RThreshold(0);
    device.Send("held");
    ASSERT_TRUE(ServeUntil([&] { return port.InBufferCount() == 4; }));
    device.Vanish();
    EXPECT_TRUE(ServeUntil([&] { return !port.PortOpen(); }));
    EXPECT_EQ(port.InBufferCount(), 0);
    EXPECT_LT(ServeAWhile(), 10);
    port.Output("into the void");
    port.ClearInBuffer();
    port.ClearOutBuffer();
    port.Settings("1200,N,8,1");
    port.RTSEnable(true);
    EXPECT_LT(ServeAWhile(), 10);
    EXPECT_EQ(port.Input(), "");
    EXPECT_EQ(port.Open(), PortAbsent);
}

TEST_F(SerialControl, PortThatVanishesBeforeItIsServedTakesNoHarm)
{
    ASSERT_EQ(port.Open(), PortOk);
    port.Output("TEST0\r\n");
    device.Vanish();
    port.Settings("1200,E,7,1");
    port.ClearInBuffer();
    port.ClearOutBuffer();
    port.Output("TEST0\r\n");
    pump.ServePending();
    EXPECT_TRUE(ServeUntil([&] { return !port.PortOpen(); }));
    EXPECT_LT(ServeAWhile(), 10);
}

TEST_F(SerialControl, FloodLeavesRoomForOtherEventsAndDoesNotGrow)
{
    const ChildProcess flooding([] {},
                                [&] {
                                    const std::string garbage(4096, '\xa5');
                                    while (write(device.Device(), garbage.data(), garbage.size()) != 0)
                                        continue;
                                });
    ASSERT_EQ(port.Open(), PortOk);
    size_t largest = 0;
    size_t all = 0;
    port.OnComm = [&] {
        const std::string text = port.Input();
        largest = std::max(largest, text.size());
        all += text.size();
    };
    int ticks = 0;
    QTimer clicks;
    QObject::connect(&clicks, &QTimer::timeout, [&] { ++ticks; });
    clicks.start(1);
    EXPECT_TRUE(ServeUntil([&] { return ticks >= 50 && all > 100'000; }));
    EXPECT_LE(largest, 2048U);
    port.RThreshold(0);
    ticks = 0;
    EXPECT_TRUE(ServeUntil([&] { return ticks >= 50; }));
    EXPECT_LE(port.InBufferCount(), 2048);
    port.Close();
    EXPECT_EQ(port.InBufferCount(), 0);
}

TEST_F(SerialControl, OneByteAtATimeArrivesWhole)
{
    ASSERT_EQ(port.Open(), PortOk);
    const std::string reply = "<<KR400>>\r\n";
    size_t sent = 0;
    QTimer typing;
    QObject::connect(&typing, &QTimer::timeout, [&] {
        if (sent < reply.size())
            device.Send(std::string_view(reply).substr(sent++, 1));
    });
    typing.start(1);
    EXPECT_TRUE(ServeUntil([&] { return arrived.size() >= reply.size(); }));
    EXPECT_EQ(arrived, reply);
}

} // namespace harvelop::test
