#include "ctl_bench.h"
#include "panels/data_check.h"
#include "settings/option_keys.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace harvelop::test
{

namespace
{

std::vector<LoggerRecord> soundLoggers()
{
    std::vector<LoggerRecord> loggers = {SerialLogger(), ModemLogger(), NetworkLogger()};
    loggers[0].LoggerSaveFolder = "/tmp/";
    return loggers;
}

// A directory without anything odd.
struct CheckedCtl : StoredCtl {
    explicit CheckedCtl(const std::vector<LoggerRecord>& loggers = soundLoggers()) : StoredCtl(loggers)
    {
        desktop.onPath["report.exe"] = "/usr/bin/report.exe";
        std::string& options = File("options.ini");
        for (const std::string_view line : DefaultOptionLines())
            options.append(line == "Icons=1" ? "Icons=4" : line).append("\r\n");
    }

    // What `check` says, which changes nothing.
    std::string Check()
    {
        const auto before = files.files;
        const int code = Run({"check"});
        EXPECT_EQ(code, out.str().empty() ? CtlDone : CtlFailed);
        EXPECT_EQ(files.files, before);
        EXPECT_TRUE(files.writes.empty());
        return out.str();
    }

    // The line of an option, counted from 1, or of a logger; it is replaced.
    int Put(const std::string& file, const std::string& key, const std::string& line)
    {
        std::string& text = File(file);
        const size_t at = text.find(key);
        EXPECT_NE(at, std::string::npos) << key;
        const size_t end = text.find("\r\n", at);
        text.replace(at, end - at, line);
        return static_cast<int>(1 + std::count(text.begin(), text.begin() + static_cast<long>(at), '\n'));
    }
};

std::string atLine(const std::string& file, int line, const std::string& text)
{
    return file + ":" + std::to_string(line) + ": " + text + "\n";
}

// What is said of one logger that stands alone.
std::string saidOf(const LoggerRecord& logger)
{
    return CheckedCtl({logger}).Check();
}

std::string saidOfRecord(const std::string& lines)
{
    CheckedCtl t;
    t.File("found.ini") = lines;
    return t.Check();
}

} // namespace

TEST(CtlCheck, ASoundDirectoryHasNoFindings)
{
    CheckedCtl t;
    t.File("install.ini") = "Harvel was installed on 01/01/2026 at 10:00:00.\r\n";
    t.File("emaillist4.ini") = "0;Head; office\r\n0:a@b.c\r\nX:a@b.c\r\n";
    EXPECT_EQ(t.Check(), "");
    EXPECT_EQ(t.Run({"check", "--json"}), CtlDone);
    EXPECT_EQ(nlohmann::json::parse(t.out.str()), nlohmann::json::array());
}

TEST(CtlCheck, WhatTheCommandsWriteHasNoFindings)
{
    StoredCtl t(std::vector<LoggerRecord>{});
    EXPECT_EQ(t.Run({"add", "--model", "KR40", "--tcp", "weir.example.org:7700"}), CtlDone);
    EXPECT_EQ(t.Run({"add", "--model", "KR215", "--series", "2", "--com", "3", "--parity", "Odd"}), CtlDone);
    EXPECT_EQ(t.Run({"add", "--model", "KR305", "--modem", "5", "--phone", "0,,12", "--password", "x y"}), CtlDone);
    EXPECT_EQ(t.Run({"set", "1", "LoggerDescription=Weir", "ScheduleHTML.A=1", "LoggerMdbOn=1", "LoggerTableNames.A=T",
                     "LoggerSaveFolder=/tmp"}),
              CtlDone);
    EXPECT_EQ(t.Run({"lists", "2", "--add", "a@b.c", "--description", "Head office"}), CtlDone);
    EXPECT_EQ(t.Run({"options", "SMTPServerName=mail.example.org", "SaveToDesktop=1", "DesktopDir=a_b"}), CtlDone);
    EXPECT_EQ(t.Run({"check"}), CtlDone);
    EXPECT_EQ(t.out.str(), "");
}

TEST(CtlCheck, AnEmptyDirectoryIsSound)
{
    StoredCtl t(std::vector<LoggerRecord>{});
    t.files.files.clear();
    EXPECT_EQ(t.Run({"check"}), CtlDone);
    EXPECT_TRUE(t.files.files.empty());
}

TEST(CtlCheck, AValueThatAnOptionCannotTakeIsNamedButNotTold)
{
    const std::vector<std::vector<std::string>> cases = {
        {"ShowMessages", "yes", "ShowMessages wants True or False"},
        {"LastUtallyCore", "1e9", "LastUtallyCore wants a whole number"},
        {"LastUtallyCore", "77", "LastUtallyCore names no place in the list of loggers"},
        {"LastUtallyCore", "1.5", "LastUtallyCore is spelled otherwise than the program spells it"},
        {"LogFileSize", "1e2", "LogFileSize is spelled otherwise than the program spells it"},
        {"OptionsTop", "top", "OptionsTop wants a number"},
        {"LogFileSize", "-5", "LogFileSize can't be less than 0"},
        {"ModemTimeout", "4 s", "ModemTimeout wants a number of seconds"},
        {"SMTPPort", "65536", "SMTPPort wants a number from 1 to 65535"},
        {"LastSearch", "17", "LastSearch wants a number from 0 to 16"},
        {"SMTPAuthenticationType", "MD5", "SMTPAuthenticationType wants PLAIN, LOGIN or CRAM-MD5"},
        {"SMTPSender", "me", "SMTPSender is no address"},
        {"SMTPServerName", "mail-1", "SMTPServerName holds characters that the options panel drops"},
        {"DesktopDir", "a b", "DesktopDir holds characters that the options panel drops"},
    };
    for (const auto& row : cases) {
        CheckedCtl t;
        const int line = t.Put("options.ini", row[0] + "=", row[0] + "=" + row[1]);
        EXPECT_EQ(t.Check(), atLine("options.ini", line, row[2]));
    }
    CheckedCtl t;
    t.File("options.ini") += "AvailablePorts=1,17,\r\n";
    EXPECT_NE(t.Check().find("AvailablePorts wants numbers from 1 to 16, each followed by a comma, or 0"),
              std::string::npos);
}

TEST(CtlCheck, LinesOfOptionsThatAreNotReadAsMeantAreNamed)
{
    CheckedCtl doubled;
    const int first = doubled.Put("options.ini", "SiteID=", "SiteID=a");
    doubled.File("options.ini") += "SiteID=b\r\n";
    EXPECT_EQ(doubled.Check(),
              atLine("options.ini", static_cast<int>(DefaultOptionLines().size()) + 1,
                     "SiteID stands on line " + std::to_string(first) + " already, which is the one that is read"));
    CheckedCtl caught;
    const int line = caught.Put("options.ini", "DesktopDir=", "DesktopDir=Icons");
    EXPECT_EQ(caught.Check(),
              atLine("options.ini", line, "holds the word Icons, so it is what this option is read from"));
    CheckedCtl odd;
    const int none = odd.Put("options.ini", "SiteID=", "secret");
    EXPECT_EQ(odd.Check(), "options.ini: SiteID is missing\n" +
                               atLine("options.ini", none, "holds no \"=\"; the next save drops it"));
    CheckedCtl unknown;
    unknown.Put("options.ini", "tallyCores=0", "secret=1");
    EXPECT_EQ(unknown.Check(), atLine("options.ini", 8, "names no option; the next save drops it"));
    CheckedCtl spelled;
    const int other = spelled.Put("options.ini", "SiteID=", "SITEID=");
    EXPECT_EQ(spelled.Check(), atLine("options.ini", other, "SiteID is spelled otherwise"));
}

TEST(CtlCheck, AFieldThatItsLoggerCannotHaveIsNamed)
{
    const auto serial = [](auto change) {
        LoggerRecord logger = soundLoggers()[0];
        change(logger);
        return saidOf(logger);
    };
    const auto told = [](const std::string& text) { return atLine("found.ini", 1, text); };
    EXPECT_EQ(serial([](auto& r) { r.LoggerPort = "17"; }), told("LoggerPort wants a com port, from 1 to 16"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerModel = "KR99"; }), told("LoggerModel names no model"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerModel = "KR200"; }), told("LoggerModel names no model"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerBaud = "fast"; }), told("LoggerBaud wants a baud rate"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerParity = "Z"; }), told("LoggerParity wants a parity"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerDataBits = "5"; }), told("LoggerDataBits wants 6, 7 or 8"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerStopBits = "3"; }), told("LoggerStopBits wants 1 or 2"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerFlow = "x"; }), told("LoggerFlow wants NOFC, SWFC or HWFC"));
    EXPECT_EQ(serial([](auto& r) { r.ScheduleOn[4] = "2"; }), told("ScheduleOn.X wants 0 or 1"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerToDisk = 5; }), told("LoggerToDisk wants 0 or 1"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerSaveFolder = "/nowhere/at/all/"; }),
              told("LoggerSaveFolder names no folder that is there, with a separator behind it"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerRunProgram = "gone.exe"; }),
              told("LoggerRunProgram names no program that is there"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerDescription = "a b"; }),
              told("LoggerDescription holds characters that the panel drops"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerMdbOn = "x"; }), told("LoggerMdbOn wants 0 or 1"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerTimeout = ""; }), told("LoggerTimeout wants a number of seconds"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerIconKey = "2"; }),
              told("LoggerIconKey wants \"::\" and a number: nothing else finds the logger for harvel"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerTableNames[0] = "a b"; }),
              told("LoggerTableNames.A holds more or other characters than a table's name can have"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerTableNames[0] = r.LoggerTableNames[1] = "T"; }),
              told("two schedules have the same table name"));
    EXPECT_EQ(serial([](auto& r) { r.LoggerIconKey = "::9"; }),
              told("the counter Icons in options.ini stands below this logger's key ::9, which a new logger may get "
                   "again"));
    LoggerRecord network = NetworkLogger();
    network.LoggerPort = ":3000";
    network.LoggerFlow = "SWFC";
    EXPECT_EQ(saidOf(network), told("LoggerPort wants a host, a colon and a TCP port") +
                                   told("LoggerFlow belongs to other links and should be empty"));
    network = NetworkLogger();
    network.ScheduleRecords[11] = "many";
    EXPECT_EQ(saidOf(network), told("ScheduleRecords.X wants a number of records"));
}

