#include "simulator/simulation_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace harvelop
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// What is wrong with a file of one logger with these keys.
std::vector<std::string> faultsOf(const std::string& keys)
{
    return ReadSimulationFile(R"({"loggers": [{)" + keys + "}]}").errors;
}

} // namespace

TEST(SimulationFile, ReadsEveryKey)
{
    const auto file = ReadSimulationFile(R"({"loggers": [
        {"name": "gate", "model": "KR200 with a XBM", "series": "2", "version": "7.18", "password": "sesame",
         "lockAfter": 60000, "port": "pty", "com": 3, "link": "/tmp/x/com3", "baud": 14400, "pace": true,
         "delay": 12.5, "chunk": 8, "gap": 40, "noise": 9, "seed": 77, "failure": "SlowBytes", "dropAfter": 6,
         "late": 7000, "lines": "EF", "linesFrom": 2, "rejectLine": 9, "echo": true, "number": "17", "data": true,
         "card": true, "program": "RA\n\nRB\u00ff\n", "cardProgram": "RC\n", "flash": "\u0000\u0080z"},
        {"model": "KR40", "version": "5.06.0001", "serial": "123456", "port": "tcp:4001",
         "jobs": ["*PUMP+", "TANK+", "WELL"]}], "memory": "/tmp/memory", "transcript": "/tmp/transcript"})");
    EXPECT_THAT(file.errors, IsEmpty());
    EXPECT_EQ(file.memory, "/tmp/memory");
    EXPECT_EQ(file.transcript, "/tmp/transcript");
    ASSERT_EQ(file.loggers.size(), 2U);
    const LoggerSetup& gate = file.loggers[0];
    EXPECT_EQ(gate.name, "gate");
    EXPECT_EQ(gate.logger.model, "KR200 with a XBM");
    EXPECT_EQ(gate.logger.series, "2");
    EXPECT_EQ(gate.logger.version, "7.18");
    EXPECT_EQ(gate.logger.password, "sesame");
    EXPECT_EQ(gate.logger.lockAfterMs, 60000);
    EXPECT_FALSE(gate.IsTcp());
    EXPECT_EQ(gate.com, 3);
    EXPECT_EQ(gate.link, "/tmp/x/com3");
    EXPECT_EQ(gate.logger.baud, 14400);
    EXPECT_TRUE(gate.logger.pace);
    EXPECT_EQ(gate.logger.delayMs, 12.5);
    EXPECT_EQ(gate.logger.chunk, 8U);
    EXPECT_EQ(gate.logger.gapMs, 40);
    EXPECT_EQ(gate.logger.noise, 9U);
    EXPECT_EQ(gate.logger.seed, 77U);
    EXPECT_EQ(gate.logger.failure, Failure::SlowBytes);
    EXPECT_EQ(gate.logger.dropAfterLines, 6);
    EXPECT_EQ(gate.logger.lateMs, 7000);
    EXPECT_EQ(gate.logger.lines, "EF");
    EXPECT_EQ(gate.logger.linesFrom, 2);
    EXPECT_EQ(gate.logger.rejectLine, 9);
    EXPECT_TRUE(gate.logger.echo);
    EXPECT_EQ(gate.logger.number, "17");
    LoggerMemory memory;
    memory.data = true;
    memory.card = true;
    memory.program = "RA\n\nRB\xff\n";
    memory.cardProgram = "RC\n";
    memory.flash = std::string("\0\x80z", 3);
    EXPECT_EQ(gate.logger.memory, memory);
    const std::vector<Job> jobs{{"PUMP", true, true}, {"TANK", false, true}, {"WELL"}};
    EXPECT_EQ(file.loggers[1].logger.memory.jobs, jobs);
    EXPECT_EQ(file.loggers[1].logger.serial, "123456");
    EXPECT_EQ(file.loggers[1].tcpPort, 4001);
}

TEST(SimulationFile, KeysThatAreMissingKeepTheirUsualValues)
{
    const auto file = ReadSimulationFile(R"({"loggers": [{"model": "KR23"}]})");
    EXPECT_THAT(file.errors, IsEmpty());
    ASSERT_EQ(file.loggers.size(), 1U);
    EXPECT_EQ(file.loggers[0].logger.baud, 9600);
    EXPECT_EQ(file.loggers[0].com, 0);
    EXPECT_FALSE(file.loggers[0].IsTcp());
    EXPECT_EQ(file.loggers[0].logger.failure, Failure::None);
}

