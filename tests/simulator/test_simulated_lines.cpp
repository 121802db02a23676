#include "simulator/line_client.h"
#include "simulator/pty_line.h"
#include "simulator/replay_device.h"
#include "simulator/simulated_logger.h"
#include "simulator/tcp_line.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace harvelop::test
{

namespace
{

namespace fs = std::filesystem;

const std::string Del = "\x7f\r\n";
const std::string Marks = "<<\r\n";

std::unique_ptr<SimulatedLogger> logger(Failure failure = Failure::None)
{
    LoggerConfig config;
    config.failure = failure;
    config.dropAfterLines = 2;
    return std::make_unique<SimulatedLogger>(config);
}

// Serves the line until it has nothing more to do at once.
void settle(SimulatedLine& line)
{
    auto waits = line.Waits();
    while (poll(waits.data(), waits.size(), 0) > 0) {
        line.Serve(0);
        waits = line.Waits();
    }
}

// Waits until something stirs on the line, and serves it.
void serveNext(SimulatedLine& line)
{
    auto waits = line.Waits();
    ASSERT_GT(poll(waits.data(), waits.size(), PatienceMs), 0);
    line.Serve(0);
}

std::string ask(SimulatedLine& line, const LineHandle& client, const std::string& text, const std::string& ending)
{
    EXPECT_TRUE(Send(client, text));
    return ReadUntil(client.Get(), ending, [&] { settle(line); });
}

std::unique_ptr<PtyLine> pty(unsigned baud, const std::string& link = "", Failure failure = Failure::None)
{
    std::string error;
    auto line = PtyLine::Open(logger(failure), baud, link, error);
    EXPECT_TRUE(line) << error;
    return line;
}

std::unique_ptr<TcpLine> tcp(Failure failure = Failure::None)
{
    std::string error;
    auto line = TcpLine::Open(logger(failure), 0, error);
    EXPECT_TRUE(line) << error;
    return line;
}

// Answers "a" after ten seconds and hangs up a second later.
std::unique_ptr<ReplayDevice> slowReplay(const std::string& link, const std::string& open,
                                         ReplayDevice::Openings openings)
{
    const RecordedTrace trace =
        ReadTrace("# harvelop trace 1\n10:00:00.000 " + link + " open " + open + "\n10:00:00.000 " + link +
                  " out \"a\\r\"\n10:00:10.000 " + link + " in \"b\\n\"\n10:00:11.000 " + link + " lost\n");
    EXPECT_EQ(trace.lines.size(), 1U);
    return std::make_unique<ReplayDevice>(trace.lines.front(), openings, ReplayDevice::Pace::AsRecorded);
}

class PtyLineLink : public testing::Test
{
protected:
    void SetUp() override { fs::create_directory(folder); }
    void TearDown() override { fs::remove_all(folder); }

    const fs::path folder = fs::path(testing::TempDir()) / ("pty_line_link_" + std::to_string(getpid()));
    const std::string link = folder / "com1";
};

} // namespace

TEST(PtyLine, AnswersAtItsOwnSpeedAlsoAnOddOne)
{
    for (const unsigned speed : {115200U, 57600U, 56000U, 38400U, 28800U, 14400U, 1200U}) {
        const auto line = pty(speed);
        const auto client = OpenTerminal(line->Place(), speed);
        EXPECT_EQ(ask(*line, client, Del, Marks), Marks) << speed;
    }
}

TEST(PtyLine, HearsNothingAtAnotherSpeed)
{
    const auto line = pty(56000);
    const auto client = OpenTerminal(line->Place(), 57600);
    settle(*line);
    EXPECT_TRUE(Send(client, Del));
    serveNext(*line);
    EXPECT_TRUE(SetSpeed(client, 56000));
    const std::string answer = ask(*line, client, "TEST0\r\n", "\n");
    EXPECT_TRUE(answer.starts_with("T,")) << answer;
}

TEST(PtyLine, IsNotHeardAtAnotherSpeed)
{
    LoggerConfig config;
    config.delayMs = 100;
    std::string error;
    const auto line = PtyLine::Open(std::make_unique<SimulatedLogger>(config), 9600, "", error);
    const auto client = OpenTerminal(line->Place(), 9600);
    settle(*line);
    EXPECT_TRUE(Send(client, Del));
    serveNext(*line);
    EXPECT_EQ(line->NextDueMs(), 100);
    EXPECT_TRUE(SetSpeed(client, 4800));
    line->Serve(100);
    EXPECT_TRUE(SetSpeed(client, 9600));
    EXPECT_TRUE(Send(client, "TEST0\r\n"));
    double nowMs = 100;
    const std::string answer = ReadUntil(client.Get(), "\n", [&] { line->Serve(nowMs += 100); });
    EXPECT_TRUE(answer.starts_with("T,")) << answer;
}

TEST(PtyLine, CanBeOpenedAgainAndAgainAndRestsInBetween)
{
    const auto line = pty(9600);
    for (int i = 0; i < 20; ++i) {
        {
            const auto client = OpenTerminal(line->Place(), 9600);
            EXPECT_EQ(ask(*line, client, Del, Marks), Marks);
        }
        settle(*line);
        auto waits = line->Waits();
        EXPECT_EQ(poll(waits.data(), waits.size(), 0), 0);
    }
}

TEST(PtyLine, WhatAFormerUserLeftUnreadIsGone)
{
    const auto line = pty(9600);
    {
        const auto client = OpenTerminal(line->Place(), 9600);
        settle(*line);
        EXPECT_TRUE(Send(client, Del));
        serveNext(*line);
        pollfd wait{client.Get(), POLLIN, 0};
        EXPECT_EQ(poll(&wait, 1, PatienceMs), 1);
    }
    settle(*line);
    const auto client = OpenTerminal(line->Place(), 9600);
    EXPECT_TRUE(ask(*line, client, "TEST0\r\n", "\n").starts_with("T,"));
}

TEST(PtyLine, WhatAFormerUserDidNotWaitForIsNotSaid)
{
    std::string error;
    const auto line =
        PtyLine::Open(slowReplay("com1", "\"9600,N,8,1\" 0 \"\"", ReplayDevice::Openings::Vague), 9600, "", error);
    ASSERT_TRUE(line) << error;
    {
        const auto client = OpenTerminal(line->Place(), 9600);
        settle(*line);
        EXPECT_TRUE(Send(client, "a\r"));
        serveNext(*line);
        EXPECT_EQ(line->NextDueMs(), 10000);
    }
    settle(*line);
    EXPECT_EQ(line->NextDueMs(), SimulatedDevice::Never);
}

TEST(PtyLine, AnExclusiveHoldEndsWithItsHolder)
{
    const auto line = pty(9600);
    {
        const auto client = OpenTerminal(line->Place(), 9600);
        settle(*line);
        ASSERT_EQ(ioctl(client.Get(), TIOCEXCL), 0);
    }
    settle(*line);
    const auto client = OpenTerminal(line->Place(), 9600);
    int exclusive = 1;
    ASSERT_EQ(ioctl(client.Get(), TIOCGEXCL, &exclusive), 0);
    EXPECT_EQ(exclusive, 0);
}

TEST(PtyLine, OfWhatNobodyReadsOnlySoMuchIsKept)
{
    const auto line = pty(9600, "", Failure::EndlessReply);
    const auto client = OpenTerminal(line->Place(), 9600);
    settle(*line);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(Send(client, "TEST0\r\n"));
        serveNext(*line);
    }
    std::size_t size = 0;
    std::array<char, 4096> buffer;
    pollfd wait{client.Get(), POLLIN, 0};
    while (poll(&wait, 1, 300) > 0) {
        size += static_cast<std::size_t>(std::max<ssize_t>(0, read(client.Get(), buffer.data(), buffer.size())));
        settle(*line);
    }
    EXPECT_GE(size, SimulatedLine::MostUnsent);
    EXPECT_LT(size, 3 * SimulatedLine::MostUnsent);
}

