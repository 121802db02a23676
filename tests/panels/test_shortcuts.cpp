// The whole road of a shortcut: from what the user types into the panel to what the started program gets.
#include "icon_bench.h"
#include "panels/frmSupport.h"
#include "platform/qt/qt_desktop.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace harvelop::test
{

namespace
{

// A home directory of its own, with a folder of loggers whose unload program only reports its arguments.
class Home
{
public:
    explicit Home(const std::string& folder) : m_directory(m_home.path().toStdString() + "/" + folder + "/")
    {
        qputenv("HOME", m_home.path().toUtf8());
        qputenv("XDG_CONFIG_HOME", (m_home.path() + "/config").toUtf8());
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // nor must it be needed
        QDir().mkpath(QString::fromStdString(m_directory));
        const std::string report = m_home.path().toStdString() + "/report";
        EXPECT_EQ(mkfifo(report.c_str(), 0600), 0);
        m_report = ::open(report.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
        std::ofstream(m_directory + "harvel")
            << "#!/bin/sh\nprintf '%s\\0' \"$PWD\" \"$#\" \"$@\" > '" << report << "'\n";
        chmod((m_directory + "harvel").c_str(), 0755);
    }
    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;
    ~Home()
    {
        close(m_report);
        for (size_t i = 0; i < std::size(Variables); ++i)
            if (m_before[i].isNull())
                qunsetenv(Variables[i]);
            else
                qputenv(Variables[i], m_before[i]);
    }

    const std::string& Directory() const { return m_directory; } // with a trailing separator
    QStringList DesktopFiles() const
    {
        const QDir desktop(m_home.path() + "/Desktop");
        QStringList paths;
        for (const QString& name : desktop.entryList({"*.desktop"}, QDir::Files | QDir::Hidden))
            paths << desktop.filePath(name);
        return paths;
    }

    // The current directory and the arguments of a program that was started; none if nothing comes in time.
    std::vector<std::string> Report() const
    {
        std::string told;
        pollfd waiting{m_report, POLLIN, 0};
        while (!isWhole(told) && poll(&waiting, 1, 20'000) == 1) {
            char block[512];
            const ssize_t count = read(m_report, block, sizeof block);
            told.append(block, static_cast<size_t>(std::max<ssize_t>(count, 0)));
        }
        auto texts = split(told);
        if (texts.size() > 1)
            texts.erase(texts.begin() + 1);
        return texts;
    }

private:
    static std::vector<std::string> split(const std::string& told)
    {
        std::vector<std::string> texts;
        size_t begin = 0;
        for (size_t end = told.find('\0'); end != std::string::npos; end = told.find('\0', begin)) {
            texts.push_back(told.substr(begin, end - begin));
            begin = end + 1;
        }
        return texts;
    }
    static bool isWhole(const std::string& told)
    {
        const auto texts = split(told);
        return texts.size() >= 2 && texts.size() == 2 + std::stoul(texts[1]);
    }

    static constexpr const char* Variables[] = {"HOME", "XDG_CONFIG_HOME", "DBUS_SESSION_BUS_ADDRESS"};
    QByteArray m_before[std::size(Variables)] = {qgetenv(Variables[0]), qgetenv(Variables[1]), qgetenv(Variables[2])};
    QTemporaryDir m_home;
    std::string m_directory;
    int m_report = -1;
};

// Runs a tool to its end: its exit code and all that it says.
std::pair<int, std::string> RunTool(const char* tool, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(tool, arguments);
    process.waitForFinished();
    const bool ended = process.exitStatus() == QProcess::NormalExit && process.error() == QProcess::UnknownError;
    return {ended ? process.exitCode() : -1, process.readAll().toStdString()};
}

struct RoadTest : testing::Test {
    IconBench bench;
    QtDesktop desktop;

    void SetUp() override
    {
        for (const char* tool : {"gio", "desktop-file-validate"})
            if (QStandardPaths::findExecutable(tool).isEmpty())
                GTEST_SKIP() << tool << " is not installed";
    }

    // What a user makes who types this; empty commands make a shortcut that unloads.
    bool Make(const std::string& name, const std::string& commands, bool terminal)
    {
        bench.desktop.shortcuts.clear();
        bench.CreateIcon(1, [&](frmIcon& form) {
            Choose(form, commands.empty() ? "optUnload" : "optCommand");
            Find<QLineEdit>(form, "txtCommand").setText(ToQString(commands));
            Find<QLineEdit>(form, "txtName").setText(ToQString(name));
            if (terminal)
                Find<QCheckBox>(form, "chkTerminal").click();
            Ok(form);
        });
        return desktop.CreateShortcut(bench.Made());
    }
};

const char* const Commands[] = {
    "",
    "G",
    "/h/m G",
    "  two  blanks  ",
    " ",
    "a\tb",
    "\t",
    "\"quoted\"",
    "\"",
    "it's",
    "'all quoted'",
    "'\"'\"'",
    "50%",
    "%",
    "%%",
    "%f %u %c %k",
    "$HOME",
    "$(date)",
    "${x}",
    "`date`",
    "back\\slash",
    "ends in \\",
    "\\\\",
    "\\n \\s \\t \\\\",
    "\\\"",
    "~",
    "~/x",
    "#1",
    "A;B;",
    "a & b &",
    "a | b || c",
    "<in >out 2>&1",
    "(x)",
    "*",
    "?",
    "[a-z]",
    "{a,b}",
    "!x",
    "a=b",
    "--help",
    "line one\nline two\r\n",
    "M\xc3\xbchle \xe2\x82\xac \xe6\xb8\xac \xf0\x9f\x98\x80",
    "\xef\xbb\xbf is a mark",
    "RB=-10 'x y' \"z\" \\ $1 `2` %3 ~4 #5 ;6 &7 |8 <9> (10) *? \t\xc3\xa4\\",
};

} // namespace

TEST_F(RoadTest, StartedShortcutGetsWhatWasTypedByteForByte)
{
    const Home home("loggers");
    bench.heart.state.AppPath = home.Directory();
    bench.Store({NetworkLogger()});
    bool terminal = false;
    for (const std::string commands : Commands) {
        SCOPED_TRACE(commands);
        terminal = !terminal && !commands.empty();
        ASSERT_TRUE(Make(commands, commands, terminal)); // the name is as awkward
        const QStringList files = home.DesktopFiles();
        ASSERT_EQ(files.size(), 1);
        EXPECT_EQ(RunTool("desktop-file-validate", files), std::pair(0, std::string()));
        ASSERT_EQ(RunTool("gio", QStringList{"launch"} + files).first, 0);
        std::vector<std::string> expected = {home.Directory().substr(0, home.Directory().size() - 1), "::4"};
        if (!commands.empty())
            expected.push_back("%" + commands + (terminal ? "%" : ""));
        EXPECT_EQ(home.Report(), expected);
        QFile::remove(files.front());
    }
}

TEST_F(RoadTest, UnloadProgramIsFoundInAnyFolder)
{
    for (const char* folder : {"my loggers", "100%", "it's \"$HOME\" \\ `x`", "a=b;c", "M\xc3\xbchle"}) {
        SCOPED_TRACE(folder);
        const Home home(folder);
        bench.heart.state.AppPath = home.Directory();
        bench.Store({NetworkLogger()});
        ASSERT_TRUE(Make("", "50% $x", true));
        const QStringList files = home.DesktopFiles();
        EXPECT_EQ(RunTool("desktop-file-validate", files), std::pair(0, std::string()));
        ASSERT_EQ(RunTool("gio", QStringList{"launch"} + files).first, 0);
        EXPECT_EQ(home.Report(), (std::vector<std::string>{home.Directory().substr(0, home.Directory().size() - 1),
                                                           "::4", "%50% $x%"}));
    }
}

TEST_F(RoadTest, AwkwardNamesAreShownWhole)
{
    const Home home("loggers");
    bench.heart.state.AppPath = home.Directory();
    bench.Store({NetworkLogger()});
    const std::string longName(400, 'n');
    const std::string names[] = {"a/b",          "../../up",     ".hidden",         "..",           "/",
                                 "100% of it",   "Name=x",       "[Desktop Entry]", "M\xc3\xbchle", "a_b",
                                 longName + "1", longName + "2", " blank before",   "blank after "};
    for (const std::string& name : names)
        ASSERT_TRUE(Make(name, "", false)) << name;
    const QStringList files = home.DesktopFiles();
    EXPECT_EQ(files.size(), static_cast<qsizetype>(std::size(names)));
    EXPECT_EQ(RunTool("desktop-file-validate", files), std::pair(0, std::string()));
    std::multiset<std::string> shown;
    for (const QString& path : files) {
        EXPECT_FALSE(QFileInfo(path).isHidden()) << path.toStdString();
        std::ifstream file(path.toStdString());
        for (std::string line; std::getline(file, line);)
            if (line.starts_with("Name="))
                shown.insert(line.starts_with("Name=\\s") ? " " + line.substr(7) : line.substr(5));
    }
    EXPECT_EQ(shown, std::multiset<std::string>(std::begin(names), std::end(names)));
}

TEST_F(RoadTest, CommandsThatNoDesktopCanHandOverMakeNothing)
{
    const Home home("loggers");
    bench.heart.state.AppPath = home.Directory();
    bench.Store({NetworkLogger()});
    for (const std::string& commands : {std::string("a\0b", 3), std::string("latin\xfc"), std::string("\x1b[0m")})
        EXPECT_FALSE(Make("name", commands, false));
    EXPECT_EQ(home.DesktopFiles(), QStringList());
}

} // namespace harvelop::test
