#include "check_bench.h"
#include "panels/data_check.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace harvelop::test
{

namespace
{

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
        {"ModemTimeout", "4 s", "ModemTimeout wants a number of seconds, from 1 to 9999"},
        {"ModemTimeout", "0", "ModemTimeout wants a number of seconds, from 1 to 9999"},
        {"ModemTimeout", "99999999999999999999", "ModemTimeout wants a number of seconds, from 1 to 9999"},
        {"SMTPTimeout", "0", "SMTPTimeout wants a number of seconds, from 1 to 9999"},
        {"FTPTimeout", "1000", "FTPTimeout is longer than the 3 characters of its field"},
        {"SMTPPort", "65536", "SMTPPort wants a number from 1 to 65535"},
        {"LastSearch", "17", "LastSearch wants a number from 0 to 16"},
        {"LastSearch", "1.5", "LastSearch wants a number from 0 to 16"},
        {"TerminalWidth", "-5", "TerminalWidth can't be less than 0"},
        {"TerminalHeight", "-5", "TerminalHeight can't be less than 0"},
        {"TransmitHeight1", "-5", "TransmitHeight1 can't be less than 0"},
        {"SMTPAuthenticationType", "MD5", "SMTPAuthenticationType wants PLAIN, LOGIN or CRAM-MD5"},
        {"SMTPSender", "me", "SMTPSender does not look like an address"},
        {"SMTPServerName", "mail-1", "SMTPServerName holds characters that the options panel drops"},
        {"DesktopDir", "a b", "DesktopDir holds characters that the options panel drops"},
    };
    for (const auto& row : cases) {
        CheckedCtl t;
        const int line = t.Put("options.ini", row[0] + "=", row[0] + "=" + row[1]);
        EXPECT_EQ(t.Check(), AtLine("options.ini", line, row[2]));
    }
}

TEST(CtlCheck, ValuesOfOptionsThatNoFirstRunWritesAreLookedAtToo)
{
    const auto said = [](const std::string& line) {
        CheckedCtl t;
        t.File("options.ini") += line + "\r\n";
        const std::string place = "options.ini:" + std::to_string(DefaultOptionLines().size() + 1) + ": ";
        const std::string lines = t.Check();
        return lines.starts_with(place) ? lines.substr(place.size()) : lines;
    };
    for (const char* ports : {"1,17,", ",,", "1.5,", "1,2", "0,", "1,,2,"})
        EXPECT_EQ(said("AvailablePorts=" + std::string(ports)),
                  "AvailablePorts wants numbers from 1 to 16, each followed by a comma, or 0\n")
            << ports;
    for (const char* ports : {"", "0", "3,", "1,2,16,"})
        EXPECT_EQ(said("AvailablePorts=" + std::string(ports)), "") << ports;
    for (const char* name : {"../../etc/passwd", "C:\\Dansk"})
        EXPECT_EQ(said("Language=" + std::string(name)), "Language wants a name without a folder\n") << name;
    EXPECT_EQ(said("Language=Dansk"), "");
}

TEST(CtlCheck, WhatTheCommandTakesForAnOptionIsSound)
{
    StoredCtl t(std::vector<LoggerRecord>{});
    EXPECT_EQ(
        t.Run({"options", "SMTPServerRequiresAuthentication=1", "SMTPPassword=a\tb", "FTPPassword=\x01", "SiteID=\t",
               "SMTPPort=65535", "SMTPTimeout=999", "FTPTimeout=1", "ModemTimeout=1000", "LogFileSize=.123456"}),
        CtlDone);
    EXPECT_EQ(t.Run({"check"}), CtlDone);
    EXPECT_EQ(t.out.str(), "");
    t.File("options.ini") += "x\ty\r\n";
    EXPECT_EQ(t.Run({"check"}), CtlFailed);
    EXPECT_NE(t.out.str().find(": holds control characters\n"), std::string::npos);
}

TEST(CtlCheck, NoPieceOfAPasswordIsTold)
{
    for (const char* line : {"FTPPassword=myIconsPw", "oldpassword=myIconsPw"}) {
        CheckedCtl t;
        t.Put("options.ini", "FTPPassword=", line);
        const std::string said = t.Check();
        EXPECT_NE(said.find(": is what another option is read from\n"), std::string::npos) << said;
        EXPECT_EQ(said.find("Icons"), std::string::npos) << said;
    }
}

TEST(CtlCheck, LinesOfOptionsThatAreNotReadAsMeantAreNamed)
{
    CheckedCtl doubled;
    const int first = doubled.Put("options.ini", "SiteID=", "SiteID=a");
    doubled.File("options.ini") += "SiteID=b\r\n";
    EXPECT_EQ(doubled.Check(),
              AtLine("options.ini", static_cast<int>(DefaultOptionLines().size()) + 1,
                     "SiteID stands on line " + std::to_string(first) + " already, which is the one that is read"));
    CheckedCtl caught;
    const int line = caught.Put("options.ini", "DesktopDir=", "DesktopDir=Icons");
    EXPECT_EQ(caught.Check(),
              AtLine("options.ini", line, "holds the word Icons, so it is what this option is read from"));
    CheckedCtl odd;
    const int none = odd.Put("options.ini", "SiteID=", "secret");
    EXPECT_EQ(odd.Check(), "options.ini: SiteID is missing\n" +
                               AtLine("options.ini", none, "holds no \"=\"; the next save drops it"));
    CheckedCtl unknown;
    unknown.Put("options.ini", "tallyCores=0", "secret=1");
    EXPECT_EQ(unknown.Check(), AtLine("options.ini", 8, "names no option; the next save drops it"));
    CheckedCtl spelled;
    const int other = spelled.Put("options.ini", "SiteID=", "SITEID=");
    EXPECT_EQ(spelled.Check(), AtLine("options.ini", other, "SiteID is spelled otherwise"));
}