TEST(PtyLine, VanishesWhenTheDeviceDropsTheLine)
{
    const auto line = pty(9600, "", Failure::DropsLine);
    const auto client = OpenTerminal(line->Place(), 9600);
    EXPECT_EQ(ask(*line, client, Del, Marks), Marks);
    EXPECT_TRUE(Send(client, Del));
    serveNext(*line);
    EXPECT_TRUE(line->Waits().empty());
    EXPECT_EQ(line->NextDueMs(), SimulatedDevice::Never);
    EXPECT_FALSE(fs::exists(line->Place()));
    pollfd wait{client.Get(), POLLIN, 0};
    EXPECT_EQ(poll(&wait, 1, PatienceMs), 1);
    EXPECT_TRUE(wait.revents & POLLHUP);
}

TEST_F(PtyLineLink, IsMadeAndRemoved)
{
    {
        const auto line = pty(9600, link);
        EXPECT_EQ(fs::read_symlink(link), line->Place());
    }
    EXPECT_FALSE(fs::is_symlink(link));
}

TEST_F(PtyLineLink, GoesWithADroppedLine)
{
    const auto line = pty(9600, link, Failure::DropsLine);
    const auto client = OpenTerminal(link, 9600);
    EXPECT_TRUE(Send(client, Del + Del));
    while (!line->Waits().empty())
        serveNext(*line);
    EXPECT_FALSE(fs::is_symlink(link));
}