TEST(CtlCheck, LinesOfLoggersThatAreNotReadAsMeantAreNamed)
{
    const std::string record = RecordText(NetworkLogger());
    const std::string sound = "1tallyCoreSettings=" + record + "\r\n";
    EXPECT_EQ(saidOfRecord(sound), "");
    EXPECT_EQ(saidOfRecord(sound + "noise\r\n"), atLine("found.ini", 2, "is no logger; the next save drops it"));
    EXPECT_EQ(saidOfRecord(sound + "2tallyCoreSettings=\r\n"),
              atLine("found.ini", 2, "holds no settings; the next save drops it"));
    EXPECT_EQ(saidOfRecord("7tallyCoreSettings=" + record + "\r\n"),
              atLine("found.ini", 1, "wants the number 1 in front"));
    EXPECT_EQ(saidOfRecord("1TallyCoreSettings=" + record + "\r\n"),
              atLine("found.ini", 1, "tallyCoreSettings= is spelled otherwise"));
    EXPECT_EQ(saidOfRecord("1tallyCoreSettings=1=" + record + "\r\n"),
              atLine("found.ini", 1, "is read only behind the last \"=\" of its first 22 characters"));
    EXPECT_EQ(saidOfRecord("1tallyCoreSettings=" + record.substr(0, record.size() - 3) + "\r\n"),
              atLine("found.ini", 1, "holds 92 fields; a logger has 93, each with a comma behind it"));
    EXPECT_EQ(saidOfRecord("1tallyCoreSettings=" + record + "x,\r\n"),
              atLine("found.ini", 1, "holds 94 fields; a logger has 93, each with a comma behind it"));
    std::string many;
    LoggerRecord logger = NetworkLogger();
    for (int number = 1; number <= MaxLoggers + 1; ++number) {
        logger.LoggerPort = "h:" + std::to_string(number);
        logger.LoggerIconKey = "::" + std::to_string(100 + number);
        many += std::to_string(number) + "tallyCoreSettings=" + RecordText(logger) + "\r\n";
    }
    EXPECT_NE(saidOfRecord(many).find("found.ini:51: is one logger too many: with more than 50 none is read\n"),
              std::string::npos);
}

