#include "core/program_end.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

TEST(ProgramEnd, TheFirstCallCounts)
{
    ProgramEnd end;
    int told = 0;
    end.OnEnd = [&] { ++told; };
    EXPECT_FALSE(end.Ended());
    end.EndProgram(3);
    end.EndProgram(5);
    EXPECT_TRUE(end.Ended());
    EXPECT_EQ(end.ExitCode(), 3);
    EXPECT_EQ(told, 1);
}

TEST(ProgramEnd, TheExitCodeStandsWhenTheLoopIsTold)
{
    ProgramEnd end;
    int code = -1;
    end.OnEnd = [&] {
        code = end.ExitCode();
        end.EndProgram(9);
    };
    end.EndProgram(4);
    EXPECT_EQ(code, 4);
    EXPECT_EQ(end.ExitCode(), 4);
}

} // namespace
} // namespace harvelop::test