TEST(SimulationFile, TextThatIsNoJsonIsTold)
{
    for (const std::string text :
         {"", "{", "{\"loggers\": [}", "\xff\xfe", "loggers", "{\"loggers\": [{\"name\": \"\xff\"}]}"})
        EXPECT_THAT(ReadSimulationFile(text).errors, ElementsAre(HasSubstr("not valid JSON near character"))) << text;
    EXPECT_THAT(ReadSimulationFile(std::string(1, '\0')).errors, ElementsAre(HasSubstr("not valid JSON")));
}

TEST(SimulationFile, ANumberOutOfAllRangeIsTold)
{
    EXPECT_THAT(ReadSimulationFile(R"({"loggers": [{"com": 1e999}]})").errors,
                ElementsAre("a number in it is too large"));
}

TEST(SimulationFile, DeepNestingAndHugeTextsDoNoHarm)
{
    const std::string deep(100000, '[');
    EXPECT_THAT(ReadSimulationFile(deep).errors, ElementsAre(HasSubstr("not valid JSON")));
    EXPECT_THAT(ReadSimulationFile(deep + std::string(100000, ']')).errors, ElementsAre(HasSubstr("of the form")));
    EXPECT_THAT(ReadSimulationFile(std::string(LargestSimulationFile + 1, ' ')).errors,
                ElementsAre(HasSubstr("longer than a mebibyte")));
}

TEST(SimulationFile, AnotherFormIsTold)
{
    for (const std::string text : {"[]", "3", "null", "{}", R"({"loggers": 4})", R"({"loggers": {}})"})
        EXPECT_THAT(ReadSimulationFile(text).errors, ElementsAre(HasSubstr("must be of the form"))) << text;
    EXPECT_THAT(ReadSimulationFile(R"({"loggers": []})").errors, ElementsAre("\"loggers\" takes 1 to 64 loggers"));
    EXPECT_THAT(ReadSimulationFile(R"({"loggers": [7]})").errors, ElementsAre("logger 1: is no object {...}"));
    EXPECT_THAT(ReadSimulationFile(R"({"loggers": [{"model": "KR40"}], "logers": 1})").errors,
                ElementsAre("unknown key \"logers\""));
}

TEST(SimulationFile, TooManyLoggersAreRefused)
{
    std::string text = R"({"loggers": [{"model": "KR40"})";
    for (int i = 0; i < 64; ++i)
        text += R"(, {"model": "KR40"})";
    EXPECT_THAT(ReadSimulationFile(text + "]}").errors, ElementsAre(HasSubstr("1 to 64 loggers")));
}

TEST(SimulationFile, UnknownKeysModelsSeriesAndFailuresAreTold)
{
    EXPECT_THAT(faultsOf(R"("model": "KR40", "bauds": 9600)"), ElementsAre("logger 1: unknown key \"bauds\""));
    EXPECT_THAT(faultsOf(R"("model": "KR999")"), ElementsAre("logger 1: there is no model \"KR999\""));
    EXPECT_THAT(faultsOf(R"("model": "KR21", "series": "1")"),
                ElementsAre("logger 1: there is no \"KR21\" of series \"1\""));
    EXPECT_THAT(faultsOf(R"("model": "KR40", "series": "1")"), ElementsAre(HasSubstr("of series \"1\"")));
    EXPECT_THAT(faultsOf(R"("model": "KR40", "failure": "Sulks")"),
                ElementsAre("logger 1: \"failure\" takes a failure mode of --list-failures"));
    EXPECT_THAT(faultsOf(R"("baud": 9600)"), ElementsAre("logger 1: has no \"model\""));
}

