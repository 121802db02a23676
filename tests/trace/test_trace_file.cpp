#include "trace/trace_file.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace harvelop
{

namespace
{

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

struct TraceFileTest : testing::Test {
    TraceFileTest() { fs::create_directory(folder); }
    ~TraceFileTest() override { fs::remove_all(folder); }

    std::string Text() const
    {
        std::ifstream text(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(text), {}};
    }

    const fs::path folder = fs::path(testing::TempDir()) / ("trace_" + std::to_string(getpid()));
    const std::string path = folder / "trace";
    std::vector<std::string> complaints;
    TraceFile file{[this](const std::string& text) { complaints.push_back(text); }};
};

TEST(TraceFormat, EveryByteCanBeToldFromTheText)
{
    EXPECT_EQ(QuotedForTrace("Q /H/r\r\n"), R"("Q /H/r\r\n")");
    EXPECT_EQ(QuotedForTrace(std::string("\t\"\\*\0\x1b\x7f\xc3\xff~ ", 11)), R"("\t\"\\*\x00\x1b\x7f\xc3\xff~ ")");
}

TEST(TraceFormat, TimesAreOfTheDayInMilliseconds)
{
    EXPECT_EQ(TraceTime(0), "00:00:00.000");
    EXPECT_EQ(TraceTime(37867.2041), "10:31:07.204");
    EXPECT_EQ(TraceTime(59.9996), "00:01:00.000");
    EXPECT_EQ(TraceTime(86399.9999), "00:00:00.000");
}

TEST_F(TraceFileTest, BeginsWithTheProgramAndTheDayForItsOwnerAlone)
{
    file.Open(path, "harvelctl 2.37");
    file.Write("one\n");
    EXPECT_THAT(Text(), MatchesRegex("# harvelop trace 1, harvelctl 2.37, [0-9]{4}-[0-9]{2}-[0-9]{2}\none\n"));
    struct stat about {
    };
    ASSERT_EQ(stat(path.c_str(), &about), 0);
    EXPECT_EQ(about.st_mode & 0777U, 0600U);
    EXPECT_TRUE(complaints.empty());
}

TEST_F(TraceFileTest, AddsToWhatIsThereAndClosesItToOthers)
{
    std::ofstream(path) << "broken off";
    fs::permissions(path, fs::perms(0644));
    file.Open(path, "x");
    EXPECT_THAT(Text(), StartsWith("broken off\n# harvelop trace 1, x, "));
    struct stat about {
    };
    ASSERT_EQ(stat(path.c_str(), &about), 0);
    EXPECT_EQ(about.st_mode & 0777U, 0600U);
}

TEST_F(TraceFileTest, AFileThatCannotBeOpenedIsToldOnce)
{
    file.Open(folder / "none" / "trace", "x");
    file.Write("one\n");
    file.Write("two\n");
    EXPECT_THAT(complaints,
                ElementsAre("The trace " + std::string(folder / "none" / "trace") +
                            " cannot be written: No such file or directory. The program goes on without it."));
}

TEST_F(TraceFileTest, AFullDiskIsToldOnce)
{
    file.Open("/dev/full", "x");
    file.Write("one\n");
    ASSERT_EQ(complaints.size(), 1U);
    EXPECT_THAT(complaints.front(), HasSubstr("/dev/full cannot be written: No space left on device."));
}

TEST_F(TraceFileTest, AFileThatMayNotGrowAnyMoreIsToldOnceAndKeepsItsLines)
{
    file.Open(path, "x");
    const std::string before = Text();
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &former), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{before.size() + 4, former.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    file.Write("one\n");
    file.Write("two\n");
    file.Write("three\n");
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(Text(), before + "one\n");
    ASSERT_EQ(complaints.size(), 1U);
    EXPECT_THAT(complaints.front(), HasSubstr("File too large"));
}

} // namespace

} // namespace harvelop
