#include "platform/child_process.h"
#include "platform/qt/qt_data_files.h"

#include <QTemporaryDir>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace harvelop::test
{

namespace
{

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string Secret = "SMTPPassword=geheim\r\n";
constexpr int Room = 50'000; // of the disks that are full
const std::string Overlong = Secret + std::string(2 * Room, 'x');

struct DataFilesTest : testing::Test {
    QTemporaryDir folder;
    std::string path = folder.path().toStdString() + "/options.ini";
    QtDataFiles files;

    static int Mode(const std::string& of)
    {
        struct stat about {
        };
        return stat(of.c_str(), &about) == 0 ? static_cast<int>(about.st_mode & 07777) : -1;
    }
    std::string Text() { return files.Read(path).text; }
    int Entries() const
    {
        return static_cast<int>(std::distance(fs::directory_iterator(fs::path(path).parent_path()), {}));
    }

    // `Replace`, which must fail with exactly one line to stderr that tells the path, but nothing of the text.
    void ExpectRefused(const std::string& text)
    {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(files.Replace(path, text));
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
        EXPECT_THAT(told, HasSubstr(path));
        EXPECT_THAT(told, StartsWith("test_platform: "));
        EXPECT_THAT(told, Not(HasSubstr("geheim")));
    }
};

// Nothing can be written beyond this many bytes of a file.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limited{bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_signal);
    }

private:
    rlimit m_old{};
    sighandler_t m_signal;
};

} // namespace

TEST_F(DataFilesTest, TextIsReadAsItStands)
{
    for (const std::string& text : {std::string(), std::string("a\r\nb\nc\r"), std::string("\0\xff\0", 3)}) {
        EXPECT_TRUE(files.Replace(path, text));
        const FileText read = files.Read(path);
        EXPECT_EQ(read.state, FileState::Read);
        EXPECT_EQ(read.text, text);
    }
}

TEST_F(DataFilesTest, MissingFileIsNotFound)
{
    for (const std::string& missing : {path, path + "/below", std::string(), path + std::string("\0x", 2)})
        EXPECT_EQ(files.Read(missing).state, FileState::NotFound);
    fs::create_symlink("nowhere", path);
    EXPECT_EQ(files.Read(path).state, FileState::NotFound);
}

TEST_F(DataFilesTest, WhatIsNoFileIsUnreadableAndNeverWaitedFor)
{
    EXPECT_EQ(files.Read(folder.path().toStdString()).state, FileState::Unreadable);
    EXPECT_EQ(files.Read("/dev/zero").state, FileState::Unreadable);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(files.Read(path).state, FileState::Unreadable);
    fs::remove(path);
    fs::create_symlink(path, path);
    EXPECT_EQ(files.Read(path).state, FileState::Unreadable);
}

TEST_F(DataFilesTest, FileWithoutPermissionIsUnreadable)
{
    ASSERT_TRUE(files.Replace(path, Secret));
    chmod(path.c_str(), 0);
    chmod(folder.path().toStdString().c_str(), 0755);
    const PlainUser user;
    EXPECT_EQ(files.Read(path).state, FileState::Unreadable);
}

TEST_F(DataFilesTest, OverlargeFileIsUnreadable)
{
    std::ofstream(path) << "x";
    fs::resize_file(path, 64 * 1024 * 1024);
    EXPECT_EQ(files.Read(path).state, FileState::Read);
    fs::resize_file(path, 64 * 1024 * 1024 + 1);
    EXPECT_EQ(files.Read(path).state, FileState::Unreadable);
}

TEST_F(DataFilesTest, NewFileIsTheUsersAlone)
{
    const mode_t old = umask(0);
    EXPECT_TRUE(files.Replace(path, Secret));
    umask(old);
    EXPECT_EQ(Mode(path), 0600);
    EXPECT_EQ(Entries(), 1);
}

TEST_F(DataFilesTest, ExistingFileKeepsItsMode)
{
    std::ofstream(path) << "old";
    for (const mode_t mode : {0644, 0660, 0600}) {
        chmod(path.c_str(), mode);
        EXPECT_TRUE(files.Replace(path, "new"));
        EXPECT_EQ(Mode(path), static_cast<int>(mode));
    }
}

TEST_F(DataFilesTest, FileIsReplacedAndNotOverwritten)
{
    ASSERT_TRUE(files.Replace(path, "old"));
    std::ifstream reader(path);
    ASSERT_TRUE(files.Replace(path, "new text"));
    std::string seen;
    std::getline(reader, seen);
    EXPECT_EQ(seen, "old");
    EXPECT_EQ(Text(), "new text");
}