TEST(CtlCheck, ANumberThatIsNoneIsNamed)
{
    const std::string text = RecordText(NetworkLogger());
    const size_t toDisk = text.find("1,0,1,,1,"); // LoggerToDisk, LoggerViaEmail, LoggerViaFTP, folder, LoggerKept
    ASSERT_NE(toDisk, std::string::npos);
    std::string record = text;
    record.replace(toDisk, 1, "on");
    EXPECT_EQ(saidOfRecord("1tallyCoreSettings=" + record + "\r\n"),
              atLine("found.ini", 1, "LoggerToDisk wants a number"));
    record = text;
    record.replace(toDisk, 1, "01");
    EXPECT_EQ(saidOfRecord("1tallyCoreSettings=" + record + "\r\n"),
              atLine("found.ini", 1, "is spelled otherwise than the program spells it"));
}

TEST(CtlCheck, LoggersInEachOthersWayAreNamed)
{
    LoggerRecord twin = soundLoggers()[0];
    EXPECT_EQ(CheckedCtl({twin, twin}).Check(),
              atLine("found.ini", 2, "is reached on the same link as the logger on line 1") +
                  atLine("found.ini", 2, "has the key of the logger on line 1"));
    LoggerRecord longer = NetworkLogger();
    longer.LoggerIconKey = "::23";
    CheckedCtl hidden({longer, twin});
    hidden.Put("options.ini", "Icons=", "Icons=23");
    EXPECT_EQ(hidden.Check(), atLine("found.ini", 2, "a shortcut to ::2 finds line 1 first"));
}

