#include "app/ctl_arguments.h"

#include <gtest/gtest.h>

namespace harvelop
{

namespace
{

std::string errorOf(const std::vector<std::string>& words)
{
    const auto parsed = ParseCtlArguments(words);
    const auto* error = std::get_if<std::string>(&parsed);
    return error ? *error : std::string();
}

CtlCommand commandOf(const std::vector<std::string>& words)
{
    const auto parsed = ParseCtlArguments(words);
    EXPECT_TRUE(std::holds_alternative<CtlCommand>(parsed)) << errorOf(words);
    return std::holds_alternative<CtlCommand>(parsed) ? std::get<CtlCommand>(parsed) : CtlCommand();
}

} // namespace

TEST(CtlArguments, FindTakesItsOptionsInAnyOrder)
{
    const auto command = commandOf({"find", "--yes", "--dir", "/tmp/x", "--port", "12", "--password=a b"});
    EXPECT_EQ(command.verb, CtlCommand::Verb::Find);
    EXPECT_EQ(command.directory, "/tmp/x");
    EXPECT_EQ(command.port, 12);
    EXPECT_TRUE(command.yes);
    EXPECT_EQ(command.password, "a b");
}

TEST(CtlArguments, DefaultsAreTheCurrentDirectoryAllPortsAndAsking)
{
    const auto command = commandOf({"find"});
    EXPECT_EQ(command.directory, ".");
    EXPECT_FALSE(command.port);
    EXPECT_FALSE(command.yes);
    EXPECT_FALSE(command.password);
    EXPECT_FALSE(commandOf({"find", "--all"}).port);
}

TEST(CtlArguments, ListShowAndPorts)
{
    EXPECT_TRUE(commandOf({"list", "--json"}).json);
    EXPECT_EQ(commandOf({"show", "50"}).number, 50);
    EXPECT_EQ(commandOf({"ports"}).verb, CtlCommand::Verb::Ports);
    EXPECT_EQ(commandOf({"--help"}).verb, CtlCommand::Verb::Help);
    EXPECT_EQ(commandOf({"find", "--version"}).verb, CtlCommand::Verb::Version);
}

TEST(CtlArguments, SetTakesFieldsInTheirOrder)
{
    const auto command = commandOf({"set", "7", "LoggerRunCommand=a=b", "--dir", "/x", "ScheduleOn.A=", "a=-1"});
    EXPECT_EQ(command.verb, CtlCommand::Verb::Set);
    EXPECT_EQ(command.number, 7);
    ASSERT_EQ(command.edits.size(), 3u);
    EXPECT_EQ(command.edits[0].field, "LoggerRunCommand");
    EXPECT_EQ(command.edits[0].value, "a=b");
    EXPECT_EQ(command.edits[1].field, "ScheduleOn.A");
    EXPECT_EQ(command.edits[1].value, "");
    EXPECT_EQ(command.edits[2].value, "-1");
}

TEST(CtlArguments, ListsTakesItsChangesInTheirOrder)
{
    using Kind = ListEdit::Kind;
    const auto command =
        commandOf({"lists", "50", "--clear", "--add", "-a", "--schedule", "X", "--remove=b", "--description", "c d"});
    EXPECT_EQ(command.verb, CtlCommand::Verb::Lists);
    EXPECT_EQ(command.number, 50);
    EXPECT_EQ(command.schedule, "X");
    const std::vector<std::pair<Kind, std::string>> wanted = {
        {Kind::Clear, ""}, {Kind::Add, "-a"}, {Kind::Remove, "b"}, {Kind::Description, "c d"}};
    ASSERT_EQ(command.listEdits.size(), wanted.size());
    for (size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(command.listEdits[i].kind, wanted[i].first);
        EXPECT_EQ(command.listEdits[i].text, wanted[i].second);
    }
    EXPECT_FALSE(commandOf({"lists", "1"}).schedule);
    EXPECT_TRUE(commandOf({"lists", "1", "--schedule", "0", "--json"}).json);
    EXPECT_TRUE(commandOf({"lists", "1", "--delete-all", "--yes"}).deleteAll);
}

TEST(CtlArguments, WrongWordsOfSetAndListsAreNamed)
{
    for (const char* verb : {"set", "lists"})
        for (const std::vector<std::string>& rest : {std::vector<std::string>{}, {"0"}, {"51"}, {"a=1"}}) {
            std::vector<std::string> words = {verb};
            words.insert(words.end(), rest.begin(), rest.end());
            EXPECT_EQ(errorOf(words), std::string(verb) + " wants a logger's number, from 1 to 50");
        }
    EXPECT_EQ(errorOf({"set", "1"}), "set wants at least one FIELD=VALUE");
    for (const char* word : {"secret", "=secret", ""})
        EXPECT_EQ(errorOf({"set", "1", "LoggerRunCommand=", word}), "set wants each change as FIELD=VALUE") << word;
    EXPECT_EQ(errorOf({"set", "1", "a=1", "--port", "1"}), "--port does not go with set");
    EXPECT_EQ(errorOf({"lists", "1", "a@b.c"}), "there is a word too many behind lists");
    EXPECT_EQ(errorOf({"lists", "1", "--add"}), "--add wants a value");
    EXPECT_EQ(errorOf({"lists", "1", "--clear=1"}), "--clear takes no value");
    EXPECT_EQ(errorOf({"show", "1", "--clear"}), "--clear does not go with show");
    for (const std::vector<std::string>& other : {std::vector<std::string>{"--clear"}, {"--schedule", "A"}}) {
        std::vector<std::string> words = {"lists", "1", "--delete-all"};
        words.insert(words.end(), other.begin(), other.end());
        EXPECT_EQ(errorOf(words), "--delete-all goes with --yes alone");
    }
}

TEST(CtlArguments, AddTakesALoggerOfEachKind)
{
    const auto com = commandOf({"add",  "--model",     "KR305", "--series",    "3",  "--serial", "77",    "--password",
                                "-x y", "--timeout",   "25",    "--com",       "16", "--baud",   "19200", "--parity",
                                "Odd",  "--data-bits", "7",     "--stop-bits", "2",  "--flow",   "HWFC"});
    EXPECT_EQ(com.verb, CtlCommand::Verb::Add);
    const AddValues& v = com.logger;
    const std::vector<std::string> held = {v.model, v.series, v.serial, v.password, v.timeout,  v.kind,
                                           v.port,  v.baud,   v.parity, v.dataBits, v.stopBits, v.flow};
    EXPECT_EQ(held, (std::vector<std::string>{"KR305", "Series 3", "77", "-x y", "25", "RS232", "16", "19200", "Odd",
                                              "7", "2", "HWFC"}));
    const AddValues modem =
        commandOf({"add", "--modem", "2", "--phone", "0,1", "--init", "at,x", "--baud", "300", "--model", "KR40"})
            .logger;
    EXPECT_EQ(modem.kind, "Dialup");
    EXPECT_EQ(modem.modemPort + " " + modem.phone + " " + modem.init + " " + modem.modemBaud, "2 0,1 at,x 300");
    const AddValues network = commandOf({"add", "--tcp=host.example:65535", "--model", "KR40"}).logger;
    EXPECT_EQ(network.kind, "Ethernet");
    EXPECT_EQ(network.address + " " + network.tcpPort, "host.example 65535");
    const AddValues first;
    const AddValues plain = commandOf({"add", "--model", "KR20", "--com", "1"}).logger;
    EXPECT_EQ(plain.series + plain.baud + plain.parity + plain.dataBits + plain.stopBits + plain.flow + plain.timeout,
              first.series + first.baud + first.parity + first.dataBits + first.stopBits + first.flow + first.timeout);
}

TEST(CtlArguments, WrongWordsOfAddNameWhatIsAccepted)
{
    const auto with = [](std::vector<std::string> more) {
        std::vector<std::string> words = {"add", "--model", "KR20", "--com", "1"};
        words.insert(words.end(), more.begin(), more.end());
        return errorOf(words);
    };
    EXPECT_EQ(with({"--model", "KR99"}), "--model wants one of KR20, KR21, KR23, KR200, KR205, KR215, KR300, KR305, "
                                         "KR315, KR400, KR45, KR41, KR40");
    EXPECT_EQ(with({"--baud", "2400"}), "--baud wants one of 300, 600, 1200, 4800, 9600, 14400, 19200, 28800, 38400, "
                                        "56000, 57600, 115200");
    EXPECT_EQ(with({"--parity", "N"}), "--parity wants one of None, Odd, Even");
    EXPECT_EQ(with({"--data-bits", "5"}), "--data-bits wants one of 6, 7, 8");
    EXPECT_EQ(with({"--stop-bits", "1.5"}), "--stop-bits wants one of 1, 2");
    EXPECT_EQ(with({"--flow", "SWHWFC"}), "--flow wants one of NOFC, SWFC, HWFC");
    for (const char* series : {"0", "4", "Series 1", ""})
        EXPECT_EQ(with({"--series", series}), "--series wants one of 1, 2, 3") << series;
    for (const char* timeout : {"", "1.5", "-1", "x"})
        EXPECT_EQ(with({"--timeout", timeout}), "--timeout wants a number of seconds") << timeout;
    for (const char* port : {"0", "17", "x", ""})
        EXPECT_EQ(with({"--com", port}), "--com wants a number from 1 to 16") << port;
    for (const char* place : {"host", "host:", ":1", "host:0", "host:65536", "host:x", "a:b:1", "a,b:1", "a b:1", ""})
        EXPECT_EQ(errorOf({"add", "--model", "KR20", "--tcp", place}),
                  "--tcp wants HOST:PORT, with a port from 1 to 65535")
            << place;
    EXPECT_EQ(with({"--serial", "a,b"}), "--serial can't hold a comma or a line end");
    EXPECT_EQ(with({"--password", "se,cret"}), "--password can't hold a comma or a line end");
    EXPECT_EQ(errorOf({"add", "--model", "KR20", "--modem", "1", "--phone", "1\n2"}), "--phone can't hold a line end");
    EXPECT_EQ(with({"secret"}), "there is a word too many behind add");
}

TEST(CtlArguments, WhatOfAddDoesNotGoTogetherIsNamed)
{
    EXPECT_EQ(errorOf({"add", "--com", "1"}), "add wants a --model");
    EXPECT_EQ(errorOf({"add", "--model", "KR20"}), "add wants one of --com, --modem, --tcp");
    EXPECT_EQ(errorOf({"add", "--model", "KR20", "--com", "1", "--tcp", "a:1"}),
              "--com, --modem and --tcp exclude each other");
    EXPECT_EQ(errorOf({"add", "--model", "KR20", "--tcp", "a:1", "--baud", "300"}), "--baud does not go with --tcp");
    EXPECT_EQ(errorOf({"add", "--model", "KR20", "--modem", "1", "--phone", "1", "--parity", "Odd"}),
              "--parity does not go with --modem");
    EXPECT_EQ(errorOf({"add", "--model", "KR20", "--com", "1", "--init", "at"}), "--init does not go with --com");
    EXPECT_EQ(errorOf({"add", "--model", "KR20", "--modem", "1"}), "--modem wants a --phone");
    for (const char* model : {"KR40", "KR41", "KR45", "KR400"})
        EXPECT_EQ(errorOf({"add", "--model", model, "--com", "1", "--series", "1"}),
                  "a " + std::string(model) + " has no --series");
    EXPECT_EQ(errorOf({"list", "--model", "KR20"}), "--model does not go with list");
    EXPECT_EQ(errorOf({"connect", "1", "--password", "x"}), "--password does not go with connect");
}

TEST(CtlArguments, SendTakesOneTextAndTellsNoneBack)
{
    EXPECT_EQ(commandOf({"send", "3", "a b"}).text, "a b");
    EXPECT_EQ(commandOf({"send", "3", ""}).text, "");
    EXPECT_EQ(commandOf({"send", "3", "-"}).text, "-");
    EXPECT_EQ(commandOf({"send", "3", "--", "--secret"}).text, "--secret");
    EXPECT_EQ(commandOf({"send", "--dir", "/x", "3", "--", "--"}).text, "--");
    EXPECT_EQ(commandOf({"--", "terminal", "3"}).number, 3);
    for (const std::vector<std::string>& rest : {std::vector<std::string>{}, {"se", "cret"}, {"secret\r\n"}}) {
        std::vector<std::string> words = {"send", "3"};
        words.insert(words.end(), rest.begin(), rest.end());
        EXPECT_EQ(errorOf(words), "send wants one TEXT of one line");
    }
    EXPECT_EQ(errorOf({"send", "3", "-secret"}), "send wants a TEXT that begins with \"-\" behind \"--\"");
    for (const char* verb : {"test", "connect", "send", "terminal"})
        EXPECT_EQ(errorOf({verb, "0"}), std::string(verb) + " wants a logger's number, from 1 to 50");
}

TEST(CtlArguments, LoadTakesAFileAndWhereItGoes)
{
    using Target = CtlCommand::Target;
    const auto memory = commandOf({"load", "7", "a b.cmd", "--yes"});
    EXPECT_EQ(memory.verb, CtlCommand::Verb::Load);
    EXPECT_EQ(memory.number, 7);
    EXPECT_EQ(memory.file, "a b.cmd");
    EXPECT_EQ(memory.target, Target::Memory);
    EXPECT_TRUE(memory.yes);
    EXPECT_EQ(commandOf({"load", "--card", "7", "x"}).target, Target::Card);
    EXPECT_EQ(commandOf({"load", "7", "x", "--flash"}).target, Target::Flash);
    EXPECT_EQ(commandOf({"load", "7", "--", "--flash"}).file, "--flash");
    for (const std::vector<std::string>& rest : {std::vector<std::string>{}, {""}, {"x", "y"}}) {
        std::vector<std::string> words = {"load", "7"};
        words.insert(words.end(), rest.begin(), rest.end());
        EXPECT_EQ(errorOf(words), "load wants one FILE");
    }
    EXPECT_EQ(errorOf({"load", "7", "x", "--flash", "--card"}), "--card and --flash exclude each other");
    EXPECT_EQ(errorOf({"load", "7", "x", "--programs"}), "--programs does not go with load");
}

TEST(CtlArguments, ClearTakesOneThingToClear)
{
    using Target = CtlCommand::Target;
    EXPECT_EQ(commandOf({"clear", "7", "--programs"}).target, Target::Memory);
    EXPECT_EQ(commandOf({"clear", "7", "--card", "--yes"}).target, Target::Card);
    EXPECT_EQ(commandOf({"clear", "7", "--flash"}).target, Target::Flash);
    const auto all = commandOf({"clear", "7", "--all-jobs"});
    EXPECT_EQ(all.target, Target::Job);
    EXPECT_EQ(all.job, "DIRJOBS");
    EXPECT_EQ(commandOf({"clear", "7", "--job", "*RAIN 2"}).job, "RAIN2");
    EXPECT_EQ(commandOf({"clear", "7", "--job=FLOW"}).target, Target::Job);

    EXPECT_EQ(errorOf({"clear", "7"}), "clear wants one of --job, --all-jobs, --programs, --card, --flash");
    EXPECT_EQ(errorOf({"clear", "7", "--yes"}), "clear wants one of --job, --all-jobs, --programs, --card, --flash");
    EXPECT_EQ(errorOf({"clear", "7", "--flash", "--programs"}), "--programs and --flash exclude each other");
    for (const std::vector<std::string>& order :
         {std::vector<std::string>{"--job", "A", "--all-jobs"}, {"--all-jobs", "--job", "A"}}) {
        std::vector<std::string> words = {"clear", "7"};
        words.insert(words.end(), order.begin(), order.end());
        EXPECT_EQ(errorOf(words), "--job and --all-jobs exclude each other");
    }
    EXPECT_EQ(errorOf({"clear", "7", "--job", "A", "--job", "B"}), "--job wants one job");
    for (const char* name : {"", " ", "*"})
        EXPECT_EQ(errorOf({"clear", "7", "--job", name}), "--job wants a job's name") << name;
    for (const char* name : {"DIRJOBS", "* DIRJOBS"})
        EXPECT_EQ(errorOf({"clear", "7", "--job", name}), "--job DIRJOBS would be all jobs; --all-jobs deletes them");
    EXPECT_EQ(errorOf({"clear", "7", "FLOW", "--flash"}), "there is a word too many behind clear");
}

TEST(CtlArguments, JobsAndLoginTests)
{
    EXPECT_EQ(commandOf({"jobs", "50"}).verb, CtlCommand::Verb::Jobs);
    EXPECT_EQ(commandOf({"test-smtp"}).verb, CtlCommand::Verb::TestSMTP);
    EXPECT_EQ(commandOf({"test-ftp"}).verb, CtlCommand::Verb::TestFTP);
    for (const char* verb : {"load", "jobs", "clear"})
        EXPECT_EQ(errorOf({verb, "0"}), std::string(verb) + " wants a logger's number, from 1 to 50");
    EXPECT_EQ(errorOf({"test-ftp", "1"}), "there is a word too many behind test-ftp");
    EXPECT_EQ(errorOf({"jobs", "1", "--yes"}), "--yes does not go with jobs");
}

TEST(CtlArguments, EveryCommandTakesJsonButThoseWhoseTextHasAFormOfItsOwn)
{
    const std::vector<std::vector<std::string>> words = {{"find"},
                                                         {"set", "1", "a=1"},
                                                         {"lists", "1", "--clear"},
                                                         {"ports"},
                                                         {"add", "--model", "KR40", "--com", "1"},
                                                         {"send", "1", "x"},
                                                         {"terminal", "1"},
                                                         {"load", "1", "x"},
                                                         {"clear", "1", "--flash"},
                                                         {"unload"},
                                                         {"options"},
                                                         {"test-smtp"},
                                                         {"check"},
                                                         {"language-check", "x"}};
    for (std::vector<std::string> command : words) {
        command.emplace_back("--json");
        EXPECT_TRUE(commandOf(command).json) << command[0];
    }
    EXPECT_EQ(errorOf({"completion", "bash", "--json"}), "--json does not go with completion");
    EXPECT_EQ(errorOf({"language-template", "--json"}), "--json does not go with language-template");
}

TEST(CtlArguments, CommandsForStoredLoggersAndOptions)
{
    EXPECT_EQ(commandOf({"unload"}).number, 0);
    EXPECT_EQ(commandOf({"unload", "3"}).number, 3);
    EXPECT_EQ(errorOf({"unload", "x"}), "unload wants a logger's number, from 1 to 50");
    EXPECT_EQ(errorOf({"unload", "1", "2"}), "there is a word too many behind unload");
    EXPECT_EQ(errorOf({"delete"}), "delete wants a logger's number, from 1 to 50");
    EXPECT_TRUE(commandOf({"delete", "3", "--yes"}).yes);
    const IconChoice plain = commandOf({"shortcut", "3"}).icon;
    EXPECT_EQ(plain.IconKind + plain.IconCommand + plain.IconTerminalMark + plain.IconName, "Data");
    EXPECT_FALSE(plain.IconCancelled);
    const IconChoice sends = commandOf({"shortcut", "3", "--name", "a b", "--command", "/h; x", "--terminal"}).icon;
    EXPECT_EQ(sends.IconKind + sends.IconCommand + sends.IconTerminalMark + sends.IconName, "Command/h; x%a b");
    EXPECT_EQ(errorOf({"shortcut", "3", "--terminal"}), "--terminal goes with --command");
    EXPECT_EQ(errorOf({"shortcut", "3", "--command", ""}), "--command wants one line to send");
    EXPECT_TRUE(commandOf({"options"}).edits.empty());
    EXPECT_EQ(commandOf({"options", "SiteID=a=b"}).edits.at(0).value, "a=b");
    EXPECT_EQ(errorOf({"options", "secret"}), "options wants each change as NAME=VALUE");
    EXPECT_EQ(commandOf({"completion", "zsh"}).text, "zsh");
    EXPECT_EQ(errorOf({"completion", "tcsh"}), "completion wants one of bash, zsh, fish");
    EXPECT_EQ(commandOf({"language-check", "a b.txt"}).file, "a b.txt");
    EXPECT_EQ(errorOf({"language-check"}), "language-check wants one FILE");
    EXPECT_EQ(commandOf({"test", "1", "--trace", "t"}).trace, "t");
    EXPECT_EQ(errorOf({"list", "--trace", "t"}), "--trace does not go with list");
    EXPECT_EQ(errorOf({"test", "1", "--trace="}), "--trace wants a file");
}

TEST(CtlArguments, WrongWordsAreNamed)
{
    EXPECT_EQ(errorOf({}), "a command is missing");
    EXPECT_EQ(errorOf({"fnd"}), "there is no command fnd");
    EXPECT_EQ(errorOf({"find", "--fast"}), "there is no option --fast");
    EXPECT_EQ(errorOf({"find", "--port"}), "--port wants a value");
    for (const char* port : {"0", "17", "x", "", "1.0", "-1"})
        EXPECT_EQ(errorOf({"find", "--port", port}), "--port wants a number from 1 to 16") << port;
    EXPECT_EQ(errorOf({"find", "--all", "--port", "3"}), "--all and --port exclude each other");
    EXPECT_EQ(errorOf({"list", "--yes"}), "--yes does not go with list");
    EXPECT_EQ(errorOf({"list", "--json=1"}), "--json takes no value");
    EXPECT_EQ(errorOf({"list", "x"}), "there is a word too many behind list");
    EXPECT_EQ(errorOf({"find", "--password", "se", "cret"}), "there is a word too many behind find");
    for (const char* number : {"0", "51", "x"})
        EXPECT_EQ(errorOf({"show", number}), "show wants a logger's number, from 1 to 50") << number;
    EXPECT_EQ(errorOf({"show"}), "show wants a logger's number, from 1 to 50");
    EXPECT_EQ(errorOf({"--dir=", "list"}), "--dir wants a directory");
}

} // namespace harvelop
