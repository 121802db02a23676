#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_window_desktop.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace harvelop::test
{

namespace
{

namespace fs = std::filesystem;

struct DesktopTest : testing::Test {
    QTemporaryDir folder;
    std::string base = folder.path().toStdString();
    QtDesktop desktop;

    void SetUp() override
    {
        ASSERT_EQ(mkfifo((base + "/report").c_str(), 0600), 0);
        m_report = ::open((base + "/report").c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    }
    void TearDown() override { close(m_report); }

    // A program that reports its current directory and arguments, one a line, with a dot at the end.
    std::string MakeProgram(const std::string& name) const
    {
        const std::string path = base + "/" + name;
        fs::create_directories(fs::path(path).parent_path());
        std::ofstream(path) << "#!/bin/sh\n{ pwd; printf '[%s]\\n' \"$@\"; echo .; } > '" << base << "/report'\n";
        chmod(path.c_str(), 0755);
        return path;
    }
    // What a started program tells; empty if it tells nothing in time.
    std::string Report() const
    {
        std::string told;
        pollfd waiting{m_report, POLLIN, 0};
        while (!told.ends_with("\n.\n") && poll(&waiting, 1, 10'000) == 1) {
            char block[512];
            const ssize_t count = read(m_report, block, sizeof block);
            told.append(block, static_cast<size_t>(std::max<ssize_t>(count, 0)));
        }
        return told;
    }

private:
    int m_report = -1;
};

std::string DesktopFile(const std::string& name)
{
    return QDir::homePath().toStdString() + "/Desktop/" + name;
}

// The command line of a shortcut.
std::string ExecOf(const std::string& name)
{
    constexpr std::string_view Key = "Exec=";
    std::ifstream file(DesktopFile(name + ".desktop"));
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(Key))
            return line.substr(Key.size());
    return {};
}

} // namespace

TEST_F(DesktopTest, TellsWhereItIs)
{
    EXPECT_EQ(desktop.CurrentDirectory(), fs::current_path().string());
    EXPECT_EQ(desktop.DriveRoot(), QDir::homePath().toStdString() + "/");
}

TEST_F(DesktopTest, DataDirectoryLiesAmongTheUsersOwnData)
{
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", "/somewhere/data");
    EXPECT_EQ(desktop.DataDirectory(), "/somewhere/data/harvelop");
    qunsetenv("XDG_DATA_HOME");
    EXPECT_EQ(desktop.DataDirectory(), QDir::homePath().toStdString() + "/.local/share/harvelop");
    if (!before.isNull())
        qputenv("XDG_DATA_HOME", before);
}

TEST_F(DesktopTest, EnteredDirectoryIsMadeWhereItIsMissing)
{
    const fs::path before = fs::current_path();
    const bool entered = desktop.EnterDirectory(base + "/a/b");
    EXPECT_EQ(desktop.CurrentDirectory(), fs::canonical(base).string() + "/a/b");
    fs::current_path(before);
    EXPECT_TRUE(entered);
}

TEST_F(DesktopTest, DirectoryThatCannotBeMadeIsNotEntered)
{
    std::ofstream(base + "/file") << "text";
    const std::string before = desktop.CurrentDirectory();
    EXPECT_FALSE(desktop.EnterDirectory(base + "/file"));
    EXPECT_FALSE(desktop.EnterDirectory(base + "/file/below"));
    EXPECT_FALSE(desktop.EnterDirectory("/proc/harvelop")); // refused to everyone
    EXPECT_EQ(desktop.CurrentDirectory(), before);
}

TEST_F(DesktopTest, TellsDateAndTimeInTheUsersShortForm)
{
    const QLocale locale = QLocale::system();
    EXPECT_TRUE(locale.toDate(QString::fromStdString(desktop.DateText()), QLocale::ShortFormat).isValid());
    EXPECT_TRUE(locale.toTime(QString::fromStdString(desktop.TimeText()), QLocale::ShortFormat).isValid());
}

TEST_F(DesktopTest, ProgramGetsItsArgumentsWithoutAShell)
{
    const std::string program = MakeProgram("harvel");
    EXPECT_TRUE(desktop.StartProgram(program, {"::7", "%a b%", "$HOME;'\"", ""}, base));
    EXPECT_EQ(Report(), base + "\n[::7]\n[%a b%]\n[$HOME;'\"]\n[]\n.\n");
}

TEST_F(DesktopTest, ProgramNamedExeIsFoundWithoutItsEnding)
{
    MakeProgram("harvel");
    EXPECT_TRUE(desktop.StartProgram(base + "/harvel.exe", {"plain"}, base));
    EXPECT_EQ(Report(), base + "\n[plain]\n.\n");
}

TEST_F(DesktopTest, ExecutableExeComesFirst)
{
    MakeProgram("harvel.exe");
    std::ofstream(base + "/harvel") << "#!/bin/sh\n";
    chmod((base + "/harvel").c_str(), 0755);
    EXPECT_TRUE(desktop.StartProgram(base + "/harvel.exe", {"exe"}, base));
    EXPECT_EQ(Report(), base + "\n[exe]\n.\n");
}

TEST_F(DesktopTest, MissingProgramIsNotStarted)
{
    std::ofstream(base + "/harvel") << "no program";
    EXPECT_FALSE(desktop.StartProgram(base + "/harvel.exe", {}, base));
    EXPECT_FALSE(desktop.StartProgram(base + "/none.exe", {}, base));
    EXPECT_FALSE(desktop.StartProgram(base, {}, base));
    EXPECT_FALSE(desktop.StartProgram("sh", {}, base));
}

TEST_F(DesktopTest, ProgramThatTheSystemRefusesIsNotStarted)
{
    std::ofstream(base + "/imgbuild") << "#!/no/such/interpreter\n";
    chmod((base + "/imgbuild").c_str(), 0755);
    EXPECT_FALSE(desktop.StartProgram(base + "/imgbuild.exe", {}, base));
    MakeProgram("imgbuild");
    EXPECT_FALSE(desktop.StartProgram(base + "/imgbuild.exe", {}, base + "/none"));
}

TEST_F(DesktopTest, StartedProgramIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo((base + "/go").c_str(), 0600), 0);
    std::ofstream(base + "/slow") << "#!/bin/sh\nread line <'" << base << "/go'\necho \"$line\" >'" << base
                                  << "/report'\necho . >'" << base << "/report'\n";
    chmod((base + "/slow").c_str(), 0755);
    ASSERT_TRUE(desktop.StartProgram(base + "/slow", {}, base));
    std::ofstream(base + "/go") << "now\n"; // it waits for this, so nobody has waited for its end
    EXPECT_EQ(Report(), "now\n.\n");
}

TEST_F(DesktopTest, ProgramIsFoundOnThePath)
{
    const QByteArray path = qgetenv("PATH");
    const std::string second = base + "/b/objcopy";
    std::ofstream(base + "/objcopy") << "no program";
    MakeProgram("b/objcopy");
    qputenv("PATH", QByteArray::fromStdString(base + "/none:" + base + ":" + base + "/b"));
    EXPECT_EQ(desktop.ProgramOnPath("objcopy"), second);
    EXPECT_EQ(desktop.ProgramOnPath("none"), "");
    EXPECT_EQ(desktop.ProgramOnPath(""), "");
    qputenv("PATH", path);
}

TEST_F(DesktopTest, ObjcopyPutsAnImageAtItsAddressInSRecords)
{
    const std::string objcopy = desktop.ProgramOnPath("objcopy");
    if (objcopy.empty())
        GTEST_SKIP() << "objcopy is not installed";
    std::string image;
    for (int at = 0; at < 5000; ++at)
        image += static_cast<char>(at * 7 + at / 256);
    std::ofstream(base + "/temp.bin") << image;
    ASSERT_TRUE(desktop.StartProgram(
        objcopy, {"--change-addresses=0x60000", "-I", "binary", "-O", "srec", "temp.bin", "temp.sre"}, base));
    const auto text = [&](const std::string& name) {
        std::ifstream file(base + "/" + name);
        return std::string{std::istreambuf_iterator<char>(file), {}};
    };
    const QStringList back = {"-I",
                              "srec",
                              "-O",
                              "binary",
                              QString::fromStdString(base + "/temp.sre"),
                              QString::fromStdString(base + "/back.bin")};
    // Nobody tells when it is done: its last record is the sign.
    const auto isDone = [&] { return text("temp.sre").find("\nS8") != std::string::npos; };
    ASSERT_TRUE(QTest::qWaitFor(isDone, 60'000));
    ASSERT_EQ(QProcess::execute(QString::fromStdString(objcopy), back), 0);
    EXPECT_EQ(text("back.bin"), image);
    const std::string records = text("temp.sre");
    EXPECT_EQ(records.substr(records.find("\nS2") + 5, 6), "060000");
}

TEST_F(DesktopTest, TextFileIsHandedToTheUsersViewer)
{
    const QByteArray path = qgetenv("PATH");
    const std::string file = base + "/harvel.Log #1";
    std::ofstream(file) << "text";
    qputenv("PATH", QByteArray::fromStdString(base));
    EXPECT_FALSE(desktop.ShowTextFile(file));
    MakeProgram("xdg-open");
    qputenv("PATH", QByteArray::fromStdString(base) + ":" + path);
    EXPECT_TRUE(desktop.ShowTextFile(file));
    EXPECT_TRUE(QString::fromStdString(Report()).contains(QString::fromStdString("[" + file + "]")));
    EXPECT_FALSE(desktop.ShowTextFile(base + "/none"));
    EXPECT_FALSE(QtWindowDesktop().ShowTextFile(base + "/none"));
    qputenv("PATH", path);
}

TEST_F(DesktopTest, ShortcutIsAStartableFileOnTheDesktop)
{
    const std::string program = MakeProgram("harvel");
    EXPECT_TRUE(desktop.CreateShortcut({"KR400 on Com 3", base + "/harvel.exe", {"::3"}, base}));
    const std::string path = DesktopFile("KR400 on Com 3.desktop");
    struct stat about {
    };
    ASSERT_EQ(stat(path.c_str(), &about), 0);
    EXPECT_EQ(about.st_mode & 07777, 0755U);
    std::ifstream file(path);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_NE(text.find("\nExec=" + program + " ::3\n"), std::string::npos) << text;
}

TEST_F(DesktopTest, ShortcutOfAProgramElsewhereMeansTheOneBesideTheRunning)
{
    const std::string here = QCoreApplication::applicationFilePath().toStdString();
    EXPECT_TRUE(desktop.CreateShortcut({"beside", base + "/test_platform.exe", {}, base}));
    EXPECT_EQ(ExecOf("beside"), here);
    const std::string own = MakeProgram("test_platform");
    EXPECT_TRUE(desktop.CreateShortcut({"beside", base + "/test_platform.exe", {}, base}));
    EXPECT_EQ(ExecOf("beside"), own);
}

TEST_F(DesktopTest, ShortcutOfAProgramThatIsNowhereHasNoEnding)
{
    EXPECT_TRUE(desktop.CreateShortcut({"nowhere", base + "/harvel.exe", {}, base}));
    EXPECT_EQ(ExecOf("nowhere"), base + "/harvel");
}

TEST_F(DesktopTest, ShortcutOfTheSameNameIsReplaced)
{
    const auto files = [] { return QDir(QDir::homePath() + "/Desktop").entryList(QDir::Files).filter("again"); };
    EXPECT_TRUE(desktop.CreateShortcut({"again", "/opt/harvel", {"::1"}, ""}));
    EXPECT_TRUE(desktop.CreateShortcut({"again", "/opt/harvel", {"::2"}, ""}));
    EXPECT_EQ(files(), QStringList{"again.desktop"});
    std::ifstream file(DesktopFile("again.desktop"));
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_NE(text.find("Exec=/opt/harvel ::2\n"), std::string::npos) << text;
}

TEST_F(DesktopTest, ShortcutsThatAFileNameCannotTellApartStandBesideEachOther)
{
    const std::string longName(300, 'x');
    const std::vector<std::string> names = {"at 10/11", "at 10_11", "at 10/11", longName + "1", longName + "2"};
    for (const std::string& name : names)
        EXPECT_TRUE(desktop.CreateShortcut({name, "/opt/harvel", {"::1"}, ""}));
    const QDir made(QDir::homePath() + "/Desktop");
    EXPECT_EQ(made.entryList({"at 10*"}, QDir::Files), (QStringList{"at 10_11.desktop", "at 10_11_2.desktop"}));
    EXPECT_EQ(made.entryList({"xxx*"}, QDir::Files).size(), 2);
}

TEST_F(DesktopTest, WhatStandsInTheWayOfAShortcutStays)
{
    ASSERT_TRUE(desktop.CreateShortcut({"first", "/opt/harvel", {"::1"}, ""}));
    ASSERT_TRUE(fs::create_directory(DesktopFile("folder.desktop")));
    ASSERT_EQ(mkfifo(DesktopFile("pipe.desktop").c_str(), 0600), 0);
    std::ofstream(DesktopFile("mine.desktop")) << "my own text";
    for (const char* name : {"folder", "pipe", "mine"}) {
        EXPECT_TRUE(desktop.CreateShortcut({name, "/opt/harvel", {"::1"}, ""})) << name;
        EXPECT_EQ(ExecOf(name + std::string("_2")), "/opt/harvel ::1");
    }
    EXPECT_EQ(fs::file_size(DesktopFile("mine.desktop")), 11U);
    fs::remove(DesktopFile("pipe.desktop"));
}

TEST_F(DesktopTest, ShortcutThatCannotBeExpressedIsNotMade)
{
    EXPECT_FALSE(desktop.CreateShortcut({"bad", "/opt/harvel", {"latin\xfc"}, ""}));
    EXPECT_FALSE(fs::exists(DesktopFile("bad.desktop")));
}

TEST_F(DesktopTest, StartedShortcutHandsOverItsArgumentsByteForByte)
{
    const QString launcher = QStandardPaths::findExecutable("gio");
    if (launcher.isEmpty())
        GTEST_SKIP() << "gio is not installed";
    const std::vector<std::string> arguments = {"::7", "%PROFILE 1% $HOME", "a\\b \"c\" 'd'", "`x`;*?",
                                                "gr\xc3\xbc\xc3\x9f"};
    std::string expected = base + "\n";
    for (const std::string& argument : arguments)
        expected += "[" + argument + "]\n";
    for (const char* name : {"harvel", "my loggers/harvel", "100%/harvel", "a=b/harvel", "it's \\ $1/harvel"}) {
        ASSERT_TRUE(desktop.CreateShortcut({"started", MakeProgram(name), arguments, base}));
        ASSERT_EQ(QProcess::execute(launcher, {"launch", QString::fromStdString(DesktopFile("started.desktop"))}), 0)
            << name;
        EXPECT_EQ(Report(), expected + ".\n") << name;
    }
}

} // namespace harvelop::test