TEST(CtlCheck, OddLinesOfADeliveryListAreNamed)
{
    const auto older = [](const std::string& text) {
        CheckedCtl t;
        t.File("emaillist2.ini") = text;
        return t.Check();
    };
    const auto told = [](int line, const std::string& text) { return atLine("emaillist2.ini", line, text); };
    EXPECT_EQ(older("x\r\n\r\nY:a@b.c\r\n"), told(1, "is neither a description nor an address") +
                                                 told(2, "is neither a description nor an address") +
                                                 told(3, "is neither a description nor an address"));
    EXPECT_EQ(older("K:a@b.c\r\n"), told(1, "the logger has no such schedule; the next save drops the line"));
    EXPECT_EQ(older("0;a\r\n0;b\r\n"), told(1, "line 2 describes the same list anew"));
    EXPECT_EQ(older("0;\r\n0:\r\n"), told(1, "an empty description, which the next save drops") +
                                         told(2, "an empty address, which takes a place until the next save"));
    for (const char* bad : {"a", "@b", "a@", "a@b@c", "a-b@c.d", "a b@c.d"})
        EXPECT_EQ(older("0:" + std::string(bad) + "\r\n"), told(1, "is no address that a list can hold")) << bad;
    EXPECT_EQ(older("0:a@b.c\r\nA:a@b.c\r\n0:a@b.c\r\n"), told(3, "a@b.c stands in this list already"));
    std::string full;
    for (int i = 1; i <= MaxListEntries + 1; ++i)
        full += "0:" + std::to_string(i) + "@b.c\r\n";
    EXPECT_EQ(older(full), told(20, "stands on the twentieth place of its list, which the next save drops") +
                               told(21, "stands behind the twentieth place of its list"));
}

TEST(CtlCheck, OddBytesAndLineEndsAreNamed)
{
    const auto said = [](const std::string& text) {
        std::string lines;
        for (const Finding& finding : CheckBytes(text))
            lines += std::to_string(finding.line) + " " + finding.text + "\n";
        return lines;
    };
    EXPECT_EQ(said("a\r\nb\r\n\r\n"), "");
    EXPECT_EQ(said("a\r\nb\nc\n"), "2 ends in LF, not in CR LF\n");
    EXPECT_EQ(said("a\rb\r\n"), "1 ends in CR, not in CR LF\n");
    EXPECT_EQ(said("a\r\nb"), "2 has no line end, not in CR LF\n");
    EXPECT_EQ(said("\xEF\xBB\xBF"
                   "a\r\n"),
              "1 begins with a byte order mark, which is taken as text\n");
    EXPECT_EQ(said("a\x1b\r\n"), "1 holds control characters\n");
    EXPECT_EQ(said("\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80\r\n"), "");
    for (const char* bad : {"caf\xE9", "\xC3", "\xC3(", "\xFF", "\xE2\x82", "\xE0\x80\xAF", "\xED\xA0\x80"})
        EXPECT_EQ(said(std::string(bad) + "\r\n"), "1 holds bytes that are no UTF-8\n");
}

TEST(CtlCheck, AFileThatCannotBeReadIsNamed)
{
    CheckedCtl t;
    t.files.unreadable.insert(TestProgram::OptionsIni);
    EXPECT_EQ(t.Check(), "options.ini: can't be read\n");
}

TEST(CtlCheck, AMarkThatIsNoneAndWhatStandsBehindItAreNamed)
{
    CheckedCtl t;
    t.File("install.ini") = "abc\r\nmore\r\n";
    EXPECT_EQ(t.Check(),
              atLine("install.ini", 1, "is too short for a mark; the next start sets the directory up anew") +
                  atLine("install.ini", 2, "only the first line counts"));
}

TEST(CtlCheck, TheLanguageFileInUseIsCheckedToo)
{
    CheckedCtl t;
    const int line = t.Put("options.ini", "UseLangFile=", "UseLangFile=1");
    EXPECT_EQ(t.Check(), atLine("options.ini", line, "the language file can't be read: the program would not start"));
    EXPECT_EQ(t.Run({"language-template"}), CtlDone);
    t.File("English.txt") = t.out.str();
    EXPECT_EQ(t.Check(), "");
    t.File("English.txt") += "1001:1:8:beyond\r\n";
    EXPECT_TRUE(t.Check().starts_with("English.txt:"));
}

TEST(CtlCheck, FindingsAsJson)
{
    CheckedCtl t;
    t.File("install.ini") = "abc\r\n";
    EXPECT_EQ(t.Run({"check", "--json"}), CtlFailed);
    EXPECT_EQ(
        nlohmann::json::parse(t.out.str()),
        nlohmann::json::array({{{"file", "install.ini"},
                                {"line", 1},
                                {"kind", "changed by a save"},
                                {"text", "is too short for a mark; the next start sets the directory up anew"}}}));
}

} // namespace harvelop::test