TEST(SimulationFile, ValuesOfTheWrongKindOrSizeAreTold)
{
    for (const std::string bad : {R"("name": 1)",
                                  R"("model": null)",
                                  R"("series": 2)",
                                  R"("version": [])",
                                  R"("serial": 123456)",
                                  R"("password": true)",
                                  R"("password": "a\r")",
                                  R"("lockAfter": "1")",
                                  R"("port": "com1")",
                                  R"("port": "tcp:")",
                                  R"("port": "tcp:65536")",
                                  R"("port": "tcp:-1")",
                                  R"("port": "tcp:999999")",
                                  R"("com": 0)",
                                  R"("com": 17)",
                                  R"("com": 1.5)",
                                  R"("link": "")",
                                  R"("link": "a\u0000b")",
                                  R"("baud": 0)",
                                  R"("baud": "9600")",
                                  R"("baud": 99999999999999999999)",
                                  R"("pace": 1)",
                                  R"("delay": -1)",
                                  R"("delay": 1e300)",
                                  R"("chunk": 0)",
                                  R"("gap": null)",
                                  R"("noise": -1)",
                                  R"("seed": 0)",
                                  R"("failure": 1)",
                                  R"("dropAfter": 0)",
                                  R"("late": {})",
                                  R"("lines": "\r")",
                                  R"("linesFrom": 0)",
                                  R"("rejectLine": "2")",
                                  R"("echo": 1)",
                                  R"("number": 1)",
                                  R"("data": "yes")",
                                  R"("card": null)",
                                  R"("program": ["RA"])",
                                  R"("cardProgram": "\u0100")",
                                  R"("flash": 7)",
                                  R"("jobs": "PUMP")",
                                  R"("jobs": ["PUMP", ""])",
                                  R"("jobs": ["*+"])",
                                  R"("jobs": ["a\"b"])"}) {
        const auto faults =
            ReadSimulationFile(R"({"loggers": [{"model": "KR40"}, {"model": "KR40", )" + bad + "}]}").errors;
        const std::string key = bad.substr(0, bad.find(':'));
        EXPECT_THAT(faults, ElementsAre(HasSubstr("logger 2: " + key + " takes "))) << bad;
    }
}

TEST(SimulationFile, WhatDoesNotFitTogetherIsTold)
{
    EXPECT_THAT(faultsOf(R"("model": "KR200", "version": "5.06.0001")"), ElementsAre(HasSubstr("has 4 characters")));
    EXPECT_THAT(faultsOf(R"("model": "KR40", "version": "7.18")"), ElementsAre(HasSubstr("has 9 characters")));
    EXPECT_THAT(faultsOf(R"("model": "KR40", "serial": "1234567")"), ElementsAre(HasSubstr("has 6 characters")));
    EXPECT_THAT(faultsOf(R"("model": "KR200", "serial": "123456")"), ElementsAre(HasSubstr("KR4 family only")));
    EXPECT_THAT(faultsOf(R"("model": "KR40", "failure": "RefusesPassword")"),
                ElementsAre(HasSubstr("needs a \"password\"")));
    for (const std::string failure : {"IgnoresLines", "RefusesLines"})
        EXPECT_THAT(faultsOf(R"("model": "KR40", "failure": ")" + failure + '"'),
                    ElementsAre(HasSubstr("this failure needs \"lines\"")));
    EXPECT_THAT(faultsOf(R"("model": "KR200", "jobs": ["PUMP"])"), ElementsAre(HasSubstr("KR4 family only")));
    EXPECT_THAT(faultsOf(R"("model": "KR40", "port": "tcp:0", "com": 1)"),
                ElementsAre(HasSubstr("\"com\" is for a pty")));
    EXPECT_THAT(faultsOf(R"("model": "KR40", "link": "/tmp/a", "port": "tcp:0")"),
                ElementsAre(HasSubstr("\"link\" is for a pty")));
}

TEST(SimulationFile, APlaceIsForOneLoggerOnly)
{
    const auto file = ReadSimulationFile(R"({"loggers": [
        {"model": "KR40", "com": 4}, {"model": "KR40", "com": 4},
        {"model": "KR40", "link": "/tmp/a"}, {"model": "KR40", "link": "/tmp/a"},
        {"model": "KR40", "port": "tcp:4001"}, {"model": "KR40", "port": "tcp:4001"},
        {"model": "KR40", "port": "tcp:0"}, {"model": "KR40", "port": "tcp:0"}]})");
    EXPECT_THAT(file.errors,
                ElementsAre("logger 2: com 4 is taken by logger 1", "logger 4: link \"/tmp/a\" is taken by logger 3",
                            "logger 6: TCP port 4001 is taken by logger 5"));
}