TEST_F(DataFilesTest, LinksAreFollowed)
{
    const std::string base = folder.path().toStdString();
    fs::create_directory(base + "/data");
    fs::create_symlink("data/second", path);
    fs::create_symlink("real.ini", base + "/data/second");
    EXPECT_TRUE(files.Replace(path, "made"));
    EXPECT_TRUE(files.Replace(path, "made anew"));
    EXPECT_TRUE(fs::is_symlink(path));
    EXPECT_TRUE(fs::is_symlink(base + "/data/second"));
    EXPECT_EQ(files.Read(base + "/data/real.ini").text, "made anew");
}

TEST_F(DataFilesTest, WhatIsNoFileIsNotReplaced)
{
    fs::create_directory(path);
    ExpectRefused(Secret);
    fs::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    ExpectRefused(Secret);
    EXPECT_TRUE(fs::is_fifo(path));
    fs::remove(path);
    path += "/nofolder/options.ini";
    ExpectRefused(Secret);
}

TEST_F(DataFilesTest, WriteProtectedFileStands)
{
    ASSERT_TRUE(files.Replace(path, "old"));
    chmod(path.c_str(), 0444);
    chmod(folder.path().toStdString().c_str(), 0777);
    const PlainUser user;
    ExpectRefused(Secret);
    EXPECT_EQ(Text(), "old");
}

TEST_F(DataFilesTest, InAFolderThatCannotBeWrittenTheFileIsOverwrittenInPlace)
{
    for (const std::string& text : {std::string("longer than before"), std::string("x"), std::string()}) {
        std::ofstream(path) << "old text";
        chmod(path.c_str(), 0666);
        chmod(folder.path().toStdString().c_str(), 0555);
        {
            const PlainUser user;
            EXPECT_TRUE(files.Replace(path, text));
        }
        EXPECT_EQ(Text(), text);
        EXPECT_EQ(Mode(path), 0666);
        EXPECT_EQ(Entries(), 1);
    }
    chmod(folder.path().toStdString().c_str(), 0755);
}

TEST_F(DataFilesTest, NewFileInAFolderThatCannotBeWrittenIsRefused)
{
    chmod(folder.path().toStdString().c_str(), 0555);
    {
        const PlainUser user;
        ExpectRefused(Secret);
    }
    EXPECT_EQ(Entries(), 0);
    chmod(folder.path().toStdString().c_str(), 0755);
}

TEST_F(DataFilesTest, OldTextStandsWhereTheNewOneFindsNoRoom)
{
    ASSERT_TRUE(files.Replace(path, "old"));
    {
        const FileSizeLimit full(Room);
        ExpectRefused(Overlong);
    }
    EXPECT_EQ(Text(), "old");
    EXPECT_EQ(Entries(), 1);
}

TEST_F(DataFilesTest, OldTextStandsInPlaceWhereTheNewOneFindsNoRoom)
{
    std::ofstream(path) << "old";
    chmod(path.c_str(), 0666);
    chmod(folder.path().toStdString().c_str(), 0555);
    {
        const FileSizeLimit full(Room);
        const PlainUser user;
        ExpectRefused(Overlong);
    }
    EXPECT_EQ(Text(), "old");
    chmod(folder.path().toStdString().c_str(), 0755);
}