TEST(CtlCheck, AFieldThatItsLoggerCannotHaveIsNamed)
{
    const auto serial = [](auto change) {
        LoggerRecord logger = SoundLoggers()[0];
        change(logger);
        return saidOf(logger);
    };
    const auto told = [](const std::string& text) { return AtLine("found.ini", 1, text); };
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
    EXPECT_EQ(saidOfRecord(sound + "noise\r\n"), AtLine("found.ini", 2, "is no logger; the next save drops it"));
    EXPECT_EQ(saidOfRecord(sound + "2tallyCoreSettings=\r\n"),
              AtLine("found.ini", 2, "holds no settings; the next save drops it"));
    EXPECT_EQ(saidOfRecord("7tallyCoreSettings=" + record + "\r\n"),
              AtLine("found.ini", 1, "wants the number 1 in front: a shortcut goes by the number that it finds"));
    EXPECT_EQ(saidOfRecord("01tallyCoreSettings=" + record + "\r\n"),
              AtLine("found.ini", 1, "wants the number 1 in front"));
    EXPECT_EQ(saidOfRecord("1TallyCoreSettings=" + record + "\r\n"),
              AtLine("found.ini", 1, "tallyCoreSettings= is spelled otherwise"));
    EXPECT_EQ(saidOfRecord("1tallyCoreSettings=1=" + record + "\r\n"),
              AtLine("found.ini", 1, "is read only behind the last \"=\" of its first 22 characters"));
    EXPECT_EQ(saidOfRecord("1tallyCoreSettings=" + record.substr(0, record.size() - 3) + "\r\n"),
              AtLine("found.ini", 1, "holds 92 fields; a logger has 93, each with a comma behind it"));
    EXPECT_EQ(saidOfRecord("1tallyCoreSettings=" + record + "x,\r\n"),
              AtLine("found.ini", 1, "holds 94 fields; a logger has 93, each with a comma behind it"));
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
              AtLine("found.ini", 1, "LoggerToDisk wants a number"));
    record = text;
    record.replace(toDisk, 1, "01");
    EXPECT_EQ(saidOfRecord("1tallyCoreSettings=" + record + "\r\n"),
              AtLine("found.ini", 1, "is spelled otherwise than the program spells it"));
}

TEST(CtlCheck, LoggersInEachOthersWayAreNamed)
{
    LoggerRecord twin = SoundLoggers()[0];
    EXPECT_EQ(CheckedCtl({twin, twin}).Check(),
              AtLine("found.ini", 2, "is reached on the same link as the logger on line 1") +
                  AtLine("found.ini", 2, "has the key of the logger on line 1"));
    LoggerRecord longer = NetworkLogger();
    longer.LoggerIconKey = "::23";
    CheckedCtl hidden({longer, twin});
    hidden.Put("options.ini", "Icons=", "Icons=23");
    EXPECT_EQ(hidden.Check(), AtLine("found.ini", 2, "a shortcut to ::2 finds line 1 first"));
    EXPECT_EQ(saidOfRecord("; a note on ::2\r\n1tallyCoreSettings=" + RecordText(twin) + "\r\n"),
              AtLine("found.ini", 1, "is no logger; the next save drops it") +
                  AtLine("found.ini", 2, "a shortcut to ::2 finds line 1 first, which is no logger"));
}

TEST(CtlCheck, OddLinesOfADeliveryListAreNamed)
{
    const auto older = [](const std::string& text) {
        CheckedCtl t;
        t.File("emaillist2.ini") = text;
        return t.Check();
    };
    const auto told = [](int line, const std::string& text) { return AtLine("emaillist2.ini", line, text); };
    EXPECT_EQ(older("x\r\n\r\nY:a@b.c\r\n"), told(1, "is neither a description nor an address") +
                                                 told(2, "is neither a description nor an address") +
                                                 told(3, "is neither a description nor an address"));
    EXPECT_EQ(older("K:a@b.c\r\n"), told(1, "the logger has no such schedule; the next save drops the line"));
    EXPECT_EQ(older("E:a@b.c\r\n"), told(1, "the logger has no such schedule; the next save drops the line"));
    EXPECT_EQ(older("0;a\r\n0;b\r\n"), told(1, "line 2 describes the same list anew"));
    EXPECT_EQ(older("0;\r\n0:\r\n"), told(1, "an empty description, which the next save drops") +
                                         told(2, "an empty address, which takes a place until the next save"));
    for (const char* bad : {"a", "@b", "a@", "a@b@c", "a-b@c.d", "a b@c.d"})
        EXPECT_EQ(older("0:" + std::string(bad) + "\r\n"), told(1, "does not look like an address")) << bad;
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
              AtLine("install.ini", 1, "is too short for a mark; the next start sets the directory up anew") +
                  AtLine("install.ini", 2, "only the first line counts"));
}

TEST(CtlCheck, TheLanguageFileInUseIsCheckedToo)
{
    CheckedCtl t;
    const int line = t.Put("options.ini", "UseLangFile=", "UseLangFile=1");
    EXPECT_EQ(t.Check(), AtLine("options.ini", line, "the language file can't be read: the program would not start"));
    EXPECT_EQ(t.Run({"language-template"}), CtlDone);
    const std::string whole = t.out.str();
    t.File("English.txt") = whole;
    EXPECT_EQ(t.Check(), "");
    t.File("English.txt") += "1001:1:8:beyond\r\n";
    EXPECT_EQ(t.Check(), AtLine("English.txt", static_cast<int>(1 + std::count(whole.begin(), whole.end(), '\n')),
                                "passed over: \"1001\" is no whole number from 1 to 1000"));
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