TEST(SimulationFile, NoErrorTellsAPassword)
{
    for (const std::string& fault : faultsOf(R"("model": "KR999", "password": "sesame\n", "com": "sesame")"))
        EXPECT_THAT(fault, testing::Not(HasSubstr("sesame")));
}

TEST(SimulationFile, HelpTellsEveryKey)
{
    for (const char* key :
         {"model",       "series", "version",   "serial",    "password", "port",   "com",       "link",
          "baud",        "delay",  "chunk",     "gap",       "noise",    "seed",   "failure",   "pace",
          "late",        "lines",  "dropAfter", "lockAfter", "program",  "name",   "linesFrom", "echo",
          "cardProgram", "flash",  "jobs",      "data",      "card",     "number", "rejectLine"})
        EXPECT_THAT(SimulationFileHelp(), HasSubstr("  " + std::string(key) + " "));
}

TEST(SimulationFile, ReadsAModemAndItsPhoneBook)
{
    const auto file = ReadSimulationFile(R"({"loggers": [{"model": "KR40"}], "modem": {"com": 4, "link": "/tmp/x/com4",
        "baud": 19200, "speed": "2400", "delay": 5, "connect": 700, "guard": 60, "failure": "DropsCall",
        "dropAfter": 900, "phoneBook": {"555": {"model": "KR200", "password": "sesame"}, "7": {"model": "KR41"}}}})");
    EXPECT_THAT(file.errors, IsEmpty());
    ASSERT_TRUE(file.modem);
    EXPECT_EQ(file.modem->com, 4);
    EXPECT_EQ(file.modem->link, "/tmp/x/com4");
    EXPECT_EQ(file.modem->modem.baud, 19200);
    EXPECT_EQ(file.modem->modem.speed, "2400");
    EXPECT_EQ(file.modem->modem.answerMs, 5);
    EXPECT_EQ(file.modem->modem.connectMs, 700);
    EXPECT_EQ(file.modem->modem.guardMs, 60);
    EXPECT_EQ(file.modem->modem.failure, ModemFailure::DropsCall);
    EXPECT_EQ(file.modem->modem.dropAfterMs, 900);
    ASSERT_EQ(file.modem->phoneBook.size(), 2U);
    EXPECT_EQ(file.modem->phoneBook.at("555").logger.password, "sesame");
    EXPECT_FALSE(ReadSimulationFile(R"({"loggers": [{"model": "KR40"}]})").modem);
}

TEST(SimulationFile, FaultsOfAModemAreTold)
{
    const auto faults = [](const std::string& modem) {
        return ReadSimulationFile(R"({"loggers": [{"model": "KR40", "com": 1}], "modem": )" + modem + "}").errors;
    };
    EXPECT_THAT(faults("7"), ElementsAre("modem: is no object {...}"));
    EXPECT_THAT(faults(R"({"con": 4})"), ElementsAre("modem: unknown key \"con\""));
    EXPECT_THAT(faults(R"({"com": 17})"), ElementsAre(HasSubstr("\"com\" takes a whole number")));
    EXPECT_THAT(faults(R"({"com": 1})"), ElementsAre("modem: com 1 is taken by logger 1"));
    EXPECT_THAT(faults(R"({"failure": "Sulks"})"), ElementsAre(HasSubstr("\"failure\" takes")));
    EXPECT_THAT(faults(R"({"phoneBook": []})"), ElementsAre(HasSubstr("\"phoneBook\" takes")));
    EXPECT_THAT(faults(R"({"phoneBook": {"5": 1}})"), ElementsAre("number \"5\": is no object {...}"));
    EXPECT_THAT(faults(R"({"phoneBook": {"5": {"model": "KR999"}}})"), ElementsAre(HasSubstr("there is no model")));
    EXPECT_THAT(faults(R"({"phoneBook": {"5": {"model": "KR40", "com": 2}}})"),
                ElementsAre(HasSubstr("a line of its own")));
}

TEST(SimulationFile, HelpNamesEveryModemFailure)
{
    for (const ModemFailureMode& mode : ModemFailureModes().subspan(1))
        EXPECT_THAT(ModemHelp(), HasSubstr(std::string(mode.name)));
}

} // namespace harvelop
