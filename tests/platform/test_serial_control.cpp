#include "platform/child_process.h"
#include "platform/serial_fixture.h"

#include <QTimer>

#include <fstream>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>

namespace harvelop::test
{

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
    EXPECT_FALSE(port.PortOpen());
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
