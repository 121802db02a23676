#include "platform/child_process.h"
#include "platform/pseudo_terminal.h"
#include "platform/qt/port_claim.h"
#include "platform/serial_control.h"

#include <QTemporaryDir>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>

namespace harvelop::test
{

namespace
{

namespace fs = std::filesystem;

// The lock file that other programs would make for the port; gone with this object.
class LockFile
{
public:
    LockFile(const PseudoTerminal& port, const std::string& text, bool lastPartOnly = false)
        : m_path("/run/lock/LCK.." + std::string(lastPartOnly ? "" : "pts_") +
                 fs::path(port.Name()).filename().string())
    {
        std::ofstream(m_path, std::ios::binary) << text;
    }
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;
    ~LockFile()
    {
        std::error_code error;
        fs::remove(m_path, error);
    }

private:
    fs::path m_path;
};

std::string Named(const ChildProcess& process)
{
    return "test_platform (process " + std::to_string(process.Id()) + ")";
}

struct PortClaimTest : testing::Test {
    PseudoTerminal port;
    PortClaim claim;

    int OpenSlave() const { return ::open(port.Name().c_str(), O_RDWR | O_NOCTTY); }
};

} // namespace

TEST_F(PortClaimTest, FreePortIsTaken)
{
    EXPECT_EQ(claim.Take(port.Name()), PortOk);
    EXPECT_EQ(claim.Device(), port.Name());
    EXPECT_EQ(claim.Holder(), "");
}

TEST_F(PortClaimTest, WhatIsNoPortIsAbsent)
{
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    std::ofstream(path + "/file") << "text";
    fs::create_symlink(path + "/nowhere", path + "/link");
    fs::create_symlink("round", path + "/round");
    ASSERT_EQ(mkfifo((path + "/fifo").c_str(), 0666), 0);
    for (const std::string& device :
         {std::string(), path + "/none", path + "/file", path + "/link", path, path + "/round", path + "/fifo",
          path + "/" + std::string(300, 'x'), path + "/file/below", std::string("/dev/null")})
        EXPECT_EQ(claim.Take(device), PortAbsent) << device;
}

TEST_F(PortClaimTest, NodeWithoutHardwareIsAbsent)
{
    int tried = 0;
    for (const char* device : {"/dev/ttyS0", "/dev/ttyS1", "/dev/ttyS2", "/dev/ttyS3"}) {
        const int handle = ::open(device, O_RDWR | O_NOCTTY | O_NONBLOCK);
        termios line{};
        if (handle >= 0 && tcgetattr(handle, &line) != 0 && errno == EIO) {
            EXPECT_EQ(claim.Take(device), PortAbsent) << device;
            ++tried;
        }
        if (handle >= 0)
            close(handle);
    }
    if (tried == 0)
        GTEST_SKIP() << "this machine has no such node";
}

TEST_F(PortClaimTest, PortWithoutPermissionIsToldApart)
{
    ASSERT_EQ(chmod(port.Name().c_str(), 0), 0);
    const PlainUser user;
    EXPECT_EQ(claim.Take(port.Name()), PortNoPermission);
}

TEST_F(PortClaimTest, LockedPortIsBusyAndItsHolderNamed)
{
    const ChildProcess other([&] { flock(OpenSlave(), LOCK_EX); });
    ASSERT_TRUE(other.Ready());
    EXPECT_EQ(claim.Take(port.Name()), PortBusy);
    EXPECT_EQ(claim.Holder(), Named(other));
}

TEST_F(PortClaimTest, PortIsFreeWhenItsHolderHasEnded)
{
    ChildProcess other([&] { flock(OpenSlave(), LOCK_EX); });
    ASSERT_EQ(claim.Take(port.Name()), PortBusy);
    other.Kill();
    EXPECT_EQ(claim.Take(port.Name()), PortOk);
    EXPECT_EQ(claim.Holder(), "");
}

TEST_F(PortClaimTest, ExclusivelyOpenedPortIsBusyForTheSuperuserToo)
{
    ChildProcess other([&] { ioctl(OpenSlave(), TIOCEXCL); });
    ASSERT_TRUE(other.Ready());
    EXPECT_EQ(claim.Take(port.Name()), PortBusy);
    EXPECT_EQ(claim.Holder(), Named(other));
    if (geteuid() != 0)
        return; // the mark that stays behind keeps others out for good
    other.Kill();
    EXPECT_EQ(claim.Take(port.Name()), PortOk);
}

TEST_F(PortClaimTest, LockFileOfALivingProcessMakesThePortBusy)
{
    const ChildProcess other([] {});
    char binary[sizeof(pid_t)];
    const pid_t id = other.Id();
    std::memcpy(binary, &id, sizeof binary);
    const std::string number = std::to_string(id);
    for (const std::string& text : {number, "      " + number + "\n", number + " minicom root\n",
                                    number + "\nqtprogram\nhost\n", std::string(binary, sizeof binary)}) {
        const LockFile file(port, text);
        EXPECT_EQ(claim.Take(port.Name()), PortBusy) << text;
        EXPECT_EQ(claim.Holder(), Named(other));
    }
    const LockFile file(port, number, true);
    EXPECT_EQ(claim.Take(port.Name()), PortBusy);
}

TEST_F(PortClaimTest, LockFileThatNobodyStandsBehindIsPassedOver)
{
    ChildProcess ended([] {});
    const std::string number = std::to_string(ended.Id());
    ended.Kill();
    for (const std::string& text : {number, std::string(), std::string("rubbish"), std::string("0\n"),
                                    std::string("-1\n"), std::to_string(getpid())}) {
        const LockFile file(port, text);
        EXPECT_EQ(claim.Take(port.Name()), PortOk) << text;
        EXPECT_EQ(claim.LockRefused(), PortNoPermission) << text;
        EXPECT_EQ(claim.Holder(), "");
    }
}

TEST_F(PortClaimTest, LockFileThatIsMadeInTheMiddleMakesThePortBusy)
{
    ASSERT_EQ(claim.Take(port.Name()), PortOk);
    const ChildProcess other([] {});
    const LockFile file(port, std::to_string(other.Id()));
    EXPECT_EQ(claim.LockRefused(), PortBusy);
    EXPECT_EQ(claim.Holder(), Named(other));
}

TEST_F(PortClaimTest, LinkIsHeldUnderItsRealName)
{
    const QTemporaryDir folder;
    const std::string link = folder.path().toStdString() + "/logger";
    fs::create_symlink(port.Name(), link);
    EXPECT_EQ(claim.Take(link), PortOk);
    EXPECT_EQ(claim.Device(), port.Name());
    claim.Release();
    const ChildProcess other([] {});
    const LockFile file(port, std::to_string(other.Id()));
    EXPECT_EQ(claim.Take(link), PortBusy);
}

TEST_F(PortClaimTest, TwoClaimsExcludeEachOther)
{
    PortClaim second;
    EXPECT_EQ(claim.Take(port.Name()), PortOk);
    EXPECT_EQ(second.Take(port.Name()), PortBusy);
    claim.Release();
    EXPECT_EQ(second.Take(port.Name()), PortOk);
}

TEST_F(PortClaimTest, HeldPortIsNotHandedOnToStartedPrograms)
{
    ASSERT_EQ(claim.Take(port.Name()), PortOk);
    int found = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        if (fs::read_symlink(entry.path(), error) != port.Name())
            continue;
        ++found;
        EXPECT_TRUE(fcntl(std::stoi(entry.path().filename()), F_GETFD) & FD_CLOEXEC);
    }
    EXPECT_EQ(found, 1);
}

} // namespace harvelop::test