// In a process of its own, whose disk nobody else sees.
TEST_F(DataFilesTest, FullDiskLeavesTheOldText)
{
    constexpr int NoDisk = 77;
    const std::string disk = folder.path().toStdString();
    ChildProcess process([] {},
                         [&] {
                             if (unshare(CLONE_NEWNS) != 0 ||
                                 mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
                                 mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=64k") != 0)
                                 _exit(NoDisk);
                             ASSERT_TRUE(files.Replace(path, "old"));
                             ExpectRefused(Overlong);
                             EXPECT_EQ(Text(), "old");
                             EXPECT_EQ(Entries(), 1);
                             EXPECT_TRUE(files.Replace(path, "new"));
                             _exit(HasFailure() ? 1 : 0);
                         });
    const int status = process.Wait();
    if (WIFEXITED(status) && WEXITSTATUS(status) == NoDisk)
        GTEST_SKIP() << "no right to mount a small disk";
    EXPECT_EQ(status, 0);
}

TEST_F(DataFilesTest, ReadersAndKilledWritersLeaveOneTextOrTheOther)
{
    const std::string one(200'000, 'a');
    const std::string other(150'000, 'b');
    ASSERT_TRUE(files.Replace(path, one));
    for (int round = 0; round < 10; ++round) {
        ChildProcess writer([] {},
                            [&] {
                                while (files.Replace(path, other) && files.Replace(path, one))
                                    continue;
                            });
        // Killed at another moment of its work each time, and never before it has done some.
        std::string last = Text();
        for (int changes = 0; changes < 3 + round;) {
            const std::string seen = Text();
            ASSERT_TRUE(seen == one || seen == other) << seen.size();
            changes += seen != last;
            last = seen;
        }
        writer.Kill();
        const std::string left = Text();
        ASSERT_TRUE(left == one || left == other) << left.size();
        EXPECT_LE(Entries(), 2); // what a killed writer leaves does not pile up
    }
    EXPECT_TRUE(files.Replace(path, "new"));
    EXPECT_EQ(Text(), "new");
    EXPECT_EQ(Entries(), 1);
}

TEST_F(DataFilesTest, TwoWritersAtOnceLeaveOneTextOrTheOther)
{
    const auto write = [&](char letter) {
        bool all = true;
        for (int round = 0; round < 200; ++round)
            all = files.Replace(path, std::string(static_cast<size_t>(1000 + 37 * round), letter)) && all;
        _exit(all ? 0 : 1);
    };
    const auto whole = [&] {
        const std::string text = Text();
        return text == std::string(text.size(), text.empty() ? ' ' : text.front());
    };
    ASSERT_TRUE(files.Replace(path, "a"));
    ChildProcess one([] {}, [&] { write('a'); });
    ChildProcess other([] {}, [&] { write('b'); });
    for (int look = 0; look < 500; ++look)
        ASSERT_TRUE(whole());
    EXPECT_EQ(one.Wait(), 0);
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_TRUE(whole());
    EXPECT_GE(Text().size(), 1000U + 37 * 199);
    EXPECT_EQ(Entries(), 1);
}

TEST_F(DataFilesTest, LeftoverOfAKilledWriterIsUsedAgain)
{
    const std::string leftover = fs::path(path).parent_path().string() + "/.options.ini.new";
    std::ofstream(leftover) << Overlong;
    EXPECT_TRUE(files.Replace(path, Secret));
    EXPECT_EQ(Text(), Secret);
    EXPECT_EQ(Mode(path), 0600);
    EXPECT_EQ(Entries(), 1);
}

TEST_F(DataFilesTest, WhatStandsUnderTheTemporaryNameAndIsNotOursIsLeftAlone)
{
    const std::string base = fs::path(path).parent_path().string();
    const std::string leftover = base + "/.options.ini.new";
    std::ofstream(base + "/precious") << "text";
    const auto expectWritten = [&](const char* kind) {
        EXPECT_TRUE(files.Replace(path, kind)) << kind;
        EXPECT_EQ(Text(), kind);
        EXPECT_EQ(files.Read(base + "/precious").text, "text") << kind;
        fs::remove(leftover);
    };
    fs::create_symlink("precious", leftover);
    expectWritten("link");
    fs::create_hard_link(base + "/precious", leftover);
    expectWritten("hard link");
    fs::create_directory(leftover);
    expectWritten("directory");
    ASSERT_EQ(mkfifo(leftover.c_str(), 0600), 0);
    expectWritten("pipe");
    const ChildProcess writing([&] { flock(::open(leftover.c_str(), O_RDWR | O_CREAT, 0600), LOCK_EX); });
    expectWritten("in use");
    EXPECT_EQ(Entries(), 2);
}

TEST_F(DataFilesTest, RepeatedFailureIsToldOnceUntilAWriteSucceeds)
{
    const std::string other = path + ".bak";
    const auto told = [&](const std::string& file) {
        testing::internal::CaptureStderr();
        files.Replace(file, Secret);
        const std::string text = testing::internal::GetCapturedStderr();
        return std::count(text.begin(), text.end(), '\n');
    };
    for (int round = 0; round < 2; ++round) {
        fs::create_directory(path);
        fs::create_directory(other);
        EXPECT_EQ(told(path), 1);
        EXPECT_EQ(told(path), 0);
        EXPECT_EQ(told(other), 1);
        fs::remove(path);
        ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
        EXPECT_EQ(told(path), 1) << "fails in another way";
        EXPECT_EQ(told(path), 0);
        fs::remove(path);
        fs::remove(other);
        EXPECT_EQ(told(path), 0);
        EXPECT_EQ(told(other), 0);
        fs::remove(path);
        fs::remove(other);
    }
}

TEST_F(DataFilesTest, RemovedFileIsGoneAndAMissingOneIsNoFailure)
{
    ASSERT_TRUE(files.Replace(path, "old"));
    EXPECT_TRUE(files.Remove(path));
    EXPECT_FALSE(fs::exists(path));
    EXPECT_TRUE(files.Remove(path));
}

TEST_F(DataFilesTest, FileThatCannotBeRemovedIsTold)
{
    fs::create_directory(path);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(files.Remove(path));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(path));
}

} // namespace harvelop::test
