#include "child_process.h"
#include "platform/qt/process_start.h"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>

namespace harvelop::test
{

// As a process of its own: 0 if all is as it should be, else the number of what is not.
TEST(ProcessStart, WhatIsOpenedNeverTakesTheNumberOfAStandardStream)
{
    const auto look = [] {
        for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
            close(stream);
        PrepareProcess();
        std::array<char, 1> byte{};
        if (open("/dev/null", O_RDWR) <= STDERR_FILENO)
            _exit(1);
        if (read(STDIN_FILENO, byte.data(), 1) != 0)
            _exit(2);
        if (write(STDOUT_FILENO, "x", 1) >= 0 || write(STDERR_FILENO, "x", 1) >= 0)
            _exit(3);
        _exit(0);
    };
    ChildProcess child([] {}, look);
    EXPECT_EQ(child.Wait(), 0);
}

TEST(ProcessStart, StreamsThatAreOpenStayWhatTheyAre)
{
    const auto look = [] {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0 || dup2(ends[1], STDOUT_FILENO) < 0)
            _exit(1);
        PrepareProcess();
        std::array<char, 1> byte{};
        _exit(write(STDOUT_FILENO, "x", 1) == 1 && read(ends[0], byte.data(), 1) == 1 && byte[0] == 'x' ? 0 : 2);
    };
    ChildProcess child([] {}, look);
    EXPECT_EQ(child.Wait(), 0);
}

} // namespace harvelop::test