TEST_F(PtyLineLink, ReplacesAnotherLinkAndLeavesItsSuccessorAlone)
{
    fs::create_symlink("/nowhere", link);
    const auto first = pty(9600, link);
    EXPECT_EQ(fs::read_symlink(link), first->Place());
    auto second = pty(9600, link);
    pty(9600, "");
    EXPECT_EQ(fs::read_symlink(link), second->Place());
    const std::string place = second->Place();
    {
        const auto third = pty(9600, link);
        second.reset();
        EXPECT_EQ(fs::read_symlink(link), third->Place());
    }
    EXPECT_FALSE(fs::is_symlink(link));
}

TEST_F(PtyLineLink, NeverReplacesAFile)
{
    std::ofstream(link) << "precious";
    std::string error;
    EXPECT_FALSE(PtyLine::Open(logger(), 9600, link, error));
    EXPECT_EQ(error, "cannot make the link " + link + ": File exists");
    EXPECT_EQ(fs::file_size(link), 8U);
}

TEST_F(PtyLineLink, WithoutAFolderIsAnError)
{
    std::string error;
    EXPECT_FALSE(PtyLine::Open(logger(), 9600, folder / "none" / "com1", error));
    EXPECT_TRUE(error.ends_with("No such file or directory")) << error;
}

TEST(TcpLine, ServesOneClientAfterTheOther)
{
    const auto line = tcp();
    for (int i = 0; i < 3; ++i) {
        const auto client = Connect(line->Place());
        ASSERT_TRUE(client.IsOpen());
        EXPECT_EQ(ask(*line, client, Del + Del, Marks + Marks), Marks + Marks);
    }
}

TEST(TcpLine, TurnsASecondClientAway)
{
    const auto line = tcp();
    const auto first = Connect(line->Place());
    EXPECT_EQ(ask(*line, first, Del, Marks), Marks);
    const auto second = Connect(line->Place());
    serveNext(*line);
    EXPECT_EQ(ReadUntil(second.Get(), Marks), "");
    EXPECT_EQ(ask(*line, first, Del, Marks), Marks);
}

TEST(TcpLine, CutsItsClientOffWhenTheDeviceDropsTheLine)
{
    const auto line = tcp(Failure::DropsLine);
    const auto client = Connect(line->Place());
    EXPECT_TRUE(Send(client, Del + Del));
    while (!line->Waits().empty())
        serveNext(*line);
    EXPECT_FALSE(Connect(line->Place()).IsOpen());
}

TEST(TcpLine, LetsTheNextClientInWhereTheDeviceHasOnlyHungUp)
{
    std::string error;
    const auto line = TcpLine::Open(slowReplay("tcp1", "\"host:21\"", ReplayDevice::Openings::Exact), 0, error);
    ASSERT_TRUE(line) << error;
    for (int i = 0; i < 3; ++i) {
        const auto client = Connect(line->Place());
        ASSERT_TRUE(client.IsOpen());
        serveNext(*line);
        EXPECT_TRUE(Send(client, "a\r"));
        serveNext(*line);
        line->Serve(10000);
        line->Serve(11000);
        EXPECT_EQ(ReadUntil(client.Get(), "\n"), "b\n");
        pollfd hungUp{client.Get(), POLLRDHUP, 0};
        EXPECT_EQ(poll(&hungUp, 1, PatienceMs), 1);
        EXPECT_EQ(line->NextDueMs(), SimulatedDevice::Never);
    }
}

TEST(TcpLine, APortThatIsTakenIsAnError)
{
    const auto line = tcp();
    const int port = std::stoi(line->Place().substr(line->Place().find(':') + 1));
    std::string error;
    EXPECT_FALSE(TcpLine::Open(logger(), port, error));
    EXPECT_EQ(error, "cannot listen on TCP port " + std::to_string(port) + ": Address already in use");
}

} // namespace harvelop::test
