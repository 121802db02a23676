// Lines from a descriptor, and the signals that ask for the end.
#include "platform/qt/qt_interrupt.h"
#include "platform/qt/qt_line_input.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <array>
#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace harvelop::test
{

namespace
{

bool until(const std::function<bool()>& done)
{
    constexpr int LongestWaitMs = 10000;
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < LongestWaitMs)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return done();
}

// A pipe whose lines are read.
struct LinePipe : testing::Test {
    LinePipe()
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        from = FileHandle(ends[0]);
        to = FileHandle(ends[1]);
    }
    void Write(const std::string& text) const
    {
        ASSERT_EQ(::write(to.Number(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    // The lines up to the end of the input, or until so many have come.
    static std::vector<std::string> Lines(QtLineInput& input, size_t count)
    {
        std::vector<std::string> lines;
        EXPECT_TRUE(until([&] {
            while (auto line = input.NextLine())
                lines.push_back(*line);
            return lines.size() >= count || input.AtEnd();
        }));
        return lines;
    }

    FileHandle from;
    FileHandle to;
};

} // namespace

TEST_F(LinePipe, LinesComeWithoutTheirEnds)
{
    QtLineInput input(from.Number());
    Write("a\nb c\r\n\nhal");
    EXPECT_EQ(Lines(input, 3), (std::vector<std::string>{"a", "b c", ""}));
    EXPECT_FALSE(input.AtEnd());
    Write("f\n");
    EXPECT_EQ(Lines(input, 1), std::vector<std::string>{"half"});
}

TEST_F(LinePipe, ALastLineMayLackItsEnd)
{
    QtLineInput input(from.Number());
    Write("a\nlast");
    to = FileHandle();
    EXPECT_EQ(Lines(input, 3), (std::vector<std::string>{"a", "last"}));
    EXPECT_TRUE(input.AtEnd());
    EXPECT_EQ(input.NextLine(), std::nullopt);
}

TEST_F(LinePipe, NothingIsReadBeforeTheFirstLineIsAskedFor)
{
    QtLineInput input(from.Number());
    Write("password\n");
    QCoreApplication::processEvents();
    std::array<char, 32> typed{};
    EXPECT_EQ(::read(from.Number(), typed.data(), typed.size()), 9);
}

TEST_F(LinePipe, ALineWithoutAnyEndIsCut)
{
    QtLineInput input(from.Number());
    const std::string piece(QtLineInput::LongestLine / 2, 'x');
    std::vector<std::string> lines;
    for (int i = 0; i < 3; ++i) {
        Write(piece);
        EXPECT_TRUE(until([&] {
            int unread = 0;
            if (auto line = input.NextLine())
                lines.push_back(*line);
            return ioctl(from.Number(), FIONREAD, &unread) == 0 && unread == 0;
        }));
    }
    to = FileHandle();
    for (const std::string& line : Lines(input, 2))
        lines.push_back(line);
    EXPECT_EQ(lines, (std::vector<std::string>{piece + piece, piece}));
}

TEST(LineInput, OfAClosedDescriptorIsAtItsEnd)
{
    QtLineInput input(-1);
    EXPECT_EQ(input.NextLine(), std::nullopt);
    EXPECT_TRUE(input.AtEnd());
}

TEST(Interrupt, EachSignalCallsTheWorkOnceFromTheEventLoop)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        int calls = 0;
        std::signal(signal, SIG_DFL); // whoever started the tests may have it ignored
        const QtInterrupt interrupt([&calls] { ++calls; });
        ASSERT_EQ(kill(getpid(), signal), 0);
        EXPECT_EQ(calls, 0);
        EXPECT_TRUE(until([&calls] { return calls > 0; }));
        EXPECT_EQ(calls, 1);
    }
}

TEST(Interrupt, AnIgnoredSignalStaysIgnored)
{
    for (const int ignored : {SIGINT, SIGTERM, SIGHUP}) {
        const auto before = std::signal(ignored, SIG_IGN);
        const QtInterrupt interrupt([] {});
        raise(ignored);
        sigset_t waiting;
        sigpending(&waiting);
        EXPECT_EQ(sigismember(&waiting, ignored), 0);
        std::signal(ignored, before);
    }
}

TEST(Interrupt, ASecondSignalEndsTheProcess)
{
    EXPECT_EXIT(
        {
            bool called = false;
            const QtInterrupt interrupt([&called] { called = true; });
            raise(SIGTERM);
            until([&called] { return called; });
            raise(SIGTERM);
            _exit(0);
        },
        testing::KilledBySignal(SIGTERM), "");
}

} // namespace harvelop::test
