// `harvelctl` on fakes with three loggers that programs are sent to and cleared from.
#pragma once

#include "ctl_bench.h"
#include "loading/far_end.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace harvelop::test
{

using Words = std::vector<std::string>;

constexpr const char* ProgramFile = "/home/user/pump.cmd";
constexpr const char* NoCard = "\r\n0\r\n"; // the answers to "9SV(FF0) /U/N"
constexpr const char* Card = "\r\n1\r\n";
constexpr const char* Data = "Tallycore 2E4\r\n"; // to "H BEGIN"

inline LoggerRecord olderLogger()
{
    LoggerRecord record = SerialLogger();
    record.LoggerModel = "KR200 Series 3";
    return record;
}

// An older logger with flash memory on com port 1, a KR40 on the network, and another older one that has no flash.
struct ProgramsCtl : StoredCtl {
    ProgramsCtl() : StoredCtl({olderLogger(), NetworkLogger(), SerialLogger()})
    {
        File("options.ini") = "Icons=4\r\nShowMessages=1\r\nShowLoadMessages=1\r\n";
        files.files[ProgramFile] = "BEGIN\"FLOW\"\r\nRA1M\r\nEND\r\n";
        older->Identify("KR200 Series 3");
        older->Answer("9SV(FF0) /U/N", NoCard);
        older->Answer("13SV", "13SV\r\n2\r\n");
        serial.Plug(1, older, "9600");
        kr4->Identify("KR40");
        sockets.Plug("10.0.0.5", 3000, kr4);
    }

    void Answer(const std::vector<BoxAnswer>& answers)
    {
        for (const BoxAnswer answer : answers)
            dialogs.Expect(answer);
    }
    int Load(const Words& where, const std::vector<BoxAnswer>& answers)
    {
        dialogs.ExpectChooser(ProgramFile);
        return RunWith("load", where, answers);
    }
    int Clear(const Words& what, const std::vector<BoxAnswer>& answers) { return RunWith("clear", what, answers); }

    bool Said(const std::string& line) const
    {
        return ("\n" + said.str()).find("\n" + line + "\n") != std::string::npos;
    }
    std::string LastBox() const { return dialogs.shown.empty() ? "" : dialogs.shown.back().text; }
    // Nothing is open any more.
    bool Released() const
    {
        return !serial.PortOpen() && std::all_of(sockets.made.begin(), sockets.made.end(), [](FakeSocket* socket) {
            return !socket || socket->State() == SocketControl::Condition::Closed;
        });
    }
    Words Got(const FarEnd& logger) const
    {
        Words lines;
        for (const auto& line : logger.lines)
            lines.push_back(line.text);
        return lines;
    }

    double SentAt(const FarEnd& logger, const std::string& text) const
    {
        for (const auto& line : logger.lines)
            if (line.text == text)
                return line.ms;
        ADD_FAILURE() << "never sent: " << text;
        return 0;
    }

    std::shared_ptr<FarEnd> older = std::make_shared<FarEnd>();
    std::shared_ptr<FarEnd> kr4 = std::make_shared<FarEnd>();

    static constexpr BoxAnswer Yes = BoxAnswer::Yes;
    static constexpr BoxAnswer No = BoxAnswer::No;
    static constexpr BoxAnswer Ok = BoxAnswer::Ok;

private:
    // All boxes must have been shown; whatever comes of it, the link is released and nothing is printed as a result.
    int RunWith(const std::string& verb, const Words& rest, const std::vector<BoxAnswer>& answers)
    {
        Words words = {verb};
        words.insert(words.end(), rest.begin(), rest.end());
        const size_t before = dialogs.shown.size();
        Answer(answers);
        const int code = Run(words);
        EXPECT_EQ(dialogs.shown.size() - before, answers.size());
        EXPECT_TRUE(Released());
        EXPECT_EQ(out.str(), "");
        return code;
    }
};

struct ProgramsCtlTest : ProgramsCtl, testing::Test {
    using ProgramsCtl::Run;
};

} // namespace harvelop::test
